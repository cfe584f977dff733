#include "SampleDatabase.h"

#include "CsvTable.h"
#include "DatabaseFile.h"
#include "ReferenceTables.h"
#include "database/DataExists.h"

#include <QString>

#include <charconv>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

// Fixed, so that building twice gives the same file.
constexpr const char* kTimeStamp = "2026-11-24 12:00:00";

/// A table of values, and what the list of series says of it.
struct Series {
    int source = 0;
    std::map<std::string, int> footnotes; ///< by column; "" for all columns
};

/// Writes Data and what follows from it: which sources an IUS has, and how low and high its values go.
class ValueLoader {
  public:
    ValueLoader(jet::BulkLoad& load, const fs::path& data, const References& references)
        : load_(load), data_(data), references_(references) {}

    void LoadAll() {
        const CsvTable list = CsvTable::Read(data_ / "series.csv");
        std::vector<std::string> order; // as listed: the first source that has an IUS is the one to prefer
        std::map<std::string, Series> byFile;
        for (std::size_t row = 0; row < list.rowCount(); ++row) {
            const std::string& file = list.Cell(row, "File");
            if (!byFile.contains(file)) order.push_back(file);
            Series& series = byFile[file];
            series.source = std::stoi(list.Cell(row, "SourceNId"));
            const std::string& footnote = list.Cell(row, "FootNoteNId");
            if (!footnote.empty()) series.footnotes[list.Cell(row, "Column")] = std::stoi(footnote);
        }
        load_.Into("Data", {"TimePeriodNId", "IUSNId", "AreaNId", "SourceNId", "FootnoteNId", "Datavalue"});
        for (const std::string& file : order)
            LoadFile(file, byFile[file]);
        LoadSourcesOfIus(order, byFile);
    }

    struct Range {
        double lowest = std::numeric_limits<double>::max();
        double highest = std::numeric_limits<double>::lowest();
    };
    [[nodiscard]] const std::map<int, Range>& ranges() const { return ranges_; }

  private:
    struct ValueColumn {
        std::size_t cell = 0;
        int ius = 0;
        std::optional<int> footnote;
    };

    void LoadFile(const std::string& file, const Series& series) {
        const CsvTable table = CsvTable::Read(data_ / "series" / file);
        const std::vector<ValueColumn> columns = ColumnsOf(table, file, series);
        for (std::size_t row = 0; row < table.rowCount(); ++row) {
            const int area = Number(references_.areas, table.Cell(row, std::size_t{0}), file);
            const int period = Number(references_.periods, table.Cell(row, std::size_t{1}), file);
            for (const ValueColumn& column : columns) {
                const std::string& value = table.Cell(row, column.cell);
                if (!value.empty()) AddValue(period, area, series.source, column, value);
            }
        }
    }

    std::vector<ValueColumn> ColumnsOf(const CsvTable& table, const std::string& file, const Series& series) const {
        std::vector<ValueColumn> columns;
        for (std::size_t cell = 2; cell < table.head().size(); ++cell) {
            const std::string& name = table.head()[cell];
            std::optional<int> footnote;
            for (const std::string& key : {std::string(), name}) {
                const auto found = series.footnotes.find(key);
                if (found != series.footnotes.end()) footnote = found->second;
            }
            columns.push_back({cell, Number(references_.ius, name, file), footnote});
        }
        return columns;
    }

    void AddValue(int period, int area, int source, const ValueColumn& column, const std::string& value) {
        double number = 0;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
        if (error != std::errc() || end != value.data() + value.size())
            throw std::runtime_error("\"" + value + "\" is no number");
        Range& range = ranges_[column.ius];
        range.lowest = std::min(range.lowest, number);
        range.highest = std::max(range.highest, number);
        sourcesOfIus_[column.ius].insert(source);
        load_.Add(std::vector<jet::Value>{period, column.ius, area, source,
                                          column.footnote ? jet::Value(*column.footnote) : jet::Value(), value});
    }

    void LoadSourcesOfIus(const std::vector<std::string>& order, const std::map<std::string, Series>& byFile) {
        load_.Into("Indicator_Source", {"IUSNId", "SourceNId", "RecommendedSource"});
        for (auto& [ius, sources] : sourcesOfIus_) {
            bool preferred = true;
            for (const std::string& file : order) {
                const int source = byFile.at(file).source;
                if (sources.erase(source) == 0) continue;
                load_.Add(std::vector<jet::Value>{ius, source, preferred ? -1 : 0});
                preferred = false;
            }
        }
    }

    static int Number(const std::map<std::string, int>& numbers, const std::string& name, const std::string& file) {
        const auto found = numbers.find(name);
        if (found == numbers.end()) throw std::runtime_error(file + " names \"" + name + "\", which no table has");
        return found->second;
    }

    jet::BulkLoad& load_;
    fs::path data_;
    const References& references_;
    std::map<int, Range> ranges_;
    std::map<int, std::set<int>> sourcesOfIus_;
};

void LoadLogs(jet::BulkLoad& load, const std::string& name) {
    load.Into("Database_Log", {"TimeStamp", "DatabaseFileName", "Action"});
    load.Add(std::vector<jet::Value>{kTimeStamp, name, "Created from the published tables"});
    load.Add(std::vector<jet::Value>{kTimeStamp, name, "Marked what has data"});
    load.Into("Template_Log", {"TimeStamp", "TemplateFileName", "Action"});
    load.Add(std::vector<jet::Value>{kTimeStamp, "World template", "Applied"});
}

void WriteRanges(jet::Connection& connection, const std::map<int, ValueLoader::Range>& ranges) {
    connection.Begin();
    for (const auto& [ius, range] : ranges) {
        connection.Execute("UPDATE Indicator_Unit_Subpop SET Min_Value = " + jet::ShortestText(range.lowest) +
                           ", Max_Value = " + jet::ShortestText(range.highest) +
                           " WHERE IUSNId = " + std::to_string(ius));
    }
    connection.Commit();
}

void FillSampleDatabase(const std::string& workFile, const fs::path& content, const std::string& name) {
    const std::vector<ContentLanguage> languages = ReadLanguages(content);
    schema::CreateDataDatabase(*OpenWorkFile(workFile), DatabaseLanguages(languages));

    jet::BulkLoad load(workFile);
    const References references = LoadReferenceTables(load, content / "data", languages);
    ValueLoader values(load, content / "data", references);
    values.LoadAll();
    LoadLogs(load, name);
    load.Finish();

    const auto connection = OpenWorkFile(workFile);
    WriteRanges(*connection, values.ranges());
    schema::IndexData(*connection);
    MarkDataExists(QString::fromStdString(workFile));
    jet::Analyze(workFile);
}

} // namespace

void BuildSampleDatabase(const fs::path& content, const fs::path& file) {
    MakeDatabase(file,
                 [&](const std::string& workFile) { FillSampleDatabase(workFile, content, file.filename().string()); });
}

} // namespace tessaro::content
