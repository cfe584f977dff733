#pragma once

#include "map/MapLayerList.h"
#include "map/classes/ClassTable.h"
#include "office/Shape.h"

#include <QRectF>

#include <vector>

namespace tessaro {

/// The tile of a fill of polygons, row by row; nothing for even fills and for none.
[[nodiscard]] std::optional<office::FillPattern> TileOf(FillPattern pattern);
/// The form of a marker.
[[nodiscard]] office::ShapeKind FormOf(Marker marker);

/// A class as forms in its cell: a rectangle for polygons, a marker for points, both beside each other for both. They
/// stand in the middle of the cell's height, where its lines begin. `name` is that of the first.
struct SwatchPlace {
    QRectF cell;
    double markerSize = 0; ///< points
};
[[nodiscard]] std::vector<office::ShapePlan> SwatchShapes(const ClassLook& look, ThemeKind kind,
                                                          const SwatchPlace& place, const QString& name);

} // namespace tessaro
