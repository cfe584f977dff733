#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tessaro::content {

/// Builds the application folder from the sources in `content`: settings, templates, sample database, language files,
/// maps, pictures and documents. What is there already is replaced file by file, so a running program keeps what it has
/// open. Gives what was missing and passed over, a line each; throws when something can't be read or written.
[[nodiscard]] std::vector<std::string> BuildInstallation(const std::filesystem::path& content,
                                                         const std::filesystem::path& target);

} // namespace tessaro::content
