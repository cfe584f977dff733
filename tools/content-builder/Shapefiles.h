#pragma once

#include <filesystem>

namespace tessaro::content {

/// Makes .shp, .shx, .dbf and .cpg of every GeoJSON layer of `outlines` in `folder`. A record's table row has ID_, the
/// AreaID, and Name1_, the name. Throws std::runtime_error for a layer that can't be read or written.
void BuildShapefiles(const std::filesystem::path& outlines, const std::filesystem::path& folder);

} // namespace tessaro::content
