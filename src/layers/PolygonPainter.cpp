#include "layers/PolygonPainter.h"

#include "layers/Hatching.h"
#include "layers/OutlinePicture.h"
#include "layers/PixelParts.h"
#include "layers/RingGroups.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

/// Pixels of the screen; a polygon smaller than that both ways would be all outline, and is drawn as a dot.
constexpr double kSmallestFeature = 3;
constexpr int kFewestOfRing = 3; ///< points; what has fewer is drawn as a pixel

/// A feature on the picture: some of the pixel parts.
struct Shape {
    int symbol;
    std::size_t firstPart;
    std::size_t endPart;
};

struct Dot {
    QPointF place;
    int symbol;
};

bool SameOutline(const LayerSymbol& a, const LayerSymbol& b) {
    return a.outline == b.outline && a.outlineWidth == b.outlineWidth;
}

class PolygonPainting final {
  public:
    PolygonPainting(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                    double scale)
        : painter_(painter), layer_(layer), symbols_(symbols.symbols), view_(view), scale_(scale), parts_(layer, view) {
    }

    void Paint(const std::vector<SeenFeature>& seen) {
        for (const SeenFeature& each : seen)
            Gather(each);
        if (IsOfPixels(painter_)) {
            FillAll();
            OutlineAll();
        } else {
            for (const Shape& shape : shapes_)
                PaintLines(shape);
        }
        for (const Dot& dot : dots_)
            PaintDot(dot.place, kSmallestFeature, SymbolOf(dot.symbol));
    }

  private:
    [[nodiscard]] const LayerSymbol& SymbolOf(int number) const { return symbols_[static_cast<std::size_t>(number)]; }

    void Gather(const SeenFeature& seen) {
        const MapFeature& feature = layer_.features[seen.feature];
        if (IsSmall(feature.box)) {
            const QPointF middle((feature.box.left + feature.box.right) / 2,
                                 (feature.box.bottom + feature.box.top) / 2);
            dots_.push_back({view_.ToPicture(middle), seen.symbol});
            return;
        }
        const std::size_t first = parts_.Count();
        for (int part = feature.firstPart; part < feature.endPart; ++part)
            parts_.Add(part);
        shapes_.push_back({seen.symbol, first, parts_.Count()});
    }

    [[nodiscard]] bool IsSmall(const MapBox& box) const {
        const double most = kSmallestFeature * scale_;
        return box.Width() * view_.PixelsX() < most && box.Height() * view_.PixelsY() < most;
    }

    /// Fills without outlines, then these over them. Edges that an outline covers needn't be smooth.
    void FillAll() {
        painter_.setPen(Qt::NoPen);
        int chosen = -1;
        for (const Shape& shape : shapes_) {
            const LayerSymbol& symbol = SymbolOf(shape.symbol);
            if (shape.symbol != chosen) {
                chosen = shape.symbol;
                painter_.setRenderHint(QPainter::Antialiasing, symbol.outlineWidth <= 0);
                painter_.setBrush(PatternBrush(symbol.pattern, symbol.color, scale_));
            }
            PaintRings(shape);
        }
        painter_.setRenderHint(QPainter::Antialiasing);
    }

    /// Outlines of the first symbol lie over those of the others.
    void OutlineAll() {
        for (std::size_t i = symbols_.size(); i-- > 0;) {
            const auto isSame = [&](const LayerSymbol& each) { return SameOutline(each, symbols_[i]); };
            const bool done = std::any_of(symbols_.begin() + static_cast<qptrdiff>(i) + 1, symbols_.end(), isSame);
            if (!done && symbols_[i].outlineWidth > 0) Outline(symbols_[i]);
        }
    }

    void Outline(const LayerSymbol& symbol) {
        std::vector<const PixelPart*> rings;
        QRectF box;
        for (const Shape& shape : shapes_) {
            if (!SameOutline(SymbolOf(shape.symbol), symbol)) continue;
            for (std::size_t i = shape.firstPart; i < shape.endPart; ++i)
                if (PixelParts::SizeOf(parts_.At(i)) >= kFewestOfRing) rings.push_back(&parts_.At(i));
        }
        if (rings.empty()) return;
        for (const PixelPart* ring : rings)
            box = ring == rings.front() ? ring->box : Together(box, ring->box);
        const double width = symbol.outlineWidth * scale_;
        if (width > OutlinePicture::kMostWidth) return OutlineByPen(symbol, rings);
        constexpr double kMargin = OutlinePicture::kMostWidth;
        box.adjust(-kMargin, -kMargin, kMargin, kMargin);
        OutlinePicture picture((box & QRectF(QPointF(), view_.Size())).toAlignedRect(), symbol.outline, width);
        for (const PixelPart* ring : rings)
            picture.AddRing(parts_.FirstOf(*ring), parts_.EndOf(*ring));
        painter_.drawImage(picture.Corner(), picture.Image());
    }

