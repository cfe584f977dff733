#include "layers/LabelPainter.h"

#include "layers/LabelLayouts.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kHaloWidth = 1;
constexpr double kSideMargin = 2; ///< between the letters of a label and the next one

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

/// Pictures of lines and curves keep texts as texts, once each.
bool IsVector(const QPainter& painter) {
    const QPaintEngine* const engine = painter.paintEngine();
    return engine != nullptr && (engine->type() == QPaintEngine::SVG || engine->type() == QPaintEngine::Pdf);
}

/// A label at its place.
struct Placed {
    std::size_t label;
    QPointF corner;
};

/// The labels of one layer on a picture.
class LabelPainting final {
  public:
    LabelPainting(QPainter& painter, const LayerLabels& labels, const MapView& view, double scale)
        : painter_(painter), labels_(labels), view_(view), scale_(scale), font_(InPixels(labels.font, scale)),
          layouts_(labels.layouts ? labels.layouts : std::make_shared<LabelLayouts>()) {
        layouts_->SetFont(font_);
    }

    /// Finds places for the labels; those that are not drawn take none.
    void Place(TakenPlaces& taken) {
        for (const std::size_t each : Order(labels_, view_)) {
            const QSizeF size = layouts_->Of(each, labels_.texts[each]).size();
            const QPointF middle = view_.ToPicture(labels_.places[each].at);
            const QPointF corner(middle.x() - size.width() / 2, middle.y() - size.height() / 2);
            const double margin = kSideMargin * scale_;
            if (taken.Take(QRectF(corner, size).adjusted(-margin, 0, margin, 0)) || labels_.overlaps)
                placed_.push_back({each, corner});
        }
    }

    void Paint() {
        painter_.setFont(font_);
        painter_.setRenderHint(QPainter::TextAntialiasing);
        if (labels_.halo.isValid()) IsVector(painter_) ? PaintOutlines() : PaintRims();
        painter_.setPen(labels_.color);
        for (const Placed& each : placed_)
            painter_.drawStaticText(each.corner, layouts_->Of(each.label, labels_.texts[each.label]));
    }

  private:
    /// The rim is the text itself, drawn around its place: far quicker than the outline of its letters.
    void PaintRims() {
        painter_.setPen(labels_.halo);
        const double rim = kHaloWidth * scale_;
        for (const Placed& each : placed_)
            for (const QPointF& way : {QPointF(-1, -1), QPointF(0, -1), QPointF(1, -1), QPointF(-1, 0), QPointF(1, 0),
                                       QPointF(-1, 1), QPointF(0, 1), QPointF(1, 1)})
                painter_.drawStaticText(each.corner + rim * way, layouts_->Of(each.label, labels_.texts[each.label]));
    }

    void PaintOutlines() {
        QPainterPath letters;
        for (const Placed& each : placed_)
            letters.addText(each.corner + QPointF(0, QFontMetricsF(font_).ascent()), font_, labels_.texts[each.label]);
        painter_.setBrush(Qt::NoBrush);
        painter_.setPen(QPen(labels_.halo, 2 * kHaloWidth * scale_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.drawPath(letters);
    }

    QPainter& painter_;
    const LayerLabels& labels_;
    const MapView& view_;
    double scale_;
    QFont font_;
    std::shared_ptr<LabelLayouts> layouts_;
    std::vector<Placed> placed_;
};

} // namespace

QColor HaloOf(const QColor& letters) {
    return qGray(letters.rgb()) < 128 ? Qt::white : Qt::black;
}

void PaintLabels(QPainter& painter, const std::vector<const LayerLabels*>& layers, const MapView& view, double scale) {
    std::vector<LabelPainting> paintings;
    for (const LayerLabels* labels : layers)
        if (labels->on && !labels->texts.empty()) paintings.emplace_back(painter, *labels, view, scale);
    if (paintings.empty()) return;
    TakenPlaces taken(view.Size(), 64 * scale);
    for (auto topmost = paintings.rbegin(); topmost != paintings.rend(); ++topmost)
        topmost->Place(taken);
    painter.save();
    for (LabelPainting& each : paintings)
        each.Paint();
    painter.restore();
}

} // namespace tessaro
