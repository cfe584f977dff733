#pragma once

#include "layers/MapLayer.h"

#include <optional>

namespace tessaro {

/// True when a layer lies within 180 degrees of longitude and 90 of latitude, or little beyond as circles around places
/// do, so that its units are taken for degrees.
[[nodiscard]] bool IsInDegrees(const MapBox& extent);

/// Spans of longitude, one for each part of a layer, as far as they lie within the world.
struct LongitudeSpan {
    double left = 0;
    double right = 0;
};
[[nodiscard]] std::vector<LongitudeSpan> SpansOf(const MapLayer& layer);

/// Where to cut the world so that what the spans cover becomes narrower: the end of their widest empty band, when that
/// is wider than the gap across 180 degrees. Nothing when 180 degrees is the best place.
[[nodiscard]] std::optional<double> SeamOf(std::vector<LongitudeSpan> spans);

/// Moves the parts that lie east of the seam by a turn to the west, so that those on both sides of 180 degrees lie side
/// by side; parts that were moved before come back first. Without a seam all lie as in the file.
void ApplySeam(MapLayer& layer, std::optional<double> seam);

/// The longitude within -180 to 180 of one that may have been moved.
[[nodiscard]] double WithinWorld(double longitude);

/// The box around some features, for a view of them. Where they lie on both sides of 180 degrees, the box is around the
/// side with more of them. Empty when they have no shapes.
[[nodiscard]] MapBox BoxAround(const MapLayer& layer, const std::vector<int>& features);

} // namespace tessaro
