#include "map/output/SmallMaps.h"

#include "MapOutputTest.h"

namespace tessaro::test {

namespace {

class SmallMapsTest : public MapOutputTest {
  protected:
    /// Selects the population of all areas of the sample database.
    static MapTheme SelectPopulation() {
        ChangeData(QStringLiteral(
            "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, AreaNId, "
            "AreaID, AreaName, AreaLevel, MapFile FROM Area"));
        ChangeData(QStringLiteral(
            "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM TimePeriod"));
        ChangeData(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, [Indicator], Unit, Subpop, SourceNId, Source, "
                                  "Deleted) VALUES (1, 'Population', 'Number', 'Total', 1, 'Census', False)"));
        return FirstTheme();
    }
    static QStringList Periods() {
        QStringList periods;
        for (Records rows = Select(QStringLiteral("SELECT TimePeriod FROM _SelTimePeriod ORDER BY TimePeriod"));
             !rows.atEnd(); rows.MoveNext())
            periods << rows.Text(std::size_t{0});
        return periods;
    }
};

constexpr auto kAll = "SELECT * FROM _MapData ORDER BY [_MapDataID]";

} // namespace

TEST(SmallMapsPeriodsTest, SixOfManyAreSpreadFromTheFirstToTheLast) {
    const auto years = [](int first, int last) {
        QStringList periods;
        for (int year = first; year <= last; ++year)
            periods << QString::number(year);
        return periods;
    };
    EXPECT_TRUE(SpreadPeriods({}).isEmpty());
    EXPECT_EQ(SpreadPeriods(years(2000, 2005)), years(2000, 2005));
    const QStringList spread = SpreadPeriods(years(1950, 2011));
    ASSERT_EQ(spread.size(), kMostSmallMaps);
    EXPECT_EQ(spread.front(), QStringLiteral("1950"));
    EXPECT_EQ(spread.back(), QStringLiteral("2011"));
    EXPECT_EQ(QSet<QString>(spread.begin(), spread.end()).size(), kMostSmallMaps);
}

TEST_F(SmallMapsTest, EachPeriodHasItsMapAndTheDataStays) {
    MapDraft draft = DraftOf(3);
    draft.theme = SelectPopulation();
    ASSERT_GT(Get_Data(draft.theme).areas, 1);
    ASSERT_TRUE(SaveData(draft.classes));
    ChangeData(QStringLiteral("UPDATE _MapData SET AdvancedLabels = 'typed'"));
    const std::string before = Rows(kAll);
    const LayerStack layers = Squares({QStringLiteral("ASI"), QStringLiteral("ASICHN"), QStringLiteral("ASIIND")});
    const QStringList periods = Periods();
    ASSERT_GT(periods.size(), 1);
    const QString file =
        MakeSmallMaps({draft, layers, layers.FullExtent(), {300, 200}}, QStringList{QStringLiteral("0001")} + periods);
    Keep(file, QStringLiteral("small.xls"));
    EXPECT_EQ(Rows(kAll), before);
    const auto sheets = ReadXls(file);
    ASSERT_EQ(sheets.size(), 3U);
    EXPECT_EQ(sheets[0].Text(46 + 1, 3), draft.classes.looks[0].legend);
    EXPECT_TRUE(Open(file).Sheet(1).HasShape(QStringLiteral("Picture 1")));
    // Each map's values, with its period; none of a period before all values.
    const ReadSheet& data = sheets[1];
    EXPECT_EQ(data.Text(5, 8), QStringLiteral("Map"));
    QSet<QString> maps;
    for (int row = 6; row <= data.rows.size(); ++row) {
        maps.insert(data.Text(row, 8));
        EXPECT_LE(data.Text(row, 1), data.Text(row, 8));
    }
    EXPECT_FALSE(maps.contains(QStringLiteral("0001")));
    EXPECT_GT(maps.size(), 1);
}

TEST_F(SmallMapsTest, TheDataStaysWhenTheUserGivesUp) {
    MapDraft draft = DraftOf(3);
    draft.theme = SelectPopulation();
    ASSERT_GT(Get_Data(draft.theme).areas, 1);
    const std::string before = Rows(kAll);
    const LayerStack layers = Squares({QStringLiteral("ASI")});
    int asked = 0;
    WizardProgress progress;
    progress.givenUp = [&] { return ++asked > 1; };
    EXPECT_THROW((void)MakeSmallMaps({draft, layers, layers.FullExtent(), {300, 200}}, Periods(), progress),
                 WorkGivenUp);
    EXPECT_EQ(Rows(kAll), before);
    EXPECT_TRUE(Workbooks().isEmpty());
    // Nothing selected: a page without maps.
    draft.theme = {};
    EXPECT_FALSE(MakeSmallMaps({draft, layers, layers.FullExtent(), {300, 200}}, Periods()).isEmpty());
}

} // namespace tessaro::test
