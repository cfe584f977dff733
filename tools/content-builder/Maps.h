#pragma once

#include <filesystem>

namespace tessaro::content {

/// Makes the map layers of the content: for each outlines/*.geojson the areas and a layer of points, for the states of
/// the United States their borders too, and for the world its cities and a graticule. Throws std::runtime_error when
/// something can't be read or written.
void BuildMaps(const std::filesystem::path& data, const std::filesystem::path& folder);

/// Makes the states of Australia as installations have them whose map files are scrambled: the file's second word is
/// 1, the first has its sign changed; index, table and name of the code page are as always. Throws as BuildMaps.
void BuildScrambledMap(const std::filesystem::path& data, const std::filesystem::path& folder);

} // namespace tessaro::content
