#include "ReferenceTables.h"

#include "CsvTable.h"

#include <optional>
#include <set>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

/// The columns that a table declares, without brackets.
std::vector<std::string> ColumnsOf(const schema::TableDefinition& table) {
    std::vector<std::string> names;
    std::string_view rest = table.columns;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find(','), rest.size());
        std::string_view column = rest.substr(0, length);
        column.remove_prefix(column.find_first_not_of(' '));
        std::string name(column.substr(0, column.find(' ')));
        std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
        names.push_back(std::move(name));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return names;
}

/// Where a column's text stands in a file: in its own cell, or in one of the language with that of the first language
/// behind it.
struct Origin {
    std::string column;
    std::size_t cell = 0;
    std::size_t fallback = 0;
};

std::vector<Origin> OriginsOf(const schema::TableDefinition& table, const CsvTable& file, const std::string& code,
                              const std::string& firstCode) {
    std::vector<Origin> origins;
    for (const std::string& column : ColumnsOf(table)) {
        if (const auto plain = file.ColumnIndex(column)) {
            origins.push_back({column, *plain, *plain});
        } else if (const auto text = file.ColumnIndex(column + ":" + code)) {
            origins.push_back({column, *text, *file.ColumnIndex(column + ":" + firstCode)});
        }
    }
    return origins;
}

class Loader {
  public:
    Loader(jet::BulkLoad& load, const fs::path& data, const std::vector<ContentLanguage>& languages)
        : load_(load), data_(data), languages_(languages) {}

    References LoadAll() {
        for (const schema::TableDefinition& table : schema::DataTables()) {
            const fs::path file = data_ / (std::string(table.name) + ".csv");
            if (fs::exists(file)) LoadTable(table, CsvTable::Read(file));
        }
        LoadAreas();
        LoadLinks();
        LoadPeriods();
        return std::move(references_);
    }

  private:
    void LoadTable(const schema::TableDefinition& table, const CsvTable& file) {
        if (!table.perLanguage) {
            LoadRows(std::string(table.name), OriginsOf(table, file, {}, {}), file);
            return;
        }
        for (const ContentLanguage& language : languages_) {
            LoadRows(std::string(table.name) + "_" + language.code,
                     OriginsOf(table, file, language.code, languages_.front().code), file);
        }
    }

    // Flags begin as False: what has data is marked when the data are there.
    void LoadRows(const std::string& table, const std::vector<Origin>& origins, const CsvTable& file) {
        std::vector<std::string> columns;
        for (const Origin& origin : origins)
            columns.push_back(origin.column);
        const bool flagged = table == "Indicator_Unit_Subpop" || table == "Sector" || table == "Goal" ||
                             table == "Institution" || table == "Convention" || table.starts_with("CF_") ||
                             table.starts_with("Theme_") || table.starts_with("Source_");
        if (flagged) columns.emplace_back("DataExists");
        load_.Into(table, columns);
        std::vector<jet::Value> values;
        for (std::size_t row = 0; row < file.rowCount(); ++row) {
            values.clear();
            for (const Origin& origin : origins) {
                const std::string& text = file.Cell(row, origin.cell);
                values.emplace_back(text.empty() ? file.Cell(row, origin.fallback) : text);
            }
            if (flagged) values.emplace_back(0);
            load_.Add(values);
        }
    }

    void LoadAreas() {
        const CsvTable file = CsvTable::Read(data_ / "areas.csv");
        for (const ContentLanguage& language : languages_) {
            const std::size_t own = Column(file, "AreaName:" + language.code);
            const std::size_t first = Column(file, "AreaName:" + languages_.front().code);
            load_.Into("Area_" + language.code,
                       {"AreaGId", "AreaNId", "AreaID", "AreaName", "AreaLevel", "MapFile", "DataExists"});
            for (std::size_t row = 0; row < file.rowCount(); ++row) {
                const std::string& id = file.Cell(row, "AreaID");
                const std::string& name = file.Cell(row, own).empty() ? file.Cell(row, first) : file.Cell(row, own);
                const std::string& map = file.Cell(row, "MapFile");
                const int number = static_cast<int>(row) + 1;
                load_.Add(std::vector<jet::Value>{file.Cell(row, "AreaGId"), number, id, name,
                                                  static_cast<int>(id.size() / 3),
                                                  map.empty() ? jet::Value() : jet::Value(map), 0});
                references_.areas[id] = number;
            }
        }
    }

    // Sectors hang on the indicator, all other classifications on the combination with unit and subpopulation.
    void LoadLinks() {
        const CsvTable indicators = CsvTable::Read(data_ / "Indicator.csv");
        load_.Into("Indicator_Sector", {"IndicatorGId", "SectorLabel2GId"});
        for (std::size_t row = 0; row < indicators.rowCount(); ++row) {
            for (const std::string& sector : Words(indicators.Cell(row, "Sectors")))
                load_.Add(std::vector<jet::Value>{indicators.Cell(row, "IndicatorGId"), sector});
        }
        const CsvTable ius = CsvTable::Read(data_ / "Indicator_Unit_Subpop.csv");
        for (std::size_t row = 0; row < ius.rowCount(); ++row)
            references_.ius[ius.Cell(row, "Key")] = static_cast<int>(row) + 1;
        LoadLink(ius, "Goals", "Indicator_Goal", "GoalLabel3GId");
        LoadLink(ius, "CFs", "Indicator_CF", "CFGId");
        LoadLink(ius, "Themes", "Indicator_Theme", "ThemeGId");
        LoadLink(ius, "Institutions", "Indicator_Institution", "InstitutionLabel2GId");
        LoadLink(ius, "Conventions", "Indicator_Convention", "ConventionLabel3GId");
    }

    void LoadLink(const CsvTable& ius, std::string_view list, std::string_view table, const std::string& column) {
        load_.Into(table, {"IUSNId", column});
        for (std::size_t row = 0; row < ius.rowCount(); ++row) {
            for (const std::string& item : Words(ius.Cell(row, list)))
                load_.Add(std::vector<jet::Value>{static_cast<int>(row) + 1, item});
        }
    }

    void LoadPeriods() {
        std::set<std::string> periods;
        const auto collect = [&periods](const CsvTable& table) {
            for (std::size_t row = 0; row < table.rowCount(); ++row)
                periods.insert(table.Cell(row, "TimePeriod"));
        };
        for (const auto& entry : fs::directory_iterator(data_ / "series")) {
            if (entry.path().extension() == ".csv") collect(CsvTable::Read(entry.path()));
        }
        collect(CsvTable::Read(data_ / "more_periods.csv"));
        load_.Into("TimePeriod", {"TimePeriodNId", "TimePeriod", "DataExists"});
        int number = 0;
        for (const std::string& period : periods) {
            references_.periods[period] = ++number;
            load_.Add(std::vector<jet::Value>{number, period, 0});
        }
    }

    static std::size_t Column(const CsvTable& file, const std::string& name) {
        const auto index = file.ColumnIndex(name);
        if (!index) throw std::runtime_error("there is no column " + name);
        return *index;
    }

    jet::BulkLoad& load_;
    fs::path data_;
    const std::vector<ContentLanguage>& languages_;
    References references_;
};

} // namespace

References LoadReferenceTables(jet::BulkLoad& load, const fs::path& data,
                               const std::vector<ContentLanguage>& languages) {
    return Loader(load, data, languages).LoadAll();
}

} // namespace tessaro::content
