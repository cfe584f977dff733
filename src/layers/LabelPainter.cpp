#include "layers/LabelPainter.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace tessaro {

namespace {

constexpr double kHaloWidth = 1;

/// The font with its size in pixels of the picture: points are those of a screen of 96 to the inch.
QFont InPixels(QFont font, double scale) {
    const double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96 / 72;
    font.setPixelSize(std::max(1, qRound(size * scale)));
    return font;
}

/// The features whose label is seen, in the order in which they take their place.
std::vector<std::size_t> Order(const LayerLabels& labels, const MapView& view) {
    const MapBox& shown = view.Shown();
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < std::min(labels.texts.size(), labels.places.size()); ++i)
        if (!labels.texts[i].isEmpty() && labels.places[i].room >= 0 && shown.Contains(labels.places[i].at))
            order.push_back(i);
    if (!labels.overlaps)
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return labels.places[a].room > labels.places[b].room; });
    return order;
}

/// Places of the picture that labels have taken, found through squares of a grid.
class TakenPlaces final {
  public:
    TakenPlaces(QSizeF size, double square)
        : square_(square), columns_(static_cast<int>(size.width() / square) + 1),
          rows_(static_cast<int>(size.height() / square) + 1),
          squares_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {}

    /// Takes a place; false when another label has some of it.
    bool Take(const QRectF& place) {
        bool free = true;
        EachSquare(place, [&](const std::vector<QRectF>& taken) {
            free =
                free && std::none_of(taken.begin(), taken.end(), [&](const QRectF& r) { return r.intersects(place); });
        });
        if (free) EachSquare(place, [&](std::vector<QRectF>& taken) { taken.push_back(place); });
        return free;
    }

  private:
    template <class Work> void EachSquare(const QRectF& place, Work work) {
        const auto within = [this](double at, int count) {
            return std::clamp(static_cast<int>(at / square_), 0, count - 1);
        };
        for (int row = within(place.top(), rows_); row <= within(place.bottom(), rows_); ++row)
            for (int column = within(place.left(), columns_); column <= within(place.right(), columns_); ++column)
                work(squares_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                              static_cast<std::size_t>(column)]);
    }

    double square_;
    int columns_;
    int rows_;
    std::vector<std::vector<QRectF>> squares_;
};

/// The rim is the text itself, drawn around its place: far quicker than the outline of its letters.
void PaintText(QPainter& painter, const QRectF& place, const QString& text, const LayerLabels& labels, double scale) {
    constexpr int kFlags = Qt::AlignCenter | Qt::TextDontClip;
    if (labels.halo.isValid()) {
        painter.setPen(labels.halo);
        const double rim = kHaloWidth * scale;
        for (const QPointF& way : {QPointF(-1, -1), QPointF(0, -1), QPointF(1, -1), QPointF(-1, 0), QPointF(1, 0),
                                   QPointF(-1, 1), QPointF(0, 1), QPointF(1, 1)})
            painter.drawText(place.translated(rim * way), kFlags, text);
    }
    painter.setPen(labels.color);
    painter.drawText(place, kFlags, text);
}

} // namespace

void PaintLabels(QPainter& painter, const LayerLabels& labels, const MapView& view, double scale) {
    if (!labels.on || labels.texts.empty()) return;
    painter.save();
    const QFont font = InPixels(labels.font, scale);
    painter.setFont(font);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const QFontMetricsF metrics(font);
    TakenPlaces taken(view.Size(), 64 * scale);
    for (const std::size_t each : Order(labels, view)) {
        QRectF place(0, 0, metrics.horizontalAdvance(labels.texts[each]) + 4 * scale, metrics.height());
        place.moveCenter(view.ToPicture(labels.places[each].at));
        if (labels.overlaps || taken.Take(place)) PaintText(painter, place, labels.texts[each], labels, scale);
    }
    painter.restore();
}

} // namespace tessaro
