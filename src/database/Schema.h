#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace jet {
class Connection;
}

/// Every table that the system reads or writes, in the files in which it lives.
namespace tessaro::schema {

constexpr int kLongestName = 255; ///< characters of names, area ids, sources and footnotes
constexpr int kLongestTime = 60;  ///< of periods
constexpr int kLongestValue = 60; ///< of values

/// A language of a data database, a row of its Language table.
struct DatabaseLanguage {
    std::string name; ///< "English [en]"
    std::string code; ///< "en"
    bool isDefault = false;
};

/// A table as it is declared: columns in Jet SQL, and for each index the columns that it covers.
struct TableDefinition {
    std::string_view name;    ///< without the language suffix
    std::string_view columns; ///< "TimePeriodNId COUNTER PRIMARY KEY, TimePeriod TEXT(50)"
    std::vector<std::string_view> indexes;
    bool perLanguage = false; ///< stands once per language as name + "_" + code
};

[[nodiscard]] const std::vector<TableDefinition>& DataTables();
[[nodiscard]] const std::vector<TableDefinition>& SelectionTables(); ///< UserSelections.mdb
[[nodiscard]] const std::vector<TableDefinition>& WorkingTables();   ///< InfoSel.mdb

/// The 34 table names, in lower case, that a data database whose default language has this code must have.
[[nodiscard]] std::vector<std::string> RequiredTables(std::string_view languageCode);

/// The characters that a text column is to hold, given its table (with the language's code) and its name; 0 for no
/// bound at all, less than the schema has for the schema's.
using WidthOf = std::function<int(std::string_view table, std::string_view column)>;

/// Makes the tables of an empty data database and its Language rows, with wider texts where `widthOf` asks for them.
/// Indexes on Data are left to IndexData, so that a bulk load can come in between. Throws jet::Error.
void CreateDataDatabase(jet::Connection& connection, const std::vector<DatabaseLanguage>& languages,
                        const WidthOf& widthOf = {});
/// Adds the indexes of Data and has the engine learn the sizes of all tables.
void IndexData(jet::Connection& connection);
/// Takes the indexes of Data away from a database of this schema, for a bulk load that IndexData follows.
void UnindexData(jet::Connection& connection);
/// Adds the tables of one more language to a data database, without a row in Language.
void CreateLanguageTables(jet::Connection& connection, std::string_view languageCode);

void CreateUserSelections(jet::Connection& connection);
void CreateInfoSel(jet::Connection& connection);
/// A language file: LangMaster, and Strings with one text column for each of `textColumns`.
void CreateLanguageFile(jet::Connection& connection, const std::vector<std::string>& textColumns);

} // namespace tessaro::schema
