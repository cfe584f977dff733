#include "jet/columns/RandomScans.h"
#include "jet/columns/ScanDatabase.h"

#include <chrono>
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
    for (std::uint64_t round = 0; std::chrono::steady_clock::now() < end; ++round) {
        ScanDatabase database(seed + round, 1500, round % 3 == 0);
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
    }
    EXPECT_GT(scanned, statements / 3) << "of " << statements << ", seed " << seed;
    RecordProperty("statements", statements);
    RecordProperty("scanned", scanned);
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
        {"SELECT Count(*)" + from + "WHERE D.IUSNId < 3", false},
        {"SELECT First(D.Datavalue)" + from, false},
        {"SELECT I.Indicator, Sum(CDbl(D.Datavalue))" + from + "GROUP BY I.Indicator", false},
        {"SELECT D.RowNId, Count(*)" + from + "GROUP BY D.RowNId", false},
        {"SELECT Count(*)" + from + "WHERE D.Datavalue Like '1*'", false},
        {"SELECT Count(*) FROM Data D LEFT JOIN SelArea A ON D.AreaNId = A.AreaNId", false},
        {"SELECT Count(*) FROM Data D, Data E WHERE D.AreaNId = E.AreaNId", false},
        {"SELECT D.Datavalue" + from, false},
        {"SELECT Count(*)" + from + "UNION ALL SELECT Count(*) FROM Data", false},
    };
    for (const auto& [sql, scans] : cases)
        EXPECT_EQ(database.Scans(sql), scans) << sql;
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
