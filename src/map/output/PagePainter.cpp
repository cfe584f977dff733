#include "map/output/PagePainter.h"

#include "layers/MapPicture.h"
#include "map/MapAreas.h"
#include "map/output/MapDataSheets.h"
#include "map/output/MapPlaces.h"
#include "map/output/MapWorkbook.h"
#include "map/output/PageLegend.h"
#include "session/Strings.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

// Sizes in points.
constexpr QSizeF kA4(595, 842);
constexpr double kMargin = 40;
constexpr double kGap = 10;
constexpr double kLineGap = 2;

constexpr double kLegendBelow = 0.42;  ///< of the height of map and legend, which the legend gets where it needs it
constexpr double kLegendBeside = 0.36; ///< of their width
constexpr double kNotesHeight = 0.22;  ///< of the page's, at most
constexpr double kTitlesHeight = 0.2;
constexpr int kListedSources = 6; ///< more follow each other in the lines
constexpr double kShrinking = 0.9;
constexpr double kMostShrunk = 0.4;
constexpr double kBorder = 0.03; ///< around the layers, of their size

/// The extent without what lies far from all layers, as a window of another form shows it.
MapBox Trimmed(const MapBox& extent, const MapBox& layers) {
    const double x = layers.Width() * kBorder;
    const double y = layers.Height() * kBorder;
    const MapBox trimmed{std::max(extent.left, layers.left - x), std::max(extent.bottom, layers.bottom - y),
                         std::min(extent.right, layers.right + x), std::min(extent.top, layers.top + y)};
    return trimmed.Width() > 0 && trimmed.Height() > 0 ? trimmed : extent;
}

/// The height of a map for each unit of its width.
double MostHeightOf(MapLayout layout) {
    constexpr double kWide = 0.7;
    if (layout == MapLayout::Square) return 1;
    return layout == MapLayout::Horizontal ? kWide : HUGE_VAL;
}

class Page final {
  public:
    Page(QPainter& painter, const MapPage& page, const PageNotes& notes, double pixelsOfPoint)
        : painter_(painter), page_(page), notes_(notes), unit_(pixelsOfPoint),
          beside_(PlacesOf(page.draft.layout).LegendIsBeside()), whole_({}, PageSize(page.draft.layout) * unit_),
          free_(whole_.adjusted(kMargin * unit_, kMargin * unit_, -kMargin * unit_, -kMargin * unit_)),
          shown_(Trimmed(ShownExtent(page), page.layers.FullExtent())) {}

