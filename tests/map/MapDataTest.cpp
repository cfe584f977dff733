#include "map/MapData.h"

#include "map/MapTest.h"
#include "session/ErrorSink.h"

#include <QFile>

namespace tessaro::test {

namespace {

class MapDataTest : public MapTest {
  protected:
    /// Selects everything of the sample database; its one theme with several areas and periods is population.
    static void SelectAll() {
        ChangeData(QStringLiteral(
            "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, AreaNId, "
            "AreaID, AreaName, AreaLevel, MapFile FROM Area"));
        ChangeData(QStringLiteral(
            "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM TimePeriod"));
        AddCombination(1, QStringLiteral("Population"), QStringLiteral("Total"), 1);
        AddCombination(2, QStringLiteral("Literacy's \"rate\""), QStringLiteral("Female"), 1);
    }
    static void AddCombination(int ius, const QString& indicator, const QString& subpop, int source) {
        ChangeData(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, [Indicator], Unit, Subpop, SourceNId, Source, "
                                  "Deleted) VALUES (%1, %2, 'Number', %3, %4, 'Census', False)")
                       .arg(ius)
                       .arg(Quoted(indicator), Quoted(subpop))
                       .arg(source));
    }
    static void SetValue(int time, int area, const QString& value) {
        ChangeData(QStringLiteral("DELETE FROM Data WHERE IUSNId = 1 AND TimePeriodNId = %1 AND AreaNId = %2")
                       .arg(time)
                       .arg(area));
        ChangeData(
            QStringLiteral("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) "
                           "VALUES (%1, 1, %2, 1, 0, %3)")
                .arg(time)
                .arg(area)
                .arg(value));
    }
};

const MapTheme kPopulation{QStringLiteral("Population"), {}, QStringLiteral("Number")};
constexpr auto kContents = "SELECT AreaID, DataValue FROM _MapData ORDER BY AreaID";

} // namespace

TEST_F(MapDataTest, KeepsTheLatestValueOfEachArea) {
    SelectAll();
    EXPECT_EQ(FirstTheme().indicator, kPopulation.indicator);
    EXPECT_TRUE(FirstTheme().subpop.isEmpty());
    const MapDataCounts counts = Get_Data(kPopulation);
    EXPECT_TRUE(counts.filled);
    EXPECT_EQ(counts.areas, 4);
    EXPECT_EQ(counts.unreadable, 0);
    EXPECT_EQ(Rows(kContents), "ASI|3938 ASICHN|1304 ASIIND|1147.6 ASIINDDEL|15");
    EXPECT_EQ(ValuesOfMapData(), (std::vector<double>{15, 1147.6, 1304, 3938}));
    EXPECT_EQ(SetDecimal(), 1);
    EXPECT_EQ(LimitsOfMapData().minimum, 15);
    EXPECT_EQ(LimitsOfMapData().maximum, 3938);
    // Filled anew, it is the same.
    EXPECT_EQ(Get_Data(kPopulation).areas, 4);
    EXPECT_EQ(Rows(kContents), "ASI|3938 ASICHN|1304 ASIIND|1147.6 ASIINDDEL|15");
}

TEST_F(MapDataTest, ShowsWhatIsInView) {
    SelectAll();
    AddCombination(3, QStringLiteral("Population"), QStringLiteral("Female"), 2);
    const MapTheme quoted{QStringLiteral("Literacy's \"rate\""), {}, QStringLiteral("Number")};
    const MapTheme female{QStringLiteral("Population"), QStringLiteral("Female"), QStringLiteral("Number")};
    EXPECT_EQ(Get_Data(quoted).areas, 2);
    EXPECT_EQ(Get_Data(female).areas, 2);
    EXPECT_EQ(Rows(kContents), "ASICHN|86.5 ASIIND|47.8");
    RowFilter = QStringLiteral(" AND (D.Datavalue >= 1200 AND D.Datavalue <= 4000)");
    EXPECT_EQ(Get_Data(kPopulation).areas, 2);
    EXPECT_EQ(Rows(kContents), "ASI|3938 ASICHN|1304");
    ChangeData(QStringLiteral("UPDATE _SelIUSNId SET Deleted = True"));
    const MapDataCounts none = Get_Data(kPopulation);
    EXPECT_TRUE(none.filled);
    EXPECT_EQ(none.areas, 0);
    EXPECT_TRUE(FirstTheme().IsEmpty());
    EXPECT_EQ(SetDecimal(), 0);
    EXPECT_EQ(LimitsOfMapData().maximum, 0);
    EXPECT_TRUE(ValuesOfMapData().empty());
}

TEST_F(MapDataTest, LeavesOutWhatIsNoNumber) {
    SelectAll();
    SetValue(3, 1, QStringLiteral("'n/a'"));
    SetValue(3, 2, QStringLiteral("Null"));
    SetValue(3, 3, QStringLiteral("''"));
    SetValue(3, 4, QStringLiteral("' 1.5e3 '"));
    const MapDataCounts counts = Get_Data(kPopulation);
    EXPECT_EQ(counts.areas, 1);
    EXPECT_EQ(counts.unreadable, 3);
    EXPECT_EQ(ValuesOfMapData(), std::vector<double>{1500});
    EXPECT_EQ(LimitsOfMapData().maximum, 1500);
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("3 areas have a value that is no number"));
}

TEST_F(MapDataTest, ReadsDecimalCommas) {
    const struct {
        const char* value1;
        const char* value2;
        std::vector<double> read;
    } cases[] = {{"'1,5'", "'-20,25'", {-20.25, 1.5}},
                 {"'1,5'", "'20'", {1.5, 20}},
                 {"'1,500'", "'20.5'", {20.5}}, // a comma between thousands
                 {"'1,500,000'", "'2,5'", {2.5}}};
    ChangeData(QStringLiteral("DELETE FROM Data WHERE AreaNId > 2"));
    SelectAll();
    for (const auto& [value1, value2, read] : cases) {
        SetValue(3, 1, QLatin1String(value1));
        SetValue(3, 2, QLatin1String(value2));
        EXPECT_TRUE(Get_Data(kPopulation).filled);
        EXPECT_EQ(ValuesOfMapData(), read) << value1 << " " << value2;
    }
}

TEST_F(MapDataTest, StaysAsItWasWhenAStatementFails) {
    SelectAll();
    ASSERT_EQ(Get_Data(kPopulation).areas, 4);
    const std::string before = Rows(kContents);
    RowFilter = QStringLiteral(" AND NoSuchFunction(D.Datavalue) > 1");
    EXPECT_FALSE(Get_Data(kPopulation).filled);
    EXPECT_EQ(Rows(kContents), before);
    Connection.reset();
    EXPECT_FALSE(Get_Data(kPopulation).filled);
}

TEST_F(MapDataTest, DropsMoreRowsThanOneStatementTakes) {
    ChangeData(QStringLiteral("DELETE FROM Data"));
    SelectAll();
    for (const int area : {1, 4})
        for (const int time : {1, 2, 3})
            SetValue(time, area, QString::number(time == 3 ? 7 : 4));
    for (int doubled = 0; doubled < 12; ++doubled) // to 24,576 rows
        ChangeData(
            QStringLiteral("INSERT INTO Data (TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue) "
                           "SELECT TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId, Datavalue FROM Data"));
    EXPECT_EQ(Get_Data(kPopulation).areas, 2);
    EXPECT_EQ(Rows(kContents), "ASI|7 ASICHN|7");
}

} // namespace tessaro::test
