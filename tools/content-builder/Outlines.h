#pragma once

#include "LayerWriter.h"

namespace tessaro::content {

/// The areas of a GeoJSON file of MultiPolygons with the properties ID_ and Name1_. Throws std::runtime_error for a
/// file that can't be read.
[[nodiscard]] LayerContents ReadOutlines(const std::filesystem::path& file);

} // namespace tessaro::content
