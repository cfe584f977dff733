#pragma once

#include "database/Schema.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tessaro::content {

/// A language of the installation, a row of languages.csv.
struct ContentLanguage {
    std::string textColumn;    ///< its column in strings.csv
    std::string name;          ///< "English [en]"
    std::string code;          ///< "en"
    std::string stringsColumn; ///< its column in Strings: the name without brackets, as the base language is asked for
    int fontCharset = 0;
    int locale = 0;
    std::string fontName;
    double fontSize = 9;
};

[[nodiscard]] std::vector<ContentLanguage> ReadLanguages(const std::filesystem::path& content);
/// The languages as a data database lists them; the first one is the default.
[[nodiscard]] std::vector<schema::DatabaseLanguage> DatabaseLanguages(const std::vector<ContentLanguage>& languages);

/// Makes "TS_<name>.mdb" of every language in `folder` from strings.csv.
void BuildLanguageFiles(const std::filesystem::path& content, const std::filesystem::path& folder);

} // namespace tessaro::content
