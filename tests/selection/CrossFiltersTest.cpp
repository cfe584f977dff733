#include "selection/CrossFilters.h"

#include "selection/IndicatorSelection.h"
#include "selection/SelectionDatabase.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <QFile>

namespace tessaro::test {
namespace {

using selection::IndicatorFilter;

class CrossFiltersTest : public SelectionDatabaseTest {};

struct IndicatorCase {
    const char* name;
    long selectBy;
    long mode;
    const char* periods;
    const char* areas;
    IndicatorFilter filter;
    const char* keys;
    const char* iusList;
};

const IndicatorCase IndicatorCases[] = {
    // name, select by, mode, periods, areas, {time, area, view, only list, list}, keys, combinations
    {"all", 1, 1, "", "", {false, false, 0, false, {}}, "I3 I5 I2 I1", "3,5,2,1"},
    {"time", 1, 1, "1", "", {true, false, 0, false, {}}, "I2 I1", "2,1"},
    {"area", 1, 1, "", "3", {false, true, 0, false, {}}, "I1", "1"},
    {"time of the area", 1, 1, "3", "4", {true, true, 0, false, {}}, "I3", "3"},
    {"both, but never together", 1, 1, "1", "3", {true, true, 0, false, {}}, "", ""},
    {"a selection that shall not count", 1, 1, "1", "3", {false, false, 0, false, {}}, "I3 I5 I2 I1", "3,5,2,1"},
    {"one line per indicator", 0, 1, "", "", {false, false, 0, false, {}}, "I-I2 I-I4 I-I1", "3,5,2,1"},
    {"sectors with data", 1, 0, "", "", {false, false, 0, false, {}}, "I3 I5 I2 I1", "3,5,2,1"},
    {"goals with data", 1, 0, "", "", {false, false, 1, false, {}}, "I1", "1"},
    {"framework with data", 1, 0, "", "", {false, false, 2, false, {}}, "I3", "3"},
    {"themes with data", 1, 0, "", "", {false, false, 3, false, {}}, "I3", "3"},
    {"sources with data", 1, 0, "", "", {false, false, 4, false, {}}, "I3 I2 I1", "3,2,1"},
    {"institutions with data", 1, 0, "", "", {false, false, 5, false, {}}, "I1", "1"},
    {"rights with data and a time", 1, 0, "1", "", {true, false, 6, false, {}}, "I2", "2"},
    {"what has no data is not in Data", 1, 2, "", "", {false, false, 0, false, {}}, "", ""},
    {"available", 1, 1, "", "", {false, false, 0, true, QStringLiteral("1,3,4")}, "I3 I1", "3,1"},
    {"available and time", 1, 1, "1", "", {true, false, 0, true, QStringLiteral("1,3")}, "I1", "1"},
    {"available and area", 1, 1, "", "4", {false, true, 0, true, QStringLiteral("1,3")}, "I3", "3"},
    {"available, time and area", 1, 1, "2", "2", {true, true, 0, true, QStringLiteral("1,2")}, "I1", "1"},
    {"available ignores the view", 1, 0, "", "", {false, false, 1, true, QStringLiteral("1,3")}, "I3 I1", "3,1"},
    {"available indicators", 0, 1, "", "", {false, false, 0, true, QStringLiteral("'-I1','L3'")}, "I-I1", "2,1"},
    {"available indicators and area",
     0,
     1,
     "",
     "4",
     {false, true, 0, true, QStringLiteral("'-I1','-I2'")},
     "I-I2",
     "3"},
};

TEST_F(CrossFiltersTest, IndicatorsThatTheOtherStagesAllow) {
    for (const IndicatorCase& c : IndicatorCases) {
        SCOPED_TRACE(c.name);
        Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        Run(QStringLiteral("DELETE * FROM _SelArea"));
        if (*c.periods != '\0') ChoosePeriods(QString::fromLatin1(c.periods));
        if (*c.areas != '\0') ChooseAreas(QString::fromLatin1(c.areas));
        IndicatorSelectBy = c.selectBy;
        SetDataExistsMode(c.mode);
        const selection::FoundIndicators found = selection::FindIndicators(c.filter);
        std::vector<KeyedItem> unique; // the list drops the second row of an indicator by its key
        for (const KeyedItem& item : found.items)
            if (std::none_of(unique.begin(), unique.end(), [&](const KeyedItem& u) { return u.key == item.key; }))
                unique.push_back(item);
        EXPECT_EQ(Keys(unique), c.keys);
        QStringList found_ids = found.iusList.split(QLatin1Char(','), Qt::SkipEmptyParts);
        QStringList expected = QString::fromLatin1(c.iusList).split(QLatin1Char(','), Qt::SkipEmptyParts);
        found_ids.sort();
        expected.sort();
        EXPECT_EQ(found_ids, expected);
    }
}

TEST_F(CrossFiltersTest, TheFoundCombinationsGoInWithAllTheirSources) {
    ChooseIus(QStringLiteral("4"));
    selection::ReplaceIndicators(QStringLiteral("3,5,2,1"));
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,3/11")) << "5 has no source and gets no row";
    EXPECT_TRUE(SelectionChanged);
    EXPECT_EQ(Column(QStringLiteral("SELECT IUSNId FROM _SelIUSNId WHERE RecommendedSource = True AND Deleted = False "
                                    "ORDER BY IUSNId")),
              QStringLiteral("1,2,3"));
    selection::ReplaceIndicators({});
    EXPECT_EQ(ChosenIus(), QString()) << "nothing found leaves nothing chosen";
}

TEST_F(CrossFiltersTest, TheFirstDropOfAWorkingTablePassesUnnoticed) {
    ErrorTrap trap("cmdAllFilter_Click");
    ChoosePeriods(QStringLiteral("1"));
    ChooseAreas(QStringLiteral("2"));
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(selection::FindIndicators({true, true, 0, false, {}}).items.size(), 2U) << run;
    QFile log(LogFile());
    EXPECT_TRUE(!log.open(QIODevice::ReadOnly) || !log.readAll().contains("cmdAllFilter_Click"));
    EXPECT_EQ(Column(QStringLiteral("SELECT IUSNId FROM _DataTime ORDER BY IUSNId")), QStringLiteral("1,2"));
}

TEST_F(CrossFiltersTest, SharedCellsAreMarked) {
    const selection::FoundIndicators found = selection::FindIndicators({});
    ASSERT_EQ(found.items.size(), 4U);
    EXPECT_EQ(found.items[0].key, QStringLiteral("I3"));
    EXPECT_EQ(found.items[0].globalCells, 5) << "a local unit";
    EXPECT_EQ(found.items[0].cells.join(QLatin1Char('|')),
              QStringLiteral("Children's \"school\" [rate]|Per cent|Total"));
}

struct FilterCase {
    const char* ius;
    const char* periods;
    const char* areas;
    long mode;
    const char* expected;
};

TEST_F(CrossFiltersTest, PeriodsThatTheOtherStagesAllow) {
    const FilterCase cases[] = {
        {"", "", "", 1, "T1 T2 T3"}, {"1", "", "", 1, "T1 T2 T3"}, {"3", "", "", 1, "T3"},
        {"", "", "2", 1, "T1 T2"},   {"1", "", "3", 1, "T3"},      {"2", "", "3", 1, ""},
        {"", "", "", 0, "T1 T2 T3"}, {"", "", "", 2, ""},          {"4", "", "", 1, ""},
        {"1,3", "", "4,3", 0, "T3"},
    };
    for (const FilterCase& c : cases) {
        SCOPED_TRACE(std::string(c.ius) + " | " + c.areas);
        Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
        Run(QStringLiteral("DELETE * FROM _SelArea"));
        if (*c.ius != '\0') ChooseIus(QString::fromLatin1(c.ius));
        if (*c.areas != '\0') ChooseAreas(QString::fromLatin1(c.areas));
        SetDataExistsMode(c.mode);
        std::vector<KeyedItem> found = selection::FindPeriods(*c.ius != '\0', *c.areas != '\0');
        std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
        EXPECT_EQ(Keys(found), c.expected);
    }
}

QString Sorted(const QString& list) {
    QStringList parts = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    parts.sort();
    return parts.join(QLatin1Char(','));
}

TEST_F(CrossFiltersTest, AreasThatTheOtherStagesAllow) {
    const FilterCase cases[] = {
        {"", "", "", 1, "1,2,3,4,8"}, {"1", "", "", 1, "2,3"}, {"", "1", "", 1, "1,2"}, {"1", "3", "", 1, "3"},
        {"3", "1", "", 1, ""},        {"", "", "", 2, ""},     {"", "2", "", 0, "2,8"},
    };
    for (const FilterCase& c : cases) {
        SCOPED_TRACE(std::string(c.ius) + " | " + c.periods);
        Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
        Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        if (*c.ius != '\0') ChooseIus(QString::fromLatin1(c.ius));
        if (*c.periods != '\0') ChoosePeriods(QString::fromLatin1(c.periods));
        SetDataExistsMode(c.mode);
        EXPECT_EQ(
            Sorted(selection::FindAreas(selection::AreaFilterSql(*c.ius != '\0', *c.periods != '\0'))).toStdString(),
            c.expected);
    }
}

TEST_F(CrossFiltersTest, AreasBelowANodeAreItsDirectChildren) {
    const struct {
        const char* node;
        const char* expected;
    } cases[] = {{"___", "1"}, {"AASI", "2,3"}, {"AASIIND", "4"}, {"AO'B", "8"}, {"AEUR", ""}, {"AASIXX", ""}};
    for (const auto& c : cases)
        EXPECT_EQ(Sorted(selection::FindAreas(selection::AreaFilterBelowSql(false, false, QString::fromUtf8(c.node))))
                      .toStdString(),
                  c.expected)
            << c.node;
}

} // namespace
} // namespace tessaro::test
