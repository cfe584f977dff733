#pragma once

#include <filesystem>

namespace tessaro::content {

/// Writes the product's sounds, each a short piece that can be repeated without a seam: the one that TS.ini names, and
/// two to choose instead.
void BuildSounds(const std::filesystem::path& folder);

} // namespace tessaro::content
