#include "jet/columns/RandomScans.h"
#include "jet/columns/Scan.h"
#include "jet/columns/ScanDatabase.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace jet::test {
namespace {

/// Seconds that the random statements take: a few here, as many as the environment says when one has time.
int Seconds() {
    const char* const given = std::getenv("JET_SCAN_SECONDS");
    return given == nullptr ? 5 : std::max(1, std::atoi(given));
}

TEST(ColumnScansTest, RandomStatementsGiveTheSameRowsBothWays) {
    const std::uint64_t seed = std::random_device{}();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(Seconds());
    int statements = 0;
    int scanned = 0;
    int unfit = 0;
    for (std::uint64_t round = 0; std::chrono::steady_clock::now() < end; ++round) {
        ScanDatabase database(seed + round, 2500, round % 3 == 0);
        RandomScans random(seed + round);
        for (int each = 0; each < 60 && std::chrono::steady_clock::now() < end; ++each) {
            const std::string sql = random.Next();
            ++statements;
            scanned += database.Scans(sql) ? 1 : 0;
            ASSERT_EQ(ScanDatabase::Difference(ScanDatabase::Outcome(database.withImages(), sql),
                                               ScanDatabase::Outcome(database.plain(), sql)),
                      "")
                << "seed " << seed + round << "\n"
                << sql;
        }
        unfit += static_cast<int>(database.images().unfit());
    }
    EXPECT_GT(scanned, statements / 2) << "of " << statements << ", seed " << seed;
    EXPECT_GT(scanned - unfit, statements / 8) << "of " << statements << ", seed " << seed; // some have keys twice
    std::printf("%d statements, %d on the image, %d of them the plain way after all\n", statements, scanned, unfit);
}

constexpr auto kFrom = " FROM Sel AS I INNER JOIN ((SelTime AS T INNER JOIN Data AS D ON T.TimePeriodNId = "
                       "D.TimePeriodNId) INNER JOIN SelArea AS A ON D.AreaNId = A.AreaNId) ON (I.SourceNId = "
                       "D.SourceNId) AND (I.IUSNId = D.IUSNId) ";

/// What is run on the image, and what is not.
TEST(ColumnScansTest, TakesTheShapesItKnows) {
    ScanDatabase database(7, 1500, false);
    const std::string from = kFrom;
    const std::pair<std::string, bool> cases[] = {
        {"SELECT I.Indicator, Count(D.Datavalue), Min(D.Datavalue), StDev(D.Datavalue)" + from +
             "WHERE I.Deleted = False AND (D.Datavalue >= 3 AND D.Datavalue <= 90) GROUP BY I.Indicator",
         true},
        {"SELECT D.IUSNId, D.AreaNId, Max(T.TimePeriod) AS M" + from + "GROUP BY D.IUSNId, D.AreaNId", true},
        {"SELECT Count(*)" + from, true},
        {"SELECT IUSNId, Max(Datavalue) FROM Data GROUP BY IUSNId", true},
        {"SELECT Count(I.UnitGId)" + from + "WHERE D.SourceNId = 2 ORDER BY Count(I.UnitGId) DESC", true},
        {"SELECT Count(*)" + from + "WHERE Len(Trim(D.Datavalue)) > 0", true},
        {"SELECT Count(*)" + from + "WHERE D.RowNId in (1,2,3)", false},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId <> -1", true},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId = -1", true},
        {"SELECT Count(*)" + from + "WHERE -1 = D.SourceNId", true},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId = (-1)", true},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId In (-1, 2)", true},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId Not In (-1, -2)", true},
        {"SELECT Count(*)" + from + "WHERE D.SourceNId <> -1.5", true},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue >= -5", true},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue = -3", true},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue Between -1 And 1", true},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue Between -1.5 And -0.5", true},
        {"SELECT Count(*)" + from + "WHERE D.IUSNId < 3", false},
        {"SELECT First(D.Datavalue)" + from, true},
        {"SELECT First(A.AreaName)" + from, false},
        {"SELECT DISTINCT T.TimePeriod, A.AreaName" + from, true},
        {"SELECT DISTINCT A.AreaName" + from, true},
        {"SELECT DISTINCT A.AreaName FROM SelArea A INNER JOIN Data D ON A.AreaNId = D.AreaNId", false},
        {"SELECT DISTINCT D.Datavalue" + from + "ORDER BY D.Datavalue", true},
        {"SELECT DISTINCT D.Datavalue, A.AreaName" + from, false},
        {"SELECT DISTINCT CDbl(D.Datavalue)" + from, false},
        {"TRANSFORM First(D.Datavalue) SELECT A.AreaName" + from + "GROUP BY A.AreaName PIVOT CStr(T.TimePeriodNId)",
         true},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue Between CDbl('1') And 20", true},
        {"SELECT I.Indicator, Sum(CDbl(D.Datavalue))" + from + "GROUP BY I.Indicator", false},
        {"SELECT D.RowNId, Count(*)" + from + "GROUP BY D.RowNId", false},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue Like '1*'", false},
        {"SELECT Count(*) FROM Data D LEFT JOIN SelArea A ON D.AreaNId = A.AreaNId", false},
        {"SELECT Count(*) FROM Data D, Data E WHERE D.AreaNId = E.AreaNId", false},
        {"SELECT D.Datavalue" + from, false},
        {"SELECT Count(*)" + from + "UNION ALL SELECT Count(*) FROM Data", false},
    };
    for (const auto& [sql, scans] : cases) {
        EXPECT_EQ(database.Scans(sql), scans) << sql;
        EXPECT_EQ(ScanDatabase::Outcome(database.withImages(), sql), ScanDatabase::Outcome(database.plain(), sql))
            << sql;
    }
}

