#include "selection/AreaSelection.h"
#include "selection/IndicatorSelection.h"
#include "selection/SelectionDatabase.h"
#include "selection/TimeSelection.h"
#include "session/Session.h"

namespace tessaro::test {
namespace {

using namespace selection;

class SelectionStoresTest : public SelectionDatabaseTest {};

KeyedItem Ius(const char* id) {
    return {QLatin1Char('I') + QString::fromLatin1(id), {QStringLiteral("x")}, 0};
}

TEST_F(SelectionStoresTest, IndicatorsComeWithTheirSourcesAndOnlyOnce) {
    AddIndicators({Ius("1"), Ius("5")});
    EXPECT_TRUE(SelectionChanged);
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11"));
    AddIndicators({Ius("1"), Ius("3")});
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,3/11"));
    AddIndicator(Ius("2"));
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,3/11"));
    EXPECT_EQ(Keys(SelectedIndicators()), "I3 I2 I1 I1") << "the list drops the second source by its key";
    SelectionChanged = false;
    RemoveIndicators({Ius("1"), Ius("3")});
    EXPECT_TRUE(SelectionChanged);
    EXPECT_EQ(ChosenIus(), QStringLiteral("2/10"));
}

TEST_F(SelectionStoresTest, AnIndicatorBringsAllItsCombinations) {
    IndicatorSelectBy = 0;
    AddIndicators({Ius("-I1"), Ius("L3")});
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,4/10"));
    EXPECT_EQ(Keys(SelectedIndicators()), "I-I1 IL3");
    GlobalLocalFilter = 1;
    EXPECT_EQ(Keys(SelectedIndicators()), "IL3");
    AddIndicators({Ius("-I2")});
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,4/10")) << "a global item while only local ones are wanted";
    RemoveIndicators({Ius("-I1")});
    EXPECT_EQ(ChosenIus(), QStringLiteral("4/10"));
    AddIndicator(Ius("-I2"));
    EXPECT_EQ(ChosenIus(), QStringLiteral("3/11,4/10"));
    RemoveAllIndicators();
    EXPECT_EQ(ChosenIus(), QString());
}

TEST_F(SelectionStoresTest, TheSectorOrderKeepsWhatStandsInNoSector) {
    Run(QStringLiteral("DELETE * FROM Indicator_Sector WHERE IndicatorGId = '-I2'"));
    const std::vector<KeyedItem> items{Ius("4"), Ius("3"), Ius("1"), Ius("5")};
    EXPECT_EQ(Keys(SortedBySector(items)), "I5 I1 I4 I3");
    IndicatorSelectBy = 0;
    EXPECT_EQ(Keys(SortedBySector({Ius("-I2"), Ius("L3"), Ius("-I4")})), "I-I4 IL3 I-I2");
    EXPECT_TRUE(SortedBySector({}).empty());
}

TEST_F(SelectionStoresTest, Periods) {
    EXPECT_EQ(AvailablePeriods().size(), 4U);
    SetDataExistsMode(2);
    EXPECT_EQ(Keys(AvailablePeriods()), "T4");
    AddPeriod({QStringLiteral("T4"), {QStringLiteral("2005")}, 0});
    AddPeriod({QStringLiteral("T1"), {QStringLiteral("1990")}, 0});
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,4"));
    EXPECT_EQ(SelectedPeriods().size(), 2U);
    RemovePeriods({{QStringLiteral("T4"), {}, 0}});
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1"));
    RemoveAllPeriods();
    EXPECT_EQ(ChosenPeriods(), QString());
}

TEST_F(SelectionStoresTest, APeriodTextMayHoldAnything) {
    AddPeriod({QStringLiteral("T3"), {QString(255, QLatin1Char('9'))}, 0});
    EXPECT_EQ(Column(QStringLiteral("SELECT Len(TimePeriod) FROM _SelTimePeriod")), QStringLiteral("60"));
    RemoveAllPeriods();
    AddPeriods(
        {{QStringLiteral("T1"), {QStringLiteral("it's")}, 0}, {QStringLiteral("T2"), {QStringLiteral("١٩٩٥ [q]")}, 0}});
    EXPECT_EQ(Column(QStringLiteral("SELECT TimePeriod FROM _SelTimePeriod ORDER BY TimePeriodNId")),
              QStringLiteral("it's,١٩٩٥ [q]"));
}

TEST_F(SelectionStoresTest, ChildrenOfANodeOfTheAreaTree) {
    const struct {
        const char* node;
        long mode;
        long filter;
        const char* keys;
    } cases[] = {{"___", 1, 2, "A1 A5 A7"}, {"___", 0, 2, "A1 A7"}, {"___", 2, 2, "A5"},     {"AASI", 1, 2, "A3 A2"},
                 {"AASI", 1, 0, "A2"},      {"AASI", 1, 1, "A3"},   {"AASIIND", 1, 2, "A4"}, {"AASIINDDEL", 1, 2, ""},
                 {"AO'B", 1, 2, "A8"},      {"AASIXX", 1, 2, ""},   {"Anothing", 1, 2, ""},  {"A", 1, 2, "A1 A5 A7"}};
    for (const auto& c : cases) {
        SetDataExistsMode(c.mode);
        GlobalLocalFilter = c.filter;
        std::vector<KeyedItem> items;
        for (const AreaRow& row : AvailableAreas(QString::fromUtf8(c.node)))
            items.push_back(row.item);
        EXPECT_EQ(Keys(items), c.keys) << c.node << ' ' << c.mode << ' ' << c.filter;
    }
    EXPECT_EQ(AreaDepth(), 3);
}

TEST_F(SelectionStoresTest, AreasAndTheirSetStayTogether) {
    AreaSelection areas;
    areas.AddAreas(QStringLiteral("2,7,8"));
    areas.AddAreas(QStringLiteral("2,3"));
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3,7,8"));
    EXPECT_EQ(areas.Ids().size(), 4);
    EXPECT_EQ(Keys(areas.Items()), "A3 A2 A7 A8");
    EXPECT_EQ(Column(QStringLiteral("SELECT AreaName FROM _SelArea WHERE AreaNId = 3")),
              QStringLiteral("Côte d'Ivoire"));
    SelectionChanged = false;
    areas.Remove({{QStringLiteral("A7"), {}, 0}, {QStringLiteral("A2"), {}, 0}});
    EXPECT_TRUE(SelectionChanged);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("3,8"));
    EXPECT_EQ(areas.Ids(), (QSet<QString>{QStringLiteral("ASICIV"), QStringLiteral("O'BABC")}));
    AreaSelection fresh;
    fresh.Load();
    EXPECT_EQ(fresh.Ids(), areas.Ids());
    areas.RemoveAll();
    EXPECT_TRUE(areas.IsEmpty());
    EXPECT_EQ(ChosenAreas(), QString());
    areas.AddItems({{QStringLiteral("A7"), {QStringLiteral("Quoted land"), QStringLiteral("O'B")}, 0}});
    EXPECT_EQ(ChosenAreas(), QStringLiteral("7"));
}

TEST_F(SelectionStoresTest, AreasOfALevel) {
    const struct {
        int level;
        const char* node;
        bool withData;
        const char* ids;
    } cases[] = {{1, "___", false, "1,5,7"}, {2, "___", false, "2,3,8"}, {2, "___", true, "2,3,8"},
                 {1, "___", true, "1"},      {2, "AASI", false, "2,3"},  {3, "AASI", true, "4"},
                 {2, "AO'B", false, "8"},    {1, "AASIIND", false, ""},  {9, "___", false, ""}};
    for (const auto& c : cases) {
        QStringList ids =
            Column(AreasOfLevelSql(c.level, QString::fromUtf8(c.node), c.withData)).split(QLatin1Char(','));
        ids.sort();
        EXPECT_EQ(ids.join(QLatin1Char(',')).toStdString(), c.ids) << c.level << ' ' << c.node;
    }
    EXPECT_EQ(Keys(AreasOfList(QStringLiteral("2,3"))), "A3 A2");
    EXPECT_TRUE(AreasOfList({}).empty());
}

} // namespace
} // namespace tessaro::test