    /// A box around both, flat ones too.
    static QRectF Together(const QRectF& a, const QRectF& b) {
        return {QPointF(std::min(a.left(), b.left()), std::min(a.top(), b.top())),
                QPointF(std::max(a.right(), b.right()), std::max(a.bottom(), b.bottom()))};
    }

    void OutlineByPen(const LayerSymbol& symbol, const std::vector<const PixelPart*>& rings) {
        painter_.setPen(PenOf(symbol));
        painter_.setBrush(Qt::NoBrush);
        for (const PixelPart* ring : rings)
            painter_.drawPolygon(parts_.FirstOf(*ring), PixelParts::SizeOf(*ring));
    }

    [[nodiscard]] QPen PenOf(const LayerSymbol& symbol) const {
        if (symbol.outlineWidth <= 0) return Qt::NoPen;
        QPen pen(symbol.outline, symbol.outlineWidth * scale_, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin);
        pen.setCosmetic(IsOfPixels(painter_));
        return pen;
    }

    /// Fill, hatching and outline of one feature, for pictures of lines.
    void PaintLines(const Shape& shape) {
        const LayerSymbol& symbol = SymbolOf(shape.symbol);
        PaintHatching(shape, symbol);
        painter_.setPen(PenOf(symbol));
        painter_.setBrush(ToneBrush(symbol.pattern, symbol.color));
        PaintRings(shape);
    }

    void PaintHatching(const Shape& shape, const LayerSymbol& symbol) {
        std::vector<QPolygonF> rings;
        for (std::size_t i = shape.firstPart; i < shape.endPart; ++i)
            if (PixelParts::SizeOf(parts_.At(i)) >= kFewestOfRing) rings.push_back(PolygonOf(i));
        const std::vector<QLineF> lines = HatchLines(symbol.pattern, rings, kTile * scale_);
        if (lines.empty()) return;
        painter_.setPen(QPen(symbol.color, HatchWidth(symbol.pattern) * scale_, Qt::SolidLine, Qt::FlatCap));
        painter_.drawLines(lines.data(), static_cast<int>(lines.size()));
    }

    /// A ring on its own is drawn as it is; those that may be holes together, so that they stay open.
    void PaintRings(const Shape& shape) {
        std::vector<QRectF> boxes;
        std::vector<std::size_t> rings;
        for (std::size_t i = shape.firstPart; i < shape.endPart; ++i) {
            const PixelPart& part = parts_.At(i);
            if (PixelParts::SizeOf(part) >= kFewestOfRing) {
                boxes.push_back(part.box);
                rings.push_back(i);
            } else if (PixelParts::SizeOf(part) > 0) {
                PaintDot(*parts_.FirstOf(part), 1, SymbolOf(shape.symbol));
            }
        }
        if (rings.size() == 1) return PaintRing(rings.front());
        for (const std::vector<std::size_t>& group : RingGroups(boxes)) {
            if (group.size() == 1) {
                PaintRing(rings[group.front()]);
                continue;
            }
            QPainterPath path;
            for (const std::size_t ring : group) {
                path.addPolygon(PolygonOf(rings[ring]));
                path.closeSubpath();
            }
            painter_.drawPath(path);
        }
    }

    void PaintRing(std::size_t ring) {
        painter_.drawPolygon(parts_.FirstOf(parts_.At(ring)), PixelParts::SizeOf(parts_.At(ring)));
    }

    [[nodiscard]] QPolygonF PolygonOf(std::size_t ring) const {
        const PixelPart& part = parts_.At(ring);
        return QPolygonF(QList<QPointF>(parts_.FirstOf(part), parts_.EndOf(part)));
    }

    /// What is too small for its ring to be seen, in the colour of its fill.
    void PaintDot(QPointF place, double side, const LayerSymbol& symbol) {
        const bool filled = symbol.pattern != FillPattern::Transparent;
        if (!filled && symbol.outlineWidth <= 0) return;
        side = std::round(side * scale_);
        const QPointF corner(std::round(place.x() - side / 2), std::round(place.y() - side / 2));
        painter_.fillRect(QRectF(corner, QSizeF(side, side)), filled ? symbol.color : symbol.outline);
    }

    QPainter& painter_;
    const MapLayer& layer_;
    const std::vector<LayerSymbol>& symbols_;
    const MapView& view_;
    double scale_;
    PixelParts parts_;
    std::vector<Shape> shapes_;
    std::vector<Dot> dots_;
};

} // namespace

bool IsOfPixels(const QPainter& painter) {
    const QPaintEngine* const engine = painter.paintEngine();
    return engine == nullptr || (engine->type() != QPaintEngine::SVG && engine->type() != QPaintEngine::Pdf);
}

void PaintPolygons(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                   double scale, const std::vector<SeenFeature>& seen) {
    PolygonPainting(painter, layer, symbols, view, scale).Paint(seen);
}

} // namespace tessaro
