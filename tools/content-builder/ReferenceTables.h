#pragma once

#include "Languages.h"
#include "jet/engine/BulkLoad.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tessaro::content {

/// What the rows of Data refer to, by the names that the tables of values use.
struct References {
    std::map<std::string, int> areas;   ///< AreaID -> AreaNId
    std::map<std::string, int> ius;     ///< column of a table of values -> IUSNId
    std::map<std::string, int> periods; ///< TimePeriod -> TimePeriodNId
};

/// Writes the lists, classifications and links of a data database from content/data: every table of the schema that has
/// a file of its name there, with one cell a language in the language-bound ones (a blank cell takes the first
/// language's text).
[[nodiscard]] References LoadReferenceTables(jet::BulkLoad& load, const std::filesystem::path& data,
                                             const std::vector<ContentLanguage>& languages);

} // namespace tessaro::content
