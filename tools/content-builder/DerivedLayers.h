#pragma once

#include "LayerWriter.h"

namespace tessaro::content {

/// A point for each area: where its label stands, the pole of inaccessibility of its largest part.
[[nodiscard]] LayerContents PointsOf(const LayerContents& areas);
/// The lines along which two areas meet, one record for each pair: "A-B", "Name of A - Name of B". They are the edges
/// that stand in both outlines point by point.
[[nodiscard]] LayerContents BordersOf(const LayerContents& areas);
/// Meridians and parallels every 30 degrees, the tropics and the polar circles.
[[nodiscard]] LayerContents Graticule();
/// A point for each row of a table with the columns AreaID, Name, Longitude and Latitude. Throws std::runtime_error
/// when it can't be read.
[[nodiscard]] LayerContents ReadPlaces(const std::filesystem::path& table);

} // namespace tessaro::content
