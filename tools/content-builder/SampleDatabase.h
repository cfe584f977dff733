#pragma once

#include <filesystem>

namespace tessaro::content {

/// Makes the sample database from the tables of content/data. Throws when a table is missing or names something that
/// no other table has.
void BuildSampleDatabase(const std::filesystem::path& content, const std::filesystem::path& file);

} // namespace tessaro::content
