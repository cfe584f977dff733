#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaro::content {

/// Renders content/pictures by its manifest.csv (svg, file, width, height, text) into `folder`: JPEG and BMP where the
/// name says so, PNG data under every other name, and each drawing beside as <stem>.svg. `text` is a key of
/// strings.csv, written in the language whose code the file's name begins with. Gives what was passed over, a line
/// each. A QGuiApplication must exist.
[[nodiscard]] std::vector<std::string> BuildPictures(const std::filesystem::path& content,
                                                     const std::filesystem::path& folder);

} // namespace tessaro::content
