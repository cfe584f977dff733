#include "database/Schema.h"

#include "jet/engine/Connection.h"
#include "jet/values/Quoting.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tessaro::schema {

namespace {

// Own keys are counters because databases are also filled by statements that leave the key out.
const std::vector<TableDefinition> kDataTables = {
    {"Language", "LanguageName TEXT(100), LanguageCode TEXT(10), LanguageDefault YESNO", {}},
    {"Data",
     "RowNId COUNTER PRIMARY KEY, TimePeriodNId LONG, IUSNId LONG, AreaNId LONG, SourceNId LONG, FootnoteNId LONG, "
     "Datavalue TEXT(60)",
     // The first two serve the grid and carry all that it reads, as the engine walks areas in order and then takes an
     // area's rows whole or one IUS and source at a time; the third serves the filters that begin at periods.
     {"AreaNId, TimePeriodNId, IUSNId, SourceNId, FootnoteNId, Datavalue",
      "IUSNId, SourceNId, AreaNId, TimePeriodNId, FootnoteNId, Datavalue", "TimePeriodNId, IUSNId, AreaNId",
      "SourceNId"}},
    {"TimePeriod", "TimePeriodNId COUNTER PRIMARY KEY, TimePeriod TEXT(60), DataExists YESNO", {"TimePeriod"}},
    {"Indicator_Unit_Subpop",
     "IUSNId COUNTER PRIMARY KEY, IndicatorGId TEXT(60), UnitGId TEXT(60), SubpopGId TEXT(60), Min_Value DOUBLE, "
     "Max_Value DOUBLE, DataExists YESNO",
     {"IndicatorGId, UnitGId, SubpopGId", "UnitGId", "SubpopGId"}},
    {"Region", "RegionGId TEXT(60), RegionNId COUNTER PRIMARY KEY, [Region] TEXT(255)", {"RegionGId"}},

    {"Sector",
     "SectorLabel1GId TEXT(60), SectorLabel2GId TEXT(60), DataExists YESNO",
     {"SectorLabel1GId", "SectorLabel2GId"}},
    {"Goal",
     "GoalLabel1GId TEXT(60), GoalLabel2GId TEXT(60), GoalLabel3GId TEXT(60), DataExists YESNO",
     {"GoalLabel1GId", "GoalLabel2GId", "GoalLabel3GId"}},
    {"Institution",
     "InstitutionLabel1GId TEXT(60), InstitutionLabel2GId TEXT(60), DataExists YESNO",
     {"InstitutionLabel1GId", "InstitutionLabel2GId"}},
    {"Convention",
     "ConventionLabel1GId TEXT(60), ConventionLabel2GId TEXT(60), ConventionLabel3GId TEXT(60), DataExists YESNO",
     {"ConventionLabel1GId", "ConventionLabel2GId", "ConventionLabel3GId"}},

    {"Indicator_Sector", "IndicatorGId TEXT(60), SectorLabel2GId TEXT(60)", {"IndicatorGId", "SectorLabel2GId"}},
    {"Indicator_Goal", "IUSNId LONG, GoalLabel3GId TEXT(60)", {"IUSNId", "GoalLabel3GId"}},
    {"Indicator_CF", "IUSNId LONG, CFGId TEXT(60)", {"IUSNId", "CFGId"}},
    {"Indicator_Theme", "IUSNId LONG, ThemeGId TEXT(60)", {"IUSNId", "ThemeGId"}},
    {"Indicator_Institution", "IUSNId LONG, InstitutionLabel2GId TEXT(60)", {"IUSNId", "InstitutionLabel2GId"}},
    {"Indicator_Convention", "IUSNId LONG, ConventionLabel3GId TEXT(60)", {"IUSNId", "ConventionLabel3GId"}},
    {"Indicator_Source", "IUSNId LONG, SourceNId LONG, RecommendedSource YESNO", {"IUSNId, SourceNId", "SourceNId"}},

    {"Database_Log",
     "Databaseid COUNTER PRIMARY KEY, [TimeStamp] DATETIME, DatabaseFileName TEXT(255), [Action] TEXT(255)",
     {}},
    {"Template_Log",
     "TemplateID COUNTER PRIMARY KEY, [TimeStamp] DATETIME, TemplateFileName TEXT(255), [Action] TEXT(255)",
     {}},
    {"GUId", "[GUId] GUID, GUIdText TEXT(60), NId LONG", {"NId"}},

    {"Indicator", "IndicatorGId TEXT(60), [Indicator] TEXT(255), Info MEMO", {"IndicatorGId"}, true},
    {"Unit", "UnitGId TEXT(60), Unit TEXT(255)", {"UnitGId"}, true},
    {"Subpop", "SubpopGId TEXT(60), Subpop TEXT(255)", {"SubpopGId"}, true},
    {"Area",
     "AreaGId TEXT(60), AreaNId COUNTER PRIMARY KEY, AreaID TEXT(255), AreaName TEXT(255), AreaLevel INTEGER, "
     "MapFile TEXT(255), DataExists YESNO",
     {"AreaGId", "AreaID", "AreaLevel"},
     true},
    {"Source",
     "SourceGId TEXT(60), SourceNId COUNTER PRIMARY KEY, RegionNId LONG, Source TEXT(255), Info MEMO, DataExists YESNO",
     {"SourceGId", "RegionNId"},
     true},
    {"Footnote", "FootNoteNId COUNTER PRIMARY KEY, FootNote TEXT(255)", {}, true},
    {"CF",
     "CFGId TEXT(60), CFNId COUNTER PRIMARY KEY, CFLabel1 TEXT(255), Info MEMO, DataExists YESNO",
     {"CFGId"},
     true},
    {"Theme", "ThemeGId TEXT(60), ThemeLabel1 TEXT(255), Info MEMO, DataExists YESNO", {"ThemeGId"}, true},
    {"SectorLabel1", "SectorLabel1GId TEXT(60), SectorLabel1 TEXT(255)", {"SectorLabel1GId"}, true},
    {"SectorLabel2", "SectorLabel2GId TEXT(60), SectorLabel2 TEXT(255)", {"SectorLabel2GId"}, true},
    {"GoalLabel1", "GoalLabel1GId TEXT(60), GoalLabel1 TEXT(255)", {"GoalLabel1GId"}, true},
    {"GoalLabel2", "GoalLabel2GId TEXT(60), GoalLabel2 TEXT(255)", {"GoalLabel2GId"}, true},
    {"GoalLabel3", "GoalLabel3GId TEXT(60), GoalLabel3 TEXT(255), Info MEMO", {"GoalLabel3GId"}, true},
    {"InstitutionLabel1", "InstitutionLabel1GId TEXT(60), InstitutionLabel1 TEXT(255)", {"InstitutionLabel1GId"}, true},
    {"InstitutionLabel2", "InstitutionLabel2GId TEXT(60), InstitutionLabel2 TEXT(255)", {"InstitutionLabel2GId"}, true},
    {"ConventionLabel1", "ConventionLabel1GId TEXT(60), ConventionLabel1 TEXT(255)", {"ConventionLabel1GId"}, true},
    {"ConventionLabel2", "ConventionLabel2GId TEXT(60), ConventionLabel2 TEXT(255)", {"ConventionLabel2GId"}, true},
    {"ConventionLabel3",
     "ConventionLabel3GId TEXT(60), ConventionLabel3 TEXT(255), Info MEMO",
     {"ConventionLabel3GId"},
     true},
};

// Files of others may have longer identifiers, periods and values than ours: these tables take what any of them has.
const std::vector<TableDefinition> kSelectionTables = {
    {"_SelIUSNId",
     "IUSNId LONG, IndicatorGId TEXT(255), [Indicator] TEXT(255), UnitGId TEXT(255), Unit TEXT(255), SubpopGId "
     "TEXT(255), "
     "Subpop TEXT(255), SourceNId LONG, Source TEXT(255), RecommendedSource YESNO, Deleted YESNO, "
     "RowNId COUNTER PRIMARY KEY",
     {"IUSNId, SourceNId", "SourceNId", "IndicatorGId"}},
    {"_SelArea",
     "AreaGId TEXT(255), AreaNId LONG, AreaID TEXT(255), AreaName TEXT(255), AreaLevel INTEGER, MapFile TEXT(255)",
     {"AreaNId", "AreaID"}},
    {"_SelTimePeriod", "TimePeriodNId LONG, TimePeriod TEXT(255)", {"TimePeriodNId"}},
};

const std::vector<TableDefinition> kWorkingTables = {
    {"_Data",
     "IndicatorGId TEXT(255), [Indicator] TEXT(255), UnitGId TEXT(255), Unit TEXT(255), SubpopGId TEXT(255), "
     "Subpop TEXT(255), TimePeriod TEXT(255), AreaId TEXT(255), AreaName TEXT(255), Source TEXT(255), "
     "RecommendedSource YESNO, DataValue TEXT(255)",
     {"IndicatorGId", "AreaId"}},
    {"_MapData",
     "[_MapDataID] COUNTER PRIMARY KEY, TimePeriod TEXT(255), AreaID TEXT(255), AreaName TEXT(255), [Indicator] "
     "TEXT(255), "
     "SubPop TEXT(255), DataValue TEXT(255), Unit TEXT(255), Source TEXT(255), [Style] LONG, BreakValue LONG, "
     "[Label] TEXT(255), [Color] LONG, AdvancedLabels TEXT(255), [Size] LONG, Original_DataValue TEXT(255), "
     "PStyle LONG",
     {"AreaID"}},
    {"_Indicator", "IndicatorNId COUNTER PRIMARY KEY, IndicatorGId TEXT(255), [Indicator] TEXT(255)", {"IndicatorGId"}},
    {"_Unit", "UnitNId COUNTER PRIMARY KEY, UnitGId TEXT(255), [Unit] TEXT(255)", {"UnitGId"}},
    {"_Subpop", "SubpopNId COUNTER PRIMARY KEY, SubpopGId TEXT(255), [Subpop] TEXT(255)", {"SubpopGId"}},
};

// What a file must have to pass as a data database: the tables of the first versions, before logs were kept.
bool IsRequired(const TableDefinition& table) {
    static constexpr std::array<std::string_view, 3> later = {"Database_Log", "Template_Log", "GUId"};
    return std::ranges::find(later, table.name) == later.end();
}

std::string PhysicalName(const TableDefinition& table, std::string_view languageCode) {
    std::string name(table.name);
    if (table.perLanguage) name.append("_").append(languageCode);
    return name;
}

/// The declaration of one column, "Unit TEXT(255)", with the text as wide as `widthOf` asks.
std::string Widened(std::string_view declaration, const std::string& table, const WidthOf& widthOf) {
    constexpr std::string_view text = " TEXT(";
    const std::size_t at = declaration.find(text);
    if (!widthOf || at == std::string_view::npos) return std::string(declaration);
    std::string_view column = declaration.substr(0, at);
    const std::string name(column);
    if (column.starts_with('[')) column = column.substr(1, column.size() - 2);
    const int wanted = widthOf(table, column);
    int width = 0;
    std::from_chars(declaration.data() + at + text.size(), declaration.data() + declaration.size(), width);
    if (wanted == 0) return name + " MEMO";
    return wanted <= width ? std::string(declaration) : name + " TEXT(" + std::to_string(wanted) + ")";
}

std::string Declarations(const TableDefinition& table, const std::string& name, const WidthOf& widthOf) {
    constexpr std::string_view between = ", ";
    std::string declarations;
    for (std::string_view rest = table.columns; !rest.empty();) {
        const std::size_t end = std::min(rest.find(between), rest.size());
        declarations += (declarations.empty() ? "" : ", ") + Widened(rest.substr(0, end), name, widthOf);
        rest.remove_prefix(std::min(end + between.size(), rest.size()));
    }
    return declarations;
}

void CreateTable(jet::Connection& connection, const TableDefinition& table, const std::string& name,
                 const WidthOf& widthOf = {}) {
    connection.Execute("CREATE TABLE [" + name + "] (" + Declarations(table, name, widthOf) + ")");
}

/// "[IX_Data_1] ON [Data]"; they are counted from 1.
std::string IndexOf(const std::string& table, int number) {
    return "[IX_" + table + "_" + std::to_string(number) + "] ON [" + table + "]";
}

void CreateIndexes(jet::Connection& connection, const TableDefinition& table, const std::string& name) {
    int number = 0;
    for (const std::string_view columns : table.indexes)
        connection.Execute("CREATE INDEX " + IndexOf(name, ++number) + " (" + std::string(columns) + ")");
}

const TableDefinition& DataTable() {
    return *std::ranges::find(kDataTables, std::string_view("Data"), &TableDefinition::name);
}

void CreateTablesOf(jet::Connection& connection, std::string_view languageCode, const WidthOf& widthOf) {
    for (const TableDefinition& table : kDataTables) {
        if (!table.perLanguage) continue;
        const std::string name = PhysicalName(table, languageCode);
        CreateTable(connection, table, name, widthOf);
        CreateIndexes(connection, table, name);
    }
}

void CreateAll(jet::Connection& connection, const std::vector<TableDefinition>& tables) {
    connection.Begin();
    for (const TableDefinition& table : tables) {
        CreateTable(connection, table, std::string(table.name));
        CreateIndexes(connection, table, std::string(table.name));
    }
    connection.Commit();
}

} // namespace

