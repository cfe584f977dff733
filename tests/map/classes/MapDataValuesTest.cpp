#include "map/classes/MapDataValues.h"

#include "database/Database.h"
#include "map/ClassText.h"
#include "map/MapData.h"
#include "map/MapTest.h"

#include <random>

namespace tessaro::test {

namespace {

class MapDataValuesTest : public MapTest {
  protected:
    static ClassBreaks ClassesOf(BreakMethod method, int classes, int decimals) {
        ClassRequest request{method, classes, decimals};
        const ValueLimits limits = LimitsOfMapData();
        SetRange(request, limits.minimum, limits.maximum);
        MapDataValues values;
        return ComputeClasses(values, request);
    }
};

/// The installation's own database, with all areas and one combination selected.
class WorldDataTest : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        ASSERT_TRUE(OpenDatabaseFile(FindPath(AppPath + QStringLiteral("/Data/Tessaro World.mdb"))));
        ChangeData(QStringLiteral(
            "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT AreaGId, AreaNId, "
            "AreaID, AreaName, AreaLevel, MapFile FROM Area"));
    }
    static void SelectTheme(const QString& indicator, const QString& period, int source) {
        ChangeData(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        ChangeData(QStringLiteral("DELETE * FROM _SelIUSNId"));
        ChangeData(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, "
                                  "TimePeriod FROM TimePeriod WHERE TimePeriod = ") +
                   Quoted(period));
        ChangeData(
            QStringLiteral(
                "INSERT INTO _SelIUSNId (IUSNId, [Indicator], Unit, Subpop, SourceNId, Source, Deleted) SELECT "
                "IUS.IUSNId, I.[Indicator], U.Unit, SP.Subpop, S.SourceNId, S.Source, False FROM "
                "((((Indicator_Unit_Subpop AS IUS INNER JOIN Indicator AS I ON IUS.IndicatorGId = "
                "I.IndicatorGId) INNER JOIN Unit AS U ON IUS.UnitGId = U.UnitGId) INNER JOIN Subpop AS SP ON "
                "IUS.SubpopGId = SP.SubpopGId) INNER JOIN Indicator_Source AS XS ON IUS.IUSNId = XS.IUSNId) "
                "INNER JOIN Source AS S ON XS.SourceNId = S.SourceNId WHERE S.SourceNId = %1 AND I.[Indicator] = ")
                .arg(source) +
            Quoted(indicator));
    }
};

} // namespace

TEST_F(MapDataValuesTest, AnswersAsAListOfTheSameValuesDoes) {
    std::mt19937 random(5);
    for (int round = 0; round < 25; ++round) {
        ChangeData(QStringLiteral("DELETE * FROM _MapData"));
        std::vector<double> values;
        const int decimals = static_cast<int>(random() % 3);
        const int kinds = 1 + static_cast<int>(random() % 60);
        for (int i = static_cast<int>(random() % 80); i >= 0; --i)
            values.push_back((static_cast<int>(random() % kinds) - 20) / (decimals == 0   ? 1.0
                                                                          : decimals == 1 ? 10.0
                                                                                          : 100.0));
        PutValues(values);
        const std::vector<double> ascending = SortedValues(values);
        for (const BreakMethod method : {BreakMethod::EqualCount, BreakMethod::EqualSize, BreakMethod::NaturalBreaks}) {
            ClassRequest request{method, 1 + static_cast<int>(random() % 9), static_cast<int>(random() % 3)};
            SetRange(request, ascending.front(), ascending.back());
            MapDataValues inTable;
            EXPECT_EQ(ComputeClasses(inTable, request), ComputeClasses(ascending, request)) << "round " << round;
        }
    }
}

TEST_F(MapDataValuesTest, HasNoClassesToCountWhenEmpty) {
    EXPECT_EQ(Text(ClassesOf(BreakMethod::EqualCount, 3, 0), 0), "0-0 (0) 0-0 (0) 0-0 (0)");
    EXPECT_EQ(Text(ClassesOf(BreakMethod::EqualSize, 2, 1), 1), "0.0-0.0 (0) 0.0-0.0 (0)");
}

// The bounds were computed by hand from the published tables, in exact decimals.
TEST_F(WorldDataTest, ClassesOfPublishedTables) {
    const struct {
        const char* indicator;
        const char* period;
        int source;
        int areas;
        int decimals;
        const char* count;
        const char* size;
    } cases[] = {
        {"Unemployment rate", "2009", 5, 3218, 1,
         "1.2-6.0 (663) 6.1-7.8 (657) 7.9-9.3 (621) 9.4-11.6 (643) 11.7-30.1 (634)",
         "1.2-7.0 (1001) 7.1-12.9 (1831) 13.0-18.8 (328) 18.9-24.7 (51) 24.8-30.1 (7)"},
        {"Unemployment rate", "2009", 5, 3218, 0, "1-6 (663) 7-7 (362) 8-9 (229) 10-11 (366) 12-30 (458)",
         "1-6 (663) 7-12 (1715) 13-18 (306) 19-24 (44) 25-30 (6)"},
        {"Life expectancy at birth", "2015", 4, 187, 2,
         "48.50-64.23 (38) 64.24-70.90 (38) 70.91-75.40 (37) 75.41-78.60 (37) 78.61-84.10 (37)",
         "48.50-55.62 (4) 55.63-62.75 (25) 62.76-69.88 (37) 69.89-77.01 (70) 77.02-84.10 (51)"},
        {"GDP per person", "2015", 4, 187, 0,
         "599-2898 (38) 2899-7474 (38) 7475-14833 (37) 14834-28550 (37) 28551-132877 (37)",
         "599-27054 (148) 27055-53510 (31) 53511-79966 (4) 79967-106422 (3) 106423-132877 (1)"},
    };
    for (const auto& c : cases) {
        SelectTheme(QLatin1String(c.indicator), QLatin1String(c.period), c.source);
        const MapTheme theme = FirstTheme();
        EXPECT_EQ(Get_Data(theme).areas, c.areas) << c.indicator;
        ClassRequest request{BreakMethod::EqualCount, 5, c.decimals};
        const ValueLimits limits = LimitsOfMapData();
        SetRange(request, limits.minimum, limits.maximum);
        MapDataValues values;
        EXPECT_EQ(Text(ComputeClasses(values, request), c.decimals), c.count) << c.indicator;
        request.method = BreakMethod::EqualSize;
        EXPECT_EQ(Text(ComputeClasses(values, request), c.decimals), c.size) << c.indicator;
    }
}

} // namespace tessaro::test
