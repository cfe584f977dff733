#include "map/output/LegendShapes.h"

#include "layers/FillPattern.h"

#include <QImage>

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kWidth = 24; ///< points of a rectangle
constexpr double kHeight = 14;
constexpr double kMargin = 2; ///< above and below
constexpr double kGap = 6;
const QColor kOutline(90, 90, 90);

office::ShapeLook FilledWith(const QColor& color) {
    return {color, {}, {}, kOutline, 0.5};
}

office::ShapeLook LookOfPolygon(const ClassLook& look) {
    office::ShapeLook shape = FilledWith(look.color);
    const FillPattern pattern = PatternOfNumber(look.fill);
    shape.pattern = TileOf(pattern);
    shape.ground = Qt::white;
    if (pattern == FillPattern::Transparent) shape.fill = QColor();
    return shape;
}

/// A form of this size, so far from where the lines of its cell begin.
QRectF Within(const SwatchPlace& place, double from, QSizeF size) {
    return {QPointF(place.cell.left() + from, place.cell.center().y() - size.height() / 2), size};
}

} // namespace

std::optional<office::FillPattern> TileOf(FillPattern pattern) {
    const QImage tile = PatternBrush(pattern, Qt::black, 1).textureImage();
    if (tile.isNull()) return {};
    office::FillPattern rows{};
    for (int y = 0; y < kTile; ++y)
        for (int x = 0; x < kTile; ++x)
            if (qAlpha(tile.pixel(x, y)) != 0) rows[static_cast<std::size_t>(y)] |= static_cast<quint8>(0x80 >> x);
    return rows;
}

office::ShapeKind FormOf(Marker marker) {
    switch (marker) {
    case Marker::Square:
        return office::ShapeKind::Rectangle;
    case Marker::Triangle:
        return office::ShapeKind::Triangle;
    case Marker::Cross:
        return office::ShapeKind::Cross;
    case Marker::Circle:
        break;
    }
    return office::ShapeKind::Ellipse;
}

std::vector<office::ShapePlan> SwatchShapes(const ClassLook& look, ThemeKind kind, const SwatchPlace& place,
                                            const QString& name) {
    std::vector<office::ShapePlan> shapes;
    double from = 0;
    if (kind != ThemeKind::Points) {
        const double height = std::min(kHeight, place.cell.height() - 2 * kMargin);
        shapes.push_back(
            {name, office::ShapeKind::Rectangle, Within(place, from, {kWidth, height}), LookOfPolygon(look)});
        from += kWidth + kGap;
    }
    if (kind == ThemeKind::Points || kind == ThemeKind::Both) {
        const auto marker = static_cast<Marker>(std::clamp(look.marker, 0, 3));
        const double room = kind == ThemeKind::Points ? place.cell.width() - kGap : place.markerSize;
        from += std::max(0.0, (room - place.markerSize) / 2);
        shapes.push_back({kind == ThemeKind::Both ? name + QStringLiteral(" marker") : name, FormOf(marker),
                          Within(place, from, {place.markerSize, place.markerSize}), FilledWith(look.color)});
    }
    return shapes;
}

} // namespace tessaro