const std::vector<TableDefinition>& DataTables() {
    return kDataTables;
}
const std::vector<TableDefinition>& SelectionTables() {
    return kSelectionTables;
}
const std::vector<TableDefinition>& WorkingTables() {
    return kWorkingTables;
}

std::vector<std::string> RequiredTables(std::string_view languageCode) {
    std::vector<std::string> names;
    for (const TableDefinition& table : kDataTables) {
        if (!IsRequired(table)) continue;
        std::string name = PhysicalName(table, languageCode);
        std::ranges::transform(name, name.begin(),
                               [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        names.push_back(std::move(name));
    }
    return names;
}

void CreateLanguageTables(jet::Connection& connection, std::string_view languageCode) {
    CreateTablesOf(connection, languageCode, {});
}

void CreateDataDatabase(jet::Connection& connection, const std::vector<DatabaseLanguage>& languages,
                        const WidthOf& widthOf) {
    connection.Begin();
    for (const TableDefinition& table : kDataTables) {
        if (table.perLanguage) continue;
        const std::string name(table.name);
        CreateTable(connection, table, name, widthOf);
        if (name != "Data") CreateIndexes(connection, table, name);
    }
    for (const DatabaseLanguage& language : languages) {
        CreateTablesOf(connection, language.code, widthOf);
        connection.Execute("INSERT INTO [Language] (LanguageName, LanguageCode, LanguageDefault) VALUES (" +
                           jet::QuotedText(language.name) + "," + jet::QuotedText(language.code) +
                           (language.isDefault ? ",True)" : ",False)"));
    }
    connection.Commit();
}

void IndexData(jet::Connection& connection) {
    connection.Begin();
    CreateIndexes(connection, DataTable(), "Data");
    connection.Commit();
}

void UnindexData(jet::Connection& connection) {
    connection.Begin();
    for (std::size_t number = 1; number <= DataTable().indexes.size(); ++number)
        connection.Execute("DROP INDEX " + IndexOf("Data", static_cast<int>(number)));
    connection.Commit();
}

void CreateUserSelections(jet::Connection& connection) {
    CreateAll(connection, kSelectionTables);
}

void CreateInfoSel(jet::Connection& connection) {
    CreateAll(connection, kWorkingTables);
}

void CreateLanguageFile(jet::Connection& connection, const std::vector<std::string>& textColumns) {
    connection.Begin();
    connection.Execute("CREATE TABLE LangMaster (LangID TEXT(60), LangCode TEXT(60), FontCharset INTEGER, Locale LONG, "
                       "FontName TEXT(100), FontSize DOUBLE)");
    std::string columns = "VariableName TEXT(100), ModuleID TEXT(50), TessaroProduct TEXT(10)";
    for (const std::string& column : textColumns)
        columns += ", [" + column + "] MEMO";
    connection.Execute("CREATE TABLE Strings (" + columns + ")");
    connection.Execute("CREATE INDEX IX_Strings_1 ON Strings (VariableName)");
    connection.Commit();
}

} // namespace tessaro::schema
