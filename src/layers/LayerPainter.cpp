#include "layers/LayerPainter.h"

#include "layers/PixelParts.h"
#include "layers/PolygonPainter.h"

#include <QPainter>

#include <algorithm>

namespace tessaro {

namespace {

/// What is shown, and a margin for markers and pens that reach into the picture.
MapBox Reached(const LayerSymbols& symbols, const MapView& view, double scale) {
    double most = 1;
    for (const LayerSymbol& each : symbols.symbols)
        most = std::max({most, each.markerSize, each.lineWidth, each.outlineWidth});
    const double x = most * scale / view.PixelsX();
    const double y = most * scale / view.PixelsY();
    const MapBox& shown = view.Shown();
    return {shown.left - x, shown.bottom - y, shown.right + x, shown.top + y};
}

/// The features that the picture shows, as far as they are drawn.
std::vector<SeenFeature> SeenFeatures(const MapLayer& layer, const LayerSymbols& symbols, const MapBox& shown) {
    std::vector<SeenFeature> seen;
    const int last = static_cast<int>(symbols.symbols.size()) - 1;
    for (std::size_t i = 0; i < layer.features.size(); ++i) {
        const int symbol = std::min(i < symbols.ofFeature.size() ? symbols.ofFeature[i] : 0, last);
        if (symbol >= 0 && layer.features[i].box.Meets(shown)) seen.push_back({i, symbol});
    }
    return seen;
}

/// The largest markers first, so that none lies hidden below another.
void LargestFirst(std::vector<SeenFeature>& seen, const LayerSymbols& symbols) {
    const auto size = [&symbols](const SeenFeature& each) {
        return symbols.symbols[static_cast<std::size_t>(each.symbol)].markerSize;
    };
    std::stable_sort(seen.begin(), seen.end(),
                     [&size](const SeenFeature& a, const SeenFeature& b) { return size(a) > size(b); });
}

/// Draws points as markers, and lines.
class Painting final {
  public:
    Painting(QPainter& painter, const MapLayer& layer, const MapView& view, double scale)
        : painter_(painter), layer_(layer), view_(view), scale_(scale), parts_(layer, view) {}

    void PaintFeature(const MapFeature& feature, const LayerSymbol& symbol) {
        for (int part = feature.firstPart; part < feature.endPart; ++part)
            if (layer_.kind == LayerKind::Line)
                PaintLine(part);
            else
                PaintMarkers(part, symbol);
    }

    /// Pen and brush of the features that follow.
    void Choose(const LayerSymbol& symbol) {
        if (layer_.kind == LayerKind::Line) {
            painter_.setPen(QPen(symbol.color, symbol.lineWidth * scale_, symbol.lineStyle));
            painter_.setBrush(Qt::NoBrush);
            return;
        }
        const QColor ink = symbol.marker == Marker::Cross ? symbol.color : symbol.outline;
        QPen pen(ink, scale_, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin);
        pen.setCosmetic(IsOfPixels(painter_)); // hairlines are drawn about four times as fast
        painter_.setPen(pen);
        painter_.setBrush(symbol.color);
    }

  private:
    void PaintLine(int part) {
        parts_.Clear();
        parts_.Add(part);
        painter_.drawPolyline(parts_.FirstOf(parts_.At(0)), PixelParts::SizeOf(parts_.At(0)));
    }

    void PaintMarkers(int part, const LayerSymbol& symbol) {
        for (const QPointF* point = layer_.FirstOf(part); point != layer_.EndOf(part); ++point)
            PaintMarker(view_.ToPicture(*point), symbol);
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

    QPainter& painter_;
    const MapLayer& layer_;
    const MapView& view_;
    double scale_;
    PixelParts parts_;
};

void PaintPointsOrLines(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                        double scale, const std::vector<SeenFeature>& seen) {
    Painting painting(painter, layer, view, scale);
    int chosen = -1;
    for (const SeenFeature& each : seen) {
        const LayerSymbol& symbol = symbols.symbols[static_cast<std::size_t>(each.symbol)];
        if (each.symbol != chosen) painting.Choose(symbol); // neighbours mostly have the same
        chosen = each.symbol;
        painting.PaintFeature(layer.features[each.feature], symbol);
    }
}

} // namespace

void PaintLayer(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                double scale) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    std::vector<SeenFeature> seen = SeenFeatures(layer, symbols, Reached(symbols, view, scale));
    if (layer.kind == LayerKind::Point) LargestFirst(seen, symbols);
    if (layer.kind == LayerKind::Polygon)
        PaintPolygons(painter, layer, symbols, view, scale, seen);
    else
        PaintPointsOrLines(painter, layer, symbols, view, scale, seen);
    painter.restore();
}

} // namespace tessaro
