#include "layers/LayerPainter.h"

#include "layers/Hatching.h"
#include "layers/RingGroups.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

/// Ends far outside the picture are pulled to this many pixels beyond it: the painter's own numbers end somewhere.
constexpr double kFarOutside = 8000;
/// Pixels of the screen; a polygon smaller than that both ways would be all outline, and is drawn as a dot.
constexpr double kSmallestFeature = 3;

class Painting final {
  public:
    Painting(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view, double scale)
        : painter_(painter), layer_(layer), symbols_(symbols), view_(view), scale_(scale), tiles_(TakesTiles(painter)) {
    }

    void Paint() {
        painter_.setRenderHint(QPainter::Antialiasing);
        const MapBox shown = Reached();
        for (const std::size_t i : Order()) {
            const int symbol = SymbolOf(i);
            if (symbol < 0 || !layer_.features[i].box.Meets(shown)) continue;
            Choose(symbol);
            PaintFeature(layer_.features[i], symbols_.symbols[static_cast<std::size_t>(symbol)]);
        }
    }

  private:
    /// Pictures of lines and curves have no tiles; patterns become lines there.
    static bool TakesTiles(const QPainter& painter) {
        const QPaintEngine* const engine = painter.paintEngine();
        return engine == nullptr || (engine->type() != QPaintEngine::SVG && engine->type() != QPaintEngine::Pdf);
    }

