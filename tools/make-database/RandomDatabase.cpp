#include "RandomDatabase.h"

#include "DatabaseFile.h"
#include "RandomNames.h"
#include "database/DataExists.h"
#include "database/Schema.h"
#include "jet/engine/BulkLoad.h"

#include <QString>

#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <utility>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

constexpr int kMostAreas = 400'000; // three characters number 46,655 children below a parent
constexpr int kSubpopulations = 4;
constexpr int kUnits = 6;
constexpr int kClassItems = 12;
constexpr int kFootnotes = 3;
constexpr const char* kTimeStamp = "2026-01-01 00:00:00";

using Row = std::vector<jet::Value>;

std::string Key(const char* kind, int number) {
    return std::string("-") + kind + std::to_string(number);
}

/// One item in ten is local: its identifier has no leading "-".
std::string MixedKey(const char* kind, int number) {
    return number % 10 == 9 ? kind + std::to_string(number) : Key(kind, number);
}

class Filler {
  public:
    Filler(jet::BulkLoad& load, const RandomDatabaseSize& size) : load_(load), size_(size) {}

    void FillAll() {
        FillAreas();
        FillPeriods();
        FillIndicators();
        FillClassifications();
        FillSources();
        FillData();
        FillSourcesOfIus();
        FillLogs();
    }

  private:
    /// Rows of a language-bound table, once for each language; other languages than the first show their code.
    void PerLanguage(const std::string& table, const std::vector<std::string>& columns,
                     const std::function<void(const std::function<std::string(std::string)>&)>& rows) {
        for (const std::string& code : size_.languages) {
            load_.Into(table + "_" + code, columns);
            const bool first = code == size_.languages.front();
            rows([&](std::string text) { return first ? text : text + " (" + code + ")"; });
        }
    }

    void FillAreas() {
        const std::vector<std::string> ids = AreaIds();
        PerLanguage("Area", {"AreaGId", "AreaNId", "AreaID", "AreaName", "AreaLevel", "MapFile", "DataExists"},
                    [&](const auto& in) {
                        for (std::size_t i = 0; i < ids.size(); ++i) {
                            const int number = static_cast<int>(i) + 1;
                            load_.Add(Row{MixedKey("A", number), number, ids[i], in(PlaceName(Scatter(size_.seed, i))),
                                          static_cast<int>(ids[i].size() / 3), jet::Value(), 0});
                        }
                    });
    }

    /// A tree of four levels, wider at each; every parent stands before its children.
    [[nodiscard]] std::vector<std::string> AreaIds() const {
        const int total = size_.areas;
        const std::array<int, 3> upper = {std::clamp(total / 40, 1, 20), total / 10, total * 3 / 10};
        std::vector<std::string> ids;
        std::size_t parents = 0;
        for (std::size_t level = 0; level < 4 && static_cast<int>(ids.size()) < total; ++level) {
            const std::size_t begin = ids.size();
            const int left = total - static_cast<int>(begin);
            const int count = level < 3 ? std::min(std::max(upper[level], 1), left) : left;
            for (int i = 0; i < count; ++i) {
                const std::size_t siblings = begin - parents;
                const auto index = static_cast<std::size_t>(i);
                const std::string parent = level == 0 ? std::string() : ids[parents + index % siblings];
                ids.push_back(parent + ThreeCharacters(static_cast<int>(level == 0 ? index : index / siblings) + 1));
            }
            parents = begin;
        }
        return ids;
    }

    void FillPeriods() {
        load_.Into("TimePeriod", {"TimePeriodNId", "TimePeriod", "DataExists"});
        for (int i = 1; i <= size_.periods; ++i)
            load_.Add(Row{i, std::to_string(2020 - size_.periods + i), 0});
    }

    [[nodiscard]] int IndicatorCount() const { return (size_.ius + kSubpopulations - 1) / kSubpopulations; }

    void FillIndicators() {
        static constexpr std::array<const char*, kSubpopulations> subpopulations = {"Total", "Female", "Male", "Urban"};
        static constexpr std::array<const char*, kUnits> units = {"Per cent",        "Number", "Index",
                                                                  "Million dollars", "Years",  "Per 1,000 persons"};
        PerLanguage("Indicator", {"IndicatorGId", "Indicator", "Info"}, [&](const auto& in) {
            for (int i = 0; i < IndicatorCount(); ++i)
                load_.Add(Row{MixedKey("I", i), in(IndicatorName(i)), "Made up for tests and measurements."});
        });
        PerLanguage("Unit", {"UnitGId", "Unit"}, [&](const auto& in) {
            for (int i = 0; i < kUnits; ++i)
                load_.Add(Row{Key("U", i), in(units[static_cast<std::size_t>(i)])});
        });
        PerLanguage("Subpop", {"SubpopGId", "Subpop"}, [&](const auto& in) {
            for (int i = 0; i < kSubpopulations; ++i)
                load_.Add(Row{Key("S", i), in(subpopulations[static_cast<std::size_t>(i)])});
        });
        load_.Into("Indicator_Unit_Subpop",
                   {"IUSNId", "IndicatorGId", "UnitGId", "SubpopGId", "Min_Value", "Max_Value", "DataExists"});
        for (int i = 0; i < size_.ius; ++i) {
            const int indicator = i / kSubpopulations;
            load_.Add(Row{i + 1, MixedKey("I", indicator), Key("U", indicator % kUnits), Key("S", i % kSubpopulations),
                          0, 1000, 0});
        }
    }

