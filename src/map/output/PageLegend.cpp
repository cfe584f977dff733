#include "map/output/PageLegend.h"

#include "layers/MapView.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

// Sizes in points.
constexpr double kSwatchWidth = 26;
constexpr double kSwatchHeight = 13;
constexpr double kGap = 6;
constexpr double kRowGap = 3;
constexpr double kColumnGap = 16;
constexpr double kLeastText = 30;

constexpr double kShrinking = 0.9;
constexpr double kMostShrunk = 0.25;
constexpr int kCalmRows = 5; ///< of a column below the map, as long as there is room for more columns

/// Draws one shape of the symbol, as the map does.
void PaintSymbol(QPainter& painter, LayerKind kind, const QRectF& place, const LayerSymbol& symbol, double scale) {
    const double width = place.width();
    const double height = place.height();
    MapLayer layer;
    layer.kind = kind;
    if (kind == LayerKind::Polygon)
        layer.points = {{0, 0}, {0, height}, {width, height}, {width, 0}, {0, 0}};
    else
        layer.points = {{width / 2, height / 2}};
    layer.partStarts = {0, static_cast<int>(layer.points.size())};
    layer.features = {{0, 1, {0, 0, width, height}}};
    LayerSymbols symbols;
    symbols.symbols = {symbol};
    painter.save();
    painter.translate(std::round(place.left()), std::round(place.top()));
    PaintLayer(painter, layer, symbols, MapView({0, 0, width, height}, place.size(), 1), scale);
    painter.restore();
}

} // namespace

PageLegend::PageLegend(const MapDraft& draft, const PageScale& scale) : draft_(draft), scale_(scale), title_({}, {}) {
    Make(1);
}

void PageLegend::Make(double shrink) {
    shrink_ = shrink;
    title_ = PageText(draft_.legendTitle.text, PageFont(draft_.legendTitle.font, Points(1)));
    rows_.clear();
    largestMarker_ = 0;
    for (const LegendLine& line : LegendLines(draft_.classes))
        if (line.look) AddRow(line, shrink);
}

void PageLegend::AddRow(const LegendLine& line, double shrink) {
    QFont font = PageFont(line.font, Points(1));
    font.setUnderline(line.underline);
    Row row{SymbolOf(*line.look), PageText(line.text, font)};
    row.symbol.markerSize *= shrink;
    if (draft_.classes.kind != ThemeKind::Polygons)
        largestMarker_ = std::max(largestMarker_, (row.symbol.markerSize + 1) * scale_.ofSymbols);
    rows_.push_back(std::move(row));
}

double PageLegend::SwatchWidth() const {
    switch (draft_.classes.kind) {
    case ThemeKind::Points:
        return largestMarker_;
    case ThemeKind::Both:
        return Points(kSwatchWidth + kGap) + largestMarker_;
    default:
        return Points(kSwatchWidth);
    }
}

double PageLegend::SetColumns(QPainter& painter, int columns, double width) {
    const auto rows = static_cast<int>(rows_.size());
    rowsOfColumn_ = (rows + columns - 1) / columns;
    columnWidth_ = (width + Points(kColumnGap)) / columns - Points(kColumnGap);
    const double textWidth = std::max(columnWidth_ - SwatchWidth() - Points(kGap), Points(kLeastText));
    const bool hasMarkers = draft_.classes.kind != ThemeKind::Polygons;
    double highest = 0;
    double height = 0;
    for (int i = 0; i < rows; ++i) {
        Row& row = rows_[static_cast<std::size_t>(i)];
        const double marker = hasMarkers ? (row.symbol.markerSize + 1) * scale_.ofSymbols : 0;
        row.height = std::max({row.text.Height(painter, textWidth), marker, Points(kSwatchHeight)}) + Points(kRowGap);
        height = (i % rowsOfColumn_ == 0 ? 0 : height) + row.height;
        highest = std::max(highest, height);
    }
    return highest;
}

