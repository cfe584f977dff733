#include "jet/columns/Scan.h"
#include "jet/columns/ScanDatabase.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace jet::test {
namespace {

constexpr std::chrono::milliseconds kAtOnce(0);
constexpr int kRows = 12'000;

/// Statements that run on the image, and so long without it that they are asked about, too.
constexpr const char* kLong[] = {
    "SELECT D.AreaNId, D.IUSNId, Count(*), StDev(D.Datavalue) FROM Data D GROUP BY D.AreaNId, D.IUSNId",
    "SELECT I.Indicator, Max(D.Datavalue) FROM Sel AS I INNER JOIN Data AS D ON (I.SourceNId = D.SourceNId) AND "
    "(I.IUSNId = D.IUSNId) GROUP BY I.Indicator",
    "SELECT A.AreaName, T.TimePeriod, First(D.Datavalue) FROM Data AS D INNER JOIN (SelArea AS A INNER JOIN SelTime "
    "AS T ON A.AreaLevel < 9 OR T.TimePeriodNId > 0) ON (D.AreaNId = A.AreaNId) AND (D.TimePeriodNId = "
    "T.TimePeriodNId) GROUP BY A.AreaName, T.TimePeriod HAVING Count(*) > 1",
    "SELECT D.AreaNId, Max(T.TimePeriod) AS Latest INTO Made FROM Data D INNER JOIN SelTime T ON D.TimePeriodNId = "
    "T.TimePeriodNId GROUP BY D.AreaNId"};

/// Runs a statement, also one that gives no rows; the number of its error.
std::optional<ErrorNumber> Fails(Connection& connection, const std::string& sql) {
    return FailureOf([&] {
        if (sql.find(" INTO ") != std::string::npos) connection.Execute(sql);
        if (sql.find(" INTO ") == std::string::npos) static_cast<void>(connection.OpenRecordset(sql));
    });
}

TEST(StoppedScansTest, AStoppedStatementFailsTheSameOnBothWaysAndLeavesNothing) {
    ScanDatabase database(11, kRows, false);
    for (const std::string sql : kLong) {
        ASSERT_TRUE(database.Scans(sql)) << sql;
        const auto before = ScanDatabase::Outcome(database.plain(), sql);
        for (Connection* const each : {&database.withImages(), &database.plain()}) {
            each->Watch([](std::optional<int>) { return false; }, kAtOnce);
            EXPECT_EQ(Fails(*each, sql), ErrorNumber::Interrupted) << sql;
            each->Watch({});
            EXPECT_EQ(FailureOf([&] { static_cast<void>(each->OpenRecordset("SELECT * FROM Made")); }),
                      ErrorNumber::NoSuchTable);
            EXPECT_EQ(ScanDatabase::Difference(ScanDatabase::Outcome(*each, sql), before), "") << sql;
        }
    }
    EXPECT_EQ(database.images().unfit(), 0U);
}

TEST(StoppedScansTest, TellsHowFarItIs) {
    ScanDatabase database(11, kRows, false);
    const std::string sql = kLong[0];
    ASSERT_TRUE(database.Scans(sql));
    std::vector<int> told;
    database.withImages().Watch(
        [&](std::optional<int> percent) {
            if (percent) told.push_back(*percent);
            return true;
        },
        kAtOnce);
    EXPECT_EQ(Fails(database.withImages(), sql), std::nullopt);
    ASSERT_GE(told.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(told));
    EXPECT_EQ(told.front(), 0);
    EXPECT_GT(told.back(), 50);
    EXPECT_LE(told.back(), 100);
}

TEST(StoppedScansTest, EveryThreadStops) {
    ScanDatabase database(5, 20'000, false);
    ASSERT_TRUE(database.Scans(kLong[0]));
    const auto image = ColumnImage::Open(database.imageFile(), {database.dataFile(), "Data"});
    ScanPlan plan;
    plan.value = static_cast<std::size_t>(image->find("Datavalue"));
    plan.codes = {static_cast<std::size_t>(image->find("AreaNId"))};
    for (int goesOn = 0; goesOn < 2; ++goesOn) {
        int asked = 0;
        WorkWatch watch;
        watch.Set([&](std::optional<int>) { return asked++ < goesOn; }, kAtOnce);
        for (const ScanThreads threads : {ScanThreads::One, ScanThreads::Two}) {
            asked = 0;
            EXPECT_EQ(FailureOf([&] { static_cast<void>(ScanRows(*image, plan, {}, watch, threads)); }),
                      ErrorNumber::Interrupted);
            EXPECT_EQ(asked, goesOn + 1);
        }
    }
}

TEST(StoppedScansTest, OtherStatementsWaitUntilItHasEnded) {
    ScanDatabase database(11, kRows, false);
    const std::string sql = kLong[1];
    ASSERT_TRUE(database.Scans(sql));
    const auto before = ScanDatabase::Outcome(database.plain(), sql);
    for (Connection* const each : {&database.withImages(), &database.plain()}) {
        Recordset others = each->OpenRecordset("SELECT AreaNId FROM SelArea", CursorType::ForwardOnly);
        int asked = 0;
        each->Watch(
            [&](std::optional<int>) {
                ++asked;
                EXPECT_EQ(Fails(*each, "SELECT * FROM SelArea"), ErrorNumber::Busy);
                EXPECT_EQ(FailureOf([&] { each->Execute("DELETE * FROM SelArea"); }), ErrorNumber::Busy);
                EXPECT_EQ(FailureOf([&] { others.MoveNext(); }), ErrorNumber::Busy);
                return true;
            },
            kAtOnce);
        EXPECT_EQ(ScanDatabase::Outcome(*each, sql), before);
        EXPECT_GT(asked, 0);
        each->Watch({});
        EXPECT_EQ(FailureOf([&] { others.MoveNext(); }), std::nullopt);
        EXPECT_FALSE(others.atEnd());
    }
}

TEST(StoppedScansTest, AStopEndsTheTransactionWithWhatWasMadeInIt) {
    ScanDatabase database(11, kRows, false);
    Connection& connection = database.plain();
    connection.Begin();
    connection.Execute("CREATE TABLE Further (AreaNId LONG)");
    connection.Watch([](std::optional<int>) { return false; }, kAtOnce);
    EXPECT_EQ(FailureOf([&] { connection.Execute("INSERT INTO Further SELECT D.AreaNId FROM Data D"); }),
              ErrorNumber::Interrupted);
    connection.Watch({});
    EXPECT_EQ(Fails(connection, "SELECT * FROM Further"), ErrorNumber::NoSuchTable);
    connection.Execute("CREATE TABLE Further (AreaNId LONG)");
    EXPECT_EQ(RowsOf(connection, "SELECT Count(*) FROM Further"), "0;");
}

} // namespace
} // namespace jet::test