    void FillClassifications() {
        FillLevels("Sector", 2, false);
        FillLevels("Goal", 3, true);
        FillLevels("Institution", 2, false);
        FillLevels("Convention", 3, true);
        FillFlat("CF", "CFLabel1");
        FillFlat("Theme", "ThemeLabel1");
        load_.Into("Indicator_Sector", {"IndicatorGId", "SectorLabel2GId"});
        for (int i = 0; i < IndicatorCount(); ++i)
            load_.Add(Row{MixedKey("I", i), Key("Sector2_", i % kClassItems)});
        FillLink("Indicator_Goal", "GoalLabel3GId", "Goal3_");
        FillLink("Indicator_Institution", "InstitutionLabel2GId", "Institution2_");
        FillLink("Indicator_Convention", "ConventionLabel3GId", "Convention3_");
        FillLink("Indicator_CF", "CFGId", "CF");
        FillLink("Indicator_Theme", "ThemeGId", "Theme");
    }

    void FillLevels(const std::string& name, int levels, bool informs) {
        Row keys;
        std::vector<std::string> columns;
        for (int level = 1; level <= levels; ++level) {
            const std::string label = name + "Label" + std::to_string(level);
            columns.push_back(label + "GId");
            const bool info = informs && level == levels;
            std::vector<std::string> own = {label + "GId", label};
            if (info) own.emplace_back("Info");
            const int items = ItemsOfLevel(level, levels);
            PerLanguage(label, own, [&](const auto& in) {
                for (int i = 0; i < items; ++i) {
                    Row row{Key((name + std::to_string(level) + "_").c_str(), i),
                            in(name + " " + std::to_string(level) + "." + std::to_string(i + 1))};
                    if (info) row.emplace_back("Made up for tests and measurements.");
                    load_.Add(row);
                }
            });
        }
        columns.emplace_back("DataExists");
        load_.Into(name, columns);
        for (int i = 0; i < kClassItems; ++i) {
            Row row;
            for (int level = 1; level <= levels; ++level)
                row.emplace_back(Key((name + std::to_string(level) + "_").c_str(), i % ItemsOfLevel(level, levels)));
            row.emplace_back(0);
            load_.Add(row);
        }
    }

    static int ItemsOfLevel(int level, int levels) { return level == levels ? kClassItems : 3 * level; }

    void FillFlat(const std::string& name, const std::string& label) {
        PerLanguage(name, {name + "GId", label, "Info", "DataExists"}, [&](const auto& in) {
            for (int i = 0; i < kClassItems; ++i)
                load_.Add(Row{Key(name.c_str(), i), in(name + " " + std::to_string(i + 1)), "Made up.", 0});
        });
    }

    void FillLink(const std::string& table, const std::string& column, const char* kind) {
        load_.Into(table, {"IUSNId", column});
        for (int i = 0; i < size_.ius; ++i)
            load_.Add(Row{i + 1, Key(kind, i % kClassItems)});
    }

    void FillSources() {
        load_.Into("Region", {"RegionGId", "RegionNId", "Region"});
        for (int i = 1; i <= 3; ++i)
            load_.Add(Row{Key("R", i), i, "Publisher " + std::to_string(i)});
        PerLanguage("Source", {"SourceGId", "SourceNId", "RegionNId", "Source", "Info", "DataExists"},
                    [&](const auto& in) {
                        for (int i = 1; i <= size_.sources; ++i) {
                            const int region = i % 3 + 1;
                            load_.Add(Row{MixedKey("Q", i), i, region,
                                          in("Publisher " + std::to_string(region) + "_Survey " + std::to_string(i)),
                                          "Made up for tests and measurements.", 0});
                        }
                    });
        PerLanguage("Footnote", {"FootNoteNId", "FootNote"}, [&](const auto& in) {
            for (int i = 1; i <= kFootnotes; ++i)
                load_.Add(Row{i, in("Note " + std::to_string(i))});
        });
    }

