#include "layers/LabelPainter.h"

#include "layers/LabelLayouts.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr double kHaloWidth = 1;
constexpr double kSideMargin = 2; ///< between the letters of a label and the next one
constexpr std::size_t kManyLabels = 600;
constexpr QPointF kAround[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}};

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

    /// False when another label has some of a place.
    [[nodiscard]] bool IsFree(const QRectF& place) {
        bool free = true;
        EachSquare(place, [&](const std::vector<QRectF>& taken) {
            free =
                free && std::none_of(taken.begin(), taken.end(), [&](const QRectF& r) { return r.intersects(place); });
        });
        return free;
    }
    void Take(const QRectF& place) {
        EachSquare(place, [&](std::vector<QRectF>& taken) { taken.push_back(place); });
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
    LabelPainting(QPainter& painter, const LabelledLayer& layer, const MapView& view, double scale)
        : painter_(painter), labels_(*layer.labels), markers_(layer.markers), view_(view), scale_(scale),
          font_(InPixels(labels_.font, scale)),
          layouts_(labels_.layouts ? labels_.layouts : std::make_shared<LabelLayouts>()) {
        layouts_->SetFont(font_);
    }

    /// Finds places for the labels; those that are not drawn take none.
    void Place(TakenPlaces& taken) {
        const double margin = kSideMargin * scale_;
        const double height = QFontMetricsF(font_).height();
        for (const std::size_t each : Order(labels_, view_)) {
            const QPointF middle = view_.ToPicture(labels_.places[each].at) - QPointF(0, Lift(each, height));
            // Most labels give way: whether their middle is free is seen without laying out their letters.
            const QRectF least(middle.x() - margin, middle.y() - height / 2, 2 * margin, height);
            if (!labels_.overlaps && !taken.IsFree(least)) continue;
            const QSizeF size = layouts_->Of(each, labels_.texts[each]).size();
            const QPointF corner(middle.x() - size.width() / 2, middle.y() - size.height() / 2);
            const QRectF place = QRectF(corner, size).adjusted(-margin, 0, margin, 0);
            if (!labels_.overlaps && !taken.IsFree(place)) continue;
            taken.Take(place);
            placed_.push_back({each, corner});
        }
    }

    void Paint() {
        painter_.setRenderHint(QPainter::TextAntialiasing);
        painter_.setFont(font_);
        const bool vector = IsVector(painter_);
        if (labels_.halo.isValid() && !vector && placed_.size() > kManyLabels && PaintAllAtOnce()) return;
        if (labels_.halo.isValid()) vector ? PaintOutlines() : PaintRims();
        PaintLetters(painter_, labels_.color, {});
    }

  private:
    /// How far above its place the middle of a label stands, so that it doesn't hide its marker.
    [[nodiscard]] double Lift(std::size_t feature, double height) const {
        const int symbol = markers_ == nullptr ? -1 : markers_->NumberOf(feature);
        if (symbol < 0) return 0;
        return (markers_->symbols[static_cast<std::size_t>(symbol)].markerSize * scale_ + height) / 2;
    }

    void PaintLetters(QPainter& painter, const QColor& color, QPointF away) {
        painter.setPen(color);
        for (const Placed& each : placed_)
            painter.drawStaticText(each.corner + away, layouts_->Of(each.label, labels_.texts[each.label]));
    }

    /// The rim is the text itself, drawn around its place: far quicker than the outline of its letters.
    void PaintRims() {
        for (const QPointF& way : kAround)
            PaintLetters(painter_, labels_.halo, kHaloWidth * scale_ * way);
    }

    /// The same for thousands of labels: their letters are drawn once, into a picture of their own, which is then laid
    /// over the map around its place in the colour of the rims. False when there is no memory for it.
    bool PaintAllAtOnce() {
        QImage letters(view_.Size().toSize(), QImage::Format_ARGB32_Premultiplied);
        if (letters.isNull()) return false;
        letters.fill(Qt::transparent);
        QPainter painter(&letters);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setFont(font_);
        PaintLetters(painter, labels_.color, {});
        painter.end();
        QImage rims = letters;
        painter.begin(&rims);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(rims.rect(), labels_.halo);
        painter.end();
        const double rim = std::max(1.0, std::round(kHaloWidth * scale_));
        for (const QPointF& way : kAround)
            painter_.drawImage(rim * way, rims);
        painter_.drawImage(QPointF(), letters);
        return true;
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
    const LayerSymbols* markers_;
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

void PaintLabels(QPainter& painter, const std::vector<LabelledLayer>& layers, const MapView& view, double scale) {
    std::vector<LabelPainting> paintings;
    for (const LabelledLayer& each : layers)
        if (each.labels->on && !each.labels->texts.empty()) paintings.emplace_back(painter, each, view, scale);
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
