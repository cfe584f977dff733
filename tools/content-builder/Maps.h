#pragma once

#include <filesystem>

namespace tessaro::content {

/// Makes the map layers of the content: for each outlines/*.geojson the areas and a layer of points, for the states of
/// the United States their borders too, and for the world its cities and a graticule. Throws std::runtime_error when
/// something can't be read or written.
void BuildMaps(const std::filesystem::path& data, const std::filesystem::path& folder);

} // namespace tessaro::content