    // Cells are walked area by area, so that the rows of an area lie together; when there are fewer rows than cells
    // they are spread evenly, and when there are more, further sources report the same cells.
    void FillData() {
        load_.Into("Data", {"TimePeriodNId", "IUSNId", "AreaNId", "SourceNId", "FootnoteNId", "Datavalue"});
        const std::int64_t cells = std::int64_t{size_.areas} * size_.ius * size_.periods;
        const std::int64_t rows = size_.rows < 0 ? cells : size_.rows;
        // By rows, since there may be far more cells than anybody wants rows.
        for (std::int64_t row = 0; row < rows; ++row) {
            const std::int64_t cell = ((row + 1) * cells + rows - 1) / rows - 1;
            const std::int64_t place = cell / size_.ius;
            AddValue(static_cast<int>(place / size_.periods) + 1, static_cast<int>(place % size_.periods) + 1,
                     static_cast<int>(cell % size_.ius) + 1, static_cast<int>(row - cell * rows / cells), cell);
        }
    }

    void AddValue(int area, int period, int ius, int layer, std::int64_t cell) {
        const std::uint64_t random =
            Scatter(size_.seed, static_cast<std::uint64_t>(cell) * 64 + static_cast<std::uint64_t>(layer));
        const int source = (ius + layer + period % 2) % size_.sources + 1; // an IUS has two sources, in turns by year
        sourcesOfIus_.emplace(ius, source);
        row_[0] = period;
        row_[1] = ius;
        row_[2] = area;
        row_[3] = source;
        row_[4] = random % 97 == 0 ? jet::Value(static_cast<int>(random / 97 % kFootnotes) + 1) : jet::Value();
        row_[5] = ValueText(random);
        load_.Add(row_);
    }

    /// A number from 0 to 999.99.
    static std::string ValueText(std::uint64_t random) {
        const std::uint64_t hundredths = random / 1024 % 100'000;
        std::string text = std::to_string(hundredths / 100);
        const std::uint64_t rest = hundredths % 100;
        if (rest != 0) text += "." + std::to_string(rest / 10) + (rest % 10 == 0 ? "" : std::to_string(rest % 10));
        return text;
    }

    void FillSourcesOfIus() {
        load_.Into("Indicator_Source", {"IUSNId", "SourceNId", "RecommendedSource"});
        int last = 0;
        for (const auto& [ius, source] : sourcesOfIus_) {
            load_.Add(Row{ius, source, ius == last ? 0 : -1});
            last = ius;
        }
    }

    void FillLogs() {
        load_.Into("Database_Log", {"TimeStamp", "DatabaseFileName", "Action"});
        load_.Add(Row{kTimeStamp, "made-up.mdb", "Created"});
        load_.Into("Template_Log", {"TimeStamp", "TemplateFileName", "Action"});
        load_.Add(Row{kTimeStamp, "made-up template", "Applied"});
    }

    jet::BulkLoad& load_;
    const RandomDatabaseSize& size_;
    std::set<std::pair<int, int>> sourcesOfIus_;
    Row row_ = Row(6);
};

std::vector<schema::DatabaseLanguage> LanguagesOf(const RandomDatabaseSize& size) {
    static const std::vector<std::pair<std::string, std::string>> names = {
        {"en", "English"}, {"fr", "French"}, {"es", "Spanish"}, {"ar", "Arabic"}, {"ru", "Russian"}};
    std::vector<schema::DatabaseLanguage> languages;
    for (const std::string& code : size.languages) {
        const auto known = std::ranges::find(names, code, &std::pair<std::string, std::string>::first);
        const std::string name = known == names.end() ? "Language" : known->second;
        languages.push_back({name + " [" + code + "]", code, languages.empty()});
    }
    return languages;
}

} // namespace

std::int64_t RandomDatabaseSize::MostRows() const {
    return std::int64_t{areas} * ius * periods * sources;
}

std::string ProblemOf(const RandomDatabaseSize& size) {
    if (size.areas < 1 || size.ius < 1 || size.periods < 1 || size.sources < 1)
        return "areas, IUS, periods and sources are at least 1 each";
    if (size.areas > kMostAreas) return "there are at most " + std::to_string(kMostAreas) + " areas";
    if (size.ius > 1'000'000 || size.periods > 2'000 || size.sources > 1'000)
        return "there are at most 1,000,000 IUS, 2,000 periods and 1,000 sources";
    if (size.rows > size.MostRows()) return "there are at most " + std::to_string(size.MostRows()) + " rows";
    std::set<std::string> codes(size.languages.begin(), size.languages.end());
    const bool plain = std::ranges::all_of(codes, [](const std::string& code) {
        return !code.empty() && code.size() <= 10 &&
               std::ranges::all_of(code, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
    });
    if (!plain || codes.size() != size.languages.size()) return "languages are distinct codes of letters, as in en,fr";
    return {};
}

void MakeRandomDatabase(const fs::path& file, const RandomDatabaseSize& size) {
    MakeDatabase(fs::absolute(file), [&](const std::string& workFile) {
        schema::CreateDataDatabase(*OpenWorkFile(workFile), LanguagesOf(size));
        jet::BulkLoad load(workFile);
        Filler(load, size).FillAll();
        load.Finish();
        schema::IndexData(*OpenWorkFile(workFile));
        MarkDataExists(QString::fromStdString(workFile));
        jet::Analyze(workFile);
    });
}

} // namespace tessaro::content