bool PageLegend::Fits(QPainter& painter, QSizeF most, bool beside) {
    double natural = 0;
    for (const Row& row : rows_)
        natural = std::max(natural, row.text.NaturalWidth());
    natural = std::min(natural + SwatchWidth() + Points(kGap), most.width());
    const auto rows = static_cast<int>(rows_.size());
    const int possible =
        std::clamp(static_cast<int>((most.width() + Points(kColumnGap)) / (natural + Points(kColumnGap))), 1, rows);
    int columns = beside ? 1 : std::clamp((rows + kCalmRows - 1) / kCalmRows, 1, possible);
    for (;; ++columns) {
        const double width = columns * (natural + Points(kColumnGap)) - Points(kColumnGap);
        titleHeight_ = title_.Height(painter, beside ? std::max(width, most.width() / 2) : most.width());
        if (titleHeight_ > 0) titleHeight_ += Points(kRowGap);
        size_ = QSizeF(std::max(width, std::min(title_.NaturalWidth(), most.width())),
                       titleHeight_ + SetColumns(painter, columns, width));
        if (size_.height() <= most.height()) return true;
        if (columns >= possible) return false;
    }
}

QSizeF PageLegend::Arrange(QPainter& painter, QSizeF most, bool beside) {
    double shrink = 1;
    while (!Fits(painter, most, beside) && shrink > kMostShrunk) {
        shrink *= kShrinking;
        Make(shrink);
    }
    return size_.boundedTo(most);
}

void PageLegend::Paint(QPainter& painter, const QRectF& place) const {
    title_.Paint(painter, QRectF(place.topLeft(), QSizeF(place.width(), titleHeight_)));
    const bool rightToLeft = painter.layoutDirection() == Qt::RightToLeft;
    double y = 0;
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
        const Row& row = rows_[static_cast<std::size_t>(i)];
        if (i % rowsOfColumn_ == 0) y = place.top() + titleHeight_;
        const double along = i / rowsOfColumn_ * (columnWidth_ + Points(kColumnGap));
        const double x = rightToLeft ? place.right() - along - columnWidth_ : place.left() + along;
        PaintRow(painter, row, QRectF(x, y, columnWidth_, row.height - Points(kRowGap)));
        y += row.height;
    }
}

void PageLegend::PaintRow(QPainter& painter, const Row& row, const QRectF& place) const {
    const bool rightToLeft = painter.layoutDirection() == Qt::RightToLeft;
    const double swatch = SwatchWidth();
    const double beside = swatch + Points(kGap);
    QRectF swatches(place.left(), place.top(), swatch, place.height());
    if (rightToLeft) swatches.moveRight(place.right());
    PaintSwatches(painter, row, swatches);
    const QRectF text = rightToLeft ? place.adjusted(0, 0, -beside, 0) : place.adjusted(beside, 0, 0, 0);
    row.text.Paint(painter, text, Qt::AlignVCenter);
}

void PageLegend::PaintSwatches(QPainter& painter, const Row& row, const QRectF& place) const {
    if (draft_.classes.kind != ThemeKind::Points) {
        QRectF area(place.left(), 0, Points(kSwatchWidth), Points(kSwatchHeight));
        area.moveTop(place.center().y() - area.height() / 2);
        if (painter.layoutDirection() == Qt::RightToLeft) area.moveRight(place.right());
        PaintSymbol(painter, LayerKind::Polygon, area, row.symbol, scale_.ofSymbols);
    }
    if (draft_.classes.kind != ThemeKind::Points && draft_.classes.kind != ThemeKind::Both) return;
    QRectF marker(place.right() - largestMarker_, place.top(), largestMarker_, place.height());
    if (painter.layoutDirection() == Qt::RightToLeft) marker.moveLeft(place.left());
    PaintSymbol(painter, LayerKind::Point, marker, row.symbol, scale_.ofSymbols);
}

} // namespace tessaro
