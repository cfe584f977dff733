#pragma once

#include "layers/MapLayer.h"

namespace tessaro {

/// Where the label of a feature stands, and how much room there is: the distance to the nearest edge, in the layer's
/// units; 0 for points and lines, below 0 for a feature without a shape.
struct LabelPlace {
    QPointF at;
    double room = -1;
};

/// A place for each feature of a layer. In polygons it is the point of the largest part that lies farthest from every
/// edge (pole of inaccessibility), to within a twentieth of the part's shorter side: found by dividing squares and
/// following the most promising first. On lines it is the middle point of the longest part, of points the first.
[[nodiscard]] std::vector<LabelPlace> LabelPlaces(const MapLayer& layer);

} // namespace tessaro