/// Each group is a single one of the scan, so that SQLite need not put them together, and none of them is left out.
TEST(ColumnScansTest, GroupsKeepTheirOrder) {
    const std::string from = std::string(" FROM ") +
                             "Data AS D INNER JOIN (SelArea AS A INNER JOIN SelTime AS T ON "
                             "A.AreaLevel < 9 OR T.TimePeriodNId > 0) ON (D.AreaNId = A.AreaNId) AND (D.TimePeriodNId "
                             "= T.TimePeriodNId) ";
    const std::string groups = "A.AreaName, D.IUSNId, T.TimePeriod";
    const std::string statements[] = {
        "SELECT A.AreaName, D.IUSNId, T.TimePeriod, Count(*), First(D.Datavalue)" + from + "GROUP BY " + groups,
        "SELECT T.TimePeriod, Max(D.Datavalue) AS M" + from + "GROUP BY " + groups + " ORDER BY Max(D.Datavalue) DESC",
        "SELECT Count(A.AreaID) AS C" + from + "GROUP BY " + groups + " ORDER BY Count(A.AreaID) DESC",
        "SELECT Min(A.AreaID), Max(A.AreaID), D.IUSNId" + from +
            "GROUP BY D.IUSNId, T.TimePeriod HAVING Min(A.AreaID) <> Max(A.AreaID)",
        "SELECT D.IUSNId, Count(*)" + from + "GROUP BY " + groups + " HAVING Count(*) > 2",
        "TRANSFORM First(D.Datavalue) SELECT A.AreaName" + from + "GROUP BY A.AreaName PIVOT D.SourceNId"};
    for (std::uint64_t seed = 1; seed < 5; ++seed) {
        ScanDatabase database(seed, 1500, false);
        for (const std::string& sql : statements) {
            ASSERT_TRUE(database.Scans(sql)) << sql;
            EXPECT_EQ(RowsOf(database.withImages(), sql), RowsOf(database.plain(), sql)) << sql;
        }
    }
}

/// Two threads give what one gives; the sums up to what compensation leaves.
TEST(ColumnScansTest, ThreadsShareTheRows) {
    ScanDatabase database(5, 10'000, true);
    ASSERT_TRUE(database.Scans("SELECT Count(*) FROM Data"));
    const auto image = ColumnImage::Open(database.imageFile(), {database.dataFile(), "Data"});
    ScanPlan plan;
    plan.value = static_cast<std::size_t>(image->find("Datavalue"));
    plan.codes = {static_cast<std::size_t>(image->find("AreaNId")), static_cast<std::size_t>(image->find("IUSNId"))};
    for (const ScanFigureKind kind : {ScanFigureKind::Values, ScanFigureKind::Least, ScanFigureKind::Greatest,
                                      ScanFigureKind::Sum, ScanFigureKind::Spread, ScanFigureKind::FirstRow})
        plan.figures.push_back({kind});
    WorkWatch watch;
    const auto one = ScanRows(*image, plan, {}, watch, ScanThreads::One);
    const auto two = ScanRows(*image, plan, {}, watch, ScanThreads::Two);
    ASSERT_FALSE(one->filled.empty());
    EXPECT_EQ(one->filled, two->filled);
    EXPECT_EQ(one->rows, two->rows);
    EXPECT_EQ(one->values, two->values);
    EXPECT_EQ(one->least, two->least);
    EXPECT_EQ(one->greatest, two->greatest);
    EXPECT_EQ(one->first, two->first);
    EXPECT_EQ(one->unreadable, two->unreadable);
    for (const std::uint32_t place : one->filled) {
        const double sum = one->sums[place].sum + one->sums[place].lost;
        EXPECT_NEAR(sum, two->sums[place].sum + two->sums[place].lost, 1e-12 * std::abs(sum) + 1e-12);
        const double squares = one->spreads[place].squares;
        EXPECT_NEAR(squares, two->spreads[place].squares, 1e-9 * squares + 1e-9);
    }
}

TEST(ColumnScansTest, AnUnreadableValueFailsOnlyWhereItIsJoined) {
    ScanDatabase database(3, 800, true);
    const std::string average = "SELECT Avg(D.Datavalue) FROM Data D INNER JOIN SelArea A ON D.AreaNId = A.AreaNId";
    ASSERT_TRUE(database.Scans(average));
    EXPECT_EQ(FailureOf([&] { static_cast<void>(database.withImages().OpenRecordset(average)); }),
              ErrorNumber::TypeMismatch);
    const std::string inRange = average + " WHERE D.Datavalue <= 1.7976931348623157e+308";
    ASSERT_TRUE(database.Scans(inRange));
    EXPECT_EQ(RowsOf(database.withImages(), inRange), RowsOf(database.plain(), inRange));
}

} // namespace
} // namespace jet::test
