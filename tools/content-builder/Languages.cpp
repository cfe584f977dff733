#include "Languages.h"

#include "CsvTable.h"
#include "DatabaseFile.h"
#include "jet/engine/BulkLoad.h"

#include <algorithm>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

std::string WithoutBrackets(std::string name) {
    std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
    return name;
}

std::string CodeOf(const std::string& name) {
    const std::size_t open = name.find('[');
    const std::size_t close = name.find(']');
    if (open == std::string::npos || close == std::string::npos || close < open)
        throw std::runtime_error("languages.csv: \"" + name + "\" has no code in brackets");
    return name.substr(open + 1, close - open - 1);
}

// Every file has all languages: a screen shows the base language's text where its own is missing.
void FillLanguageFile(const std::string& workFile, const std::vector<ContentLanguage>& languages,
                      const CsvTable& strings) {
    std::vector<std::string> textColumns;
    for (const ContentLanguage& language : languages)
        textColumns.push_back(language.stringsColumn);
    schema::CreateLanguageFile(*OpenWorkFile(workFile), textColumns);

    jet::BulkLoad load(workFile);
    load.Into("LangMaster", {"LangID", "LangCode", "FontCharset", "Locale", "FontName", "FontSize"});
    for (const ContentLanguage& language : languages) {
        load.Add(std::vector<jet::Value>{language.stringsColumn, language.name, language.fontCharset, language.locale,
                                         language.fontName, language.fontSize});
    }
    std::vector<std::string> columns = {"VariableName", "ModuleID", "TessaroProduct"};
    columns.insert(columns.end(), textColumns.begin(), textColumns.end());
    load.Into("Strings", columns);
    for (std::size_t row = 0; row < strings.rowCount(); ++row) {
        std::vector<jet::Value> values = {strings.Cell(row, "VariableName"), strings.Cell(row, "ModuleID"), "TS"};
        for (const ContentLanguage& language : languages)
            values.emplace_back(strings.Cell(row, language.textColumn));
        load.Add(values);
    }
    load.Finish();
}

} // namespace

std::vector<ContentLanguage> ReadLanguages(const fs::path& content) {
    const CsvTable table = CsvTable::Read(content / "languages.csv");
    std::vector<ContentLanguage> languages;
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const std::string& name = table.Cell(row, "LangCode");
        languages.push_back({table.Cell(row, "LangID"), name, CodeOf(name), WithoutBrackets(name),
                             std::stoi(table.Cell(row, "FontCharset")), std::stoi(table.Cell(row, "Locale")),
                             table.Cell(row, "FontName"), std::stod(table.Cell(row, "FontSize"))});
    }
    return languages;
}

std::vector<schema::DatabaseLanguage> DatabaseLanguages(const std::vector<ContentLanguage>& languages) {
    std::vector<schema::DatabaseLanguage> rows;
    for (const ContentLanguage& language : languages)
        rows.push_back({language.name, language.code, rows.empty()});
    return rows;
}

void BuildLanguageFiles(const fs::path& content, const fs::path& folder) {
    const std::vector<ContentLanguage> languages = ReadLanguages(content);
    const CsvTable strings = CsvTable::Read(content / "strings.csv");
    for (const ContentLanguage& language : languages) {
        MakeDatabase(folder / ("TS_" + language.name + ".mdb"),
                     [&](const std::string& workFile) { FillLanguageFile(workFile, languages, strings); });
    }
}

} // namespace tessaro::content