    void Paint() {
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setLayoutDirection(notes_.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        const QRectF titles = TakeTop(SetTexts(
            titles_, [this](double s) { return Titles(s); }, kTitlesHeight));
        QRectF notes = TakeBottom(SetTexts(
            belowTexts_, [this](double s) { return Notes(s); }, kNotesHeight));
        PlaceMapAndLegend();
        notes.moveTop(std::min(notes.top(), std::max(map_.bottom(), legendPlace_.bottom()) + 2 * kGap * unit_));
        PaintMapPicture();
        if (legend_) legend_->Paint(painter_, legendPlace_);
        PaintTexts(titles_, titles);
        PaintTexts(belowTexts_, notes);
    }

  private:
    using Texts = std::vector<PageText>;

    void AddText(Texts& texts, const MapText& text, double size) const {
        if (!text.text.trimmed().isEmpty()) texts.emplace_back(text.text, PageFont(text.font, size * unit_));
    }

    [[nodiscard]] Texts Titles(double size) const {
        Texts texts;
        AddText(texts, page_.draft.title, size);
        AddText(texts, page_.draft.subTitle, size);
        return texts;
    }

    [[nodiscard]] Texts Notes(double size) const {
        Texts texts;
        SheetFont font = page_.draft.legendTitle.font;
        font.bold = false;
        if (!notes_.years.isEmpty()) AddText(texts, {notes_.years, font}, size);
        if (!notes_.sources.isEmpty()) {
            SheetFont bold = font;
            bold.bold = true;
            AddText(texts, {notes_.sourceCaption, bold}, size);
            const QString between =
                notes_.sources.size() > kListedSources ? QStringLiteral("; ") : QStringLiteral("\n");
            AddText(texts, {notes_.sources.join(between), font}, size);
        }
        AddText(texts, page_.draft.disclaimer, size);
        return texts;
    }

    [[nodiscard]] double HeightOf(const Texts& texts) const {
        double height = 0;
        for (const PageText& text : texts)
            height += text.Height(painter_, free_.width()) + kLineGap * unit_;
        return height;
    }

    /// Makes texts as large as they fit into their share of the page, and gives their height.
    template <class Make> double SetTexts(Texts& texts, Make make, double share) const {
        const double most = whole_.height() * share;
        double size = 1;
        texts = make(size);
        while (HeightOf(texts) > most && size > kMostShrunk)
            texts = make(size *= kShrinking);
        return std::min(HeightOf(texts), most);
    }

    QRectF TakeTop(double height) {
        const QRectF taken(free_.topLeft(), QSizeF(free_.width(), height));
        if (height > 0) free_.setTop(taken.bottom() + kGap * unit_);
        return taken;
    }

    QRectF TakeBottom(double height) {
        const QRectF taken(free_.left(), free_.bottom() - height, free_.width(), height);
        if (height > 0) free_.setBottom(taken.top() - kGap * unit_);
        return taken;
    }

    void PaintTexts(const Texts& texts, const QRectF& place) {
        double y = place.top();
        for (const PageText& text : texts) {
            const double height = std::min(text.Height(painter_, place.width()), place.bottom() - y);
            painter_.save();
            painter_.setClipRect(QRectF(0, y, whole_.width(), height + kLineGap * unit_));
            text.Paint(painter_, QRectF(place.left(), y, place.width(), height));
            painter_.restore();
            y += height + kLineGap * unit_;
        }
    }

    /// The largest place within this one for a map of the shown form, at its upper edge, from the side where lines
    /// begin.
    [[nodiscard]] QRectF MapPlace(const QRectF& within) const {
        const double form = shown_.IsEmpty() ? 0.5 : shown_.Height() / (shown_.Width() * page_.layers.XScale());
        const double limited = std::min(form, MostHeightOf(page_.draft.layout));
        double width = within.width();
        if (width * limited > within.height()) width = within.height() / limited;
        QRectF place(within.left(), within.top(), std::round(width), std::round(width * limited));
        if (notes_.rightToLeft) place.moveRight(within.right());
        return place.toRect();
    }

    /// How large the symbols of the map are: as on the screen, within what can be read on paper.
    [[nodiscard]] PageScale ScaleFor(const QRectF& map) const {
        constexpr double kPointsOfPixel = 72.0 / 96;
        constexpr double kLeast = 0.7;
        constexpr double kMost = 1.6;
        const double screen = ViewOf(page_.layers, ShownExtent(page_), ShownSize(page_)).PixelsY();
        const double here = ViewOf(page_.layers, shown_, map.size()).PixelsY();
        const double pixel = kPointsOfPixel * unit_;
        return {unit_, std::clamp(here / screen, kLeast * pixel, kMost * pixel)};
    }

    /// The most that the legend may take: below the map all that the map leaves.
    [[nodiscard]] QSizeF MostOfLegend(double gap) const {
        if (beside_) return {free_.width() * kLegendBeside, free_.height()};
        const double left = free_.height() - MapPlace(free_).height() - gap;
        return {free_.width(), std::max(free_.height() * kLegendBelow, left)};
    }

    void PlaceMapAndLegend() {
        const double gap = kGap * unit_;
        const QSizeF most = MostOfLegend(gap);
        QRectF room = free_;
        if (beside_)
            room.setWidth(free_.width() - most.width() - gap);
        else
            room.setHeight(free_.height() - most.height() - gap);
        scale_ = ScaleFor(MapPlace(room));
        legend_.emplace(page_.draft, scale_);
        const QSizeF size = legend_->Arrange(painter_, most, beside_);
        PlaceMap(size, gap);
        PlaceLegend(size, gap);
    }

    void PlaceMap(QSizeF legend, double gap) {
        QRectF room = free_;
        if (beside_ && notes_.rightToLeft)
            room.setLeft(room.left() + legend.width() + gap);
        else if (beside_)
            room.setRight(room.right() - legend.width() - gap);
        else
            room.setBottom(room.bottom() - legend.height() - gap);
        map_ = MapPlace(room);
        if (!beside_) map_.moveLeft(std::round(room.center().x() - map_.width() / 2));
    }

    void PlaceLegend(QSizeF size, double gap) {
        QPointF at(free_.left(), map_.bottom() + gap);
        if (beside_)
            at = QPointF(notes_.rightToLeft ? map_.left() - gap - size.width() : map_.right() + gap, free_.top());
        if (!beside_ && notes_.rightToLeft) at.setX(free_.right() - size.width());
        legendPlace_ = QRectF(at, size);
    }

    void PaintMapPicture() {
        painter_.save();
        painter_.setClipRect(map_);
        painter_.translate(map_.topLeft());
        PaintMap(painter_, page_.layers, ViewOf(page_.layers, shown_, map_.size()), scale_.ofSymbols);
        painter_.restore();
        CoverOutside();
        painter_.setPen(QPen(QColor(128, 128, 128), 0.5 * unit_));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(map_);
    }

    /// SVG pictures are not clipped by their writer: what reaches out of the map is painted over.
    void CoverOutside() {
        if (painter_.paintEngine() == nullptr || painter_.paintEngine()->type() != QPaintEngine::SVG) return;
        const QRectF page = whole_;
        for (const QRectF& side : {QRectF(page.topLeft(), QPointF(page.right(), map_.top())),
                                   QRectF(QPointF(page.left(), map_.bottom()), page.bottomRight()),
                                   QRectF(QPointF(page.left(), map_.top()), map_.bottomLeft()),
                                   QRectF(map_.topRight(), QPointF(page.right(), map_.bottom()))})
            painter_.fillRect(side, Qt::white);
    }

    QPainter& painter_;
    const MapPage& page_;
    const PageNotes& notes_;
    double unit_;
    bool beside_;
    QRectF whole_;
    QRectF free_; ///< what no text has taken yet
    MapBox shown_;
    Texts titles_;
    Texts belowTexts_;
    std::optional<PageLegend> legend_;
    PageScale scale_;
    QRectF map_;
    QRectF legendPlace_;
};

} // namespace

PageNotes NotesOfMapData() {
    return {PlainText(QStringLiteral("Comm_Source")), SourcesOfMapData(), YearNote(), LanguageIsRightToLeft()};
}

QSizeF PageSize(MapLayout layout) {
    return PlacesOf(layout).landscape ? kA4.transposed() : kA4;
}

void PaintPage(QPainter& painter, const MapPage& page, const PageNotes& notes, double pixelsOfPoint) {
    painter.save();
    Page(painter, page, notes, pixelsOfPoint).Paint();
    painter.restore();
}

} // namespace tessaro