    /// As they follow one another; of points those with the largest markers first, so that none lies hidden below.
    [[nodiscard]] std::vector<std::size_t> Order() const {
        std::vector<std::size_t> order(layer_.features.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        if (layer_.kind != LayerKind::Point || symbols_.symbols.size() < 2) return order;
        const auto size = [this](std::size_t feature) {
            const int symbol = SymbolOf(feature);
            return symbol < 0 ? 0 : symbols_.symbols[static_cast<std::size_t>(symbol)].markerSize;
        };
        std::stable_sort(order.begin(), order.end(),
                         [&size](std::size_t a, std::size_t b) { return size(a) > size(b); });
        return order;
    }

    /// What is shown, and a margin for markers and pens that reach into the picture.
    [[nodiscard]] MapBox Reached() const {
        double most = 1;
        for (const LayerSymbol& each : symbols_.symbols)
            most = std::max({most, each.markerSize, each.lineWidth, each.outlineWidth});
        const double x = most * scale_ / view_.PixelsX();
        const double y = most * scale_ / view_.PixelsY();
        const MapBox& shown = view_.Shown();
        return {shown.left - x, shown.bottom - y, shown.right + x, shown.top + y};
    }

    [[nodiscard]] int SymbolOf(std::size_t feature) const {
        if (symbols_.symbols.empty()) return -1;
        const int symbol = feature < symbols_.ofFeature.size() ? symbols_.ofFeature[feature] : 0;
        return std::min(symbol, static_cast<int>(symbols_.symbols.size()) - 1);
    }

    /// Pen and brush; neighbours mostly have the same.
    void Choose(int number) {
        if (number == chosen_) return;
        chosen_ = number;
        const LayerSymbol& symbol = symbols_.symbols[static_cast<std::size_t>(number)];
        if (layer_.kind == LayerKind::Line) {
            painter_.setPen(QPen(symbol.color, symbol.lineWidth * scale_, symbol.lineStyle));
            painter_.setBrush(Qt::NoBrush);
            return;
        }
        const bool cross = layer_.kind == LayerKind::Point && symbol.marker == Marker::Cross;
        const double width = layer_.kind == LayerKind::Point ? 1 : symbol.outlineWidth;
        QPen pen(cross ? symbol.color : symbol.outline, width * scale_, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin);
        // Hairlines are drawn about four times as fast; in pictures of lines they would not shrink with the picture.
        pen.setCosmetic(tiles_);
        painter_.setPen(width > 0 ? pen : QPen(Qt::NoPen));
        const FillPattern pattern = layer_.kind == LayerKind::Point ? FillPattern::Solid : symbol.pattern;
        painter_.setBrush(tiles_ ? PatternBrush(pattern, symbol.color, scale_) : ToneBrush(pattern, symbol.color));
    }

    void PaintFeature(const MapFeature& feature, const LayerSymbol& symbol) {
        if (layer_.kind == LayerKind::Point)
            PaintMarkers(feature, symbol);
        else if (layer_.kind == LayerKind::Line)
            for (int part = feature.firstPart; part < feature.endPart; ++part)
                painter_.drawPolyline(PixelsOf(part));
        else
            PaintPolygon(feature, symbol);
    }

    void PaintPolygon(const MapFeature& feature, const LayerSymbol& symbol) {
        if (IsSmall(feature.box)) {
            const QPointF middle((feature.box.left + feature.box.right) / 2,
                                 (feature.box.bottom + feature.box.top) / 2);
            return PaintDot(view_.ToPicture(middle), kSmallestFeature, symbol);
        }
        std::vector<QPolygonF> rings;
        for (int part = feature.firstPart; part < feature.endPart; ++part) {
            QPolygonF ring = PixelsOf(part);
            if (ring.size() > 2)
                rings.push_back(std::move(ring));
            else if (!ring.isEmpty())
                PaintDot(ring.front(), 1, symbol);
        }
        if (!tiles_) PaintHatching(rings, symbol);
        if (rings.size() == 1)
            painter_.drawPolygon(rings.front());
        else
            PaintRings(rings);
    }

    /// A ring on its own is drawn as it is; those that may be holes together, so that they stay open.
    void PaintRings(const std::vector<QPolygonF>& rings) {
        for (const std::vector<std::size_t>& group : RingGroups(rings)) {
            if (group.size() == 1) {
                painter_.drawPolygon(rings[group.front()]);
                continue;
            }
            QPainterPath path;
            for (const std::size_t ring : group) {
                path.addPolygon(rings[ring]);
                path.closeSubpath();
            }
            painter_.drawPath(path);
        }
    }

    void PaintHatching(const std::vector<QPolygonF>& rings, const LayerSymbol& symbol) {
        const std::vector<QLineF> lines = HatchLines(symbol.pattern, rings, kTile * scale_);
        if (lines.empty()) return;
        const QPen outline = painter_.pen();
        painter_.setPen(QPen(symbol.color, HatchWidth(symbol.pattern) * scale_, Qt::SolidLine, Qt::FlatCap));
        painter_.drawLines(lines.data(), static_cast<int>(lines.size()));
        painter_.setPen(outline);
    }

    [[nodiscard]] bool IsSmall(const MapBox& box) const {
        const double most = kSmallestFeature * scale_;
        return box.Width() * view_.PixelsX() < most && box.Height() * view_.PixelsY() < most;
    }

    /// What is too small for its ring to be seen, in the colour of its fill.
    void PaintDot(QPointF place, double side, const LayerSymbol& symbol) {
        const bool filled = symbol.pattern != FillPattern::Transparent;
        if (!filled && symbol.outlineWidth <= 0) return;
        side = std::round(side * scale_);
        const QPointF corner(std::round(place.x() - side / 2), std::round(place.y() - side / 2));
        painter_.fillRect(QRectF(corner, QSizeF(side, side)), filled ? symbol.color : symbol.outline);
    }

    void PaintMarkers(const MapFeature& feature, const LayerSymbol& symbol) {
        for (int part = feature.firstPart; part < feature.endPart; ++part)
            for (int i = First(part); i < First(part + 1); ++i)
                PaintMarker(view_.ToPicture(layer_.points[static_cast<std::size_t>(i)]), symbol);
    }

    void PaintMarker(QPointF place, const LayerSymbol& symbol) {
        const double half = symbol.markerSize * scale_ / 2;
        switch (symbol.marker) {
        case Marker::Circle:
            painter_.drawEllipse(place, half, half);
            break;
        case Marker::Square:
            painter_.drawRect(QRectF(place.x() - half, place.y() - half, 2 * half, 2 * half));
            break;
        case Marker::Triangle:
            painter_.drawPolygon(
                QPolygonF{place + QPointF(0, -half), place + QPointF(half, half), place + QPointF(-half, half)});
            break;
        case Marker::Cross:
            painter_.drawLine(place + QPointF(-half, 0), place + QPointF(half, 0));
            painter_.drawLine(place + QPointF(0, -half), place + QPointF(0, half));
            break;
        }
    }

    [[nodiscard]] int First(int part) const { return layer_.partStarts[static_cast<std::size_t>(part)]; }

    /// The points of a part, each moved to the middle of its pixel; points that share one with the point before are
    /// left out.
    [[nodiscard]] QPolygonF PixelsOf(int part) const {
        const QSizeF size = view_.Size();
        QPolygonF pixels(layer_.EndOf(part) - layer_.FirstOf(part));
        QPointF* const begin = pixels.data();
        QPointF* end = begin;
        for (const QPointF* point = layer_.FirstOf(part); point != layer_.EndOf(part); ++point) {
            const QPointF exact = view_.ToPicture(*point);
            const QPointF pixel(Snapped(exact.x(), size.width()), Snapped(exact.y(), size.height()));
            if (end == begin || pixel.x() != end[-1].x() || pixel.y() != end[-1].y()) *end++ = pixel;
        }
        pixels.resize(end - begin);
        return pixels;
    }

    /// The middle of the pixel. Above 0, a conversion to int cuts off as floor does, and is far quicker.
    static double Snapped(double place, double size) {
        return static_cast<int>(std::clamp(place, -kFarOutside, size + kFarOutside) + kFarOutside) - kFarOutside + 0.5;
    }

    QPainter& painter_;
    const MapLayer& layer_;
    const LayerSymbols& symbols_;
    const MapView& view_;
    double scale_;
    bool tiles_;
    int chosen_ = -1;
};

} // namespace

void PaintLayer(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                double scale) {
    painter.save();
    Painting(painter, layer, symbols, view, scale).Paint();
    painter.restore();
}

} // namespace tessaro
