#include "jet/columns/RowOrder.h"
#include "jet/columns/Scan.h"
#include "jet/columns/ScanDatabase.h"

#include <filesystem>
#include <utility>
#include <vector>

namespace jet::test {
namespace {

const std::string kFrom = " FROM Sel AS I INNER JOIN (SelArea AS A INNER JOIN (Data AS D INNER JOIN SelTime AS T ON "
                          "D.TimePeriodNId = T.TimePeriodNId) ON A.AreaNId = D.AreaNId) ON (I.SourceNId = D.SourceNId) "
                          "AND (I.IUSNId = D.IUSNId) ";
const std::string kLatest = " FROM Sel AS I INNER JOIN ((SelArea AS A INNER JOIN Latest AS L ON A.AreaNId = L.AreaNId) "
                            "INNER JOIN (SelTime AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) ON "
                            "(L.TimePeriod = T.TimePeriod) AND (L.IUSNId = D.IUSNId) AND (L.AreaNId = D.AreaNId)) ON "
                            "(I.SourceNId = D.SourceNId) AND (I.IUSNId = L.IUSNId) ";

TEST(RowScansTest, TakesOnlyWhatAnIndexDoesNotGiveInOrder) {
    ScanDatabase database(7, 1500, false);
    const std::pair<std::string, bool> cases[] = {
        {"SELECT D.RowNId, D.Datavalue" + kFrom + "WHERE I.Deleted = False ORDER BY A.AreaName, D.IUSNId DESC", true},
        {"SELECT D.RowNId, A.AreaName, I.Indicator" + kFrom + "ORDER BY D.Datavalue", true},
        {"SELECT D.RowNId FROM Data D ORDER BY D.Datavalue DESC", true},
        {"SELECT DISTINCTROW D.RowNId, D.Datavalue" + kLatest, true},
        {"SELECT DISTINCTROW D.RowNId" + kLatest + "ORDER BY A.AreaNId", true},
        {"SELECT D.RowNId" + kFrom, false},
        {"SELECT D.RowNId" + kFrom + "ORDER BY A.AreaNId", false},
        {"SELECT D.RowNId" + kFrom + "ORDER BY D.IUSNId, A.AreaName", false},
        {"SELECT D.RowNId" + kFrom + "ORDER BY A.AreaID", false},
        {"SELECT D.RowNId" + kFrom + "ORDER BY Len(A.AreaName)", false},
        {"SELECT TOP 5 D.RowNId" + kFrom + "ORDER BY A.AreaName", false},
        {"SELECT DISTINCTROW D.RowNId, A.AreaName" + kFrom, false},
        {"SELECT DISTINCTROW 1 AS One" + kLatest, false},
        {"SELECT D.RowNId" + kFrom + "WHERE D.Datavalue Like '1*' ORDER BY A.AreaName", false},
    };
    for (const auto& [sql, scans] : cases)
        EXPECT_EQ(database.Scans(sql), scans) << sql;
}

/// With RowNId as the last key there is only one order.
TEST(RowScansTest, RowsComeInTheSameOrderBothWays) {
    const std::string orders[] = {"D.Datavalue",
                                  "D.Datavalue DESC",
                                  "T.TimePeriod DESC, A.AreaName",
                                  "A.AreaName DESC, D.Datavalue DESC, T.TimePeriod",
                                  "I.Indicator, D.FootnoteNId DESC, A.AreaLevel",
                                  "I.Indicator DESC, A.AreaID DESC, D.IUSNId, D.Datavalue"};
    for (std::uint64_t seed = 1; seed < 9; ++seed) {
        ScanDatabase database(seed, 1500, seed % 2 == 0);
        for (const std::string& order : orders) {
            const std::string sql = "SELECT D.RowNId, D.Datavalue, A.AreaName, D.SourceNId" + kFrom + "ORDER BY " +
                                    order + (seed % 3 == 0 ? ", D.RowNId DESC" : ", D.RowNId");
            ASSERT_TRUE(database.Scans(sql)) << sql;
            EXPECT_EQ(RowsOf(database.withImages(), sql), RowsOf(database.plain(), sql)) << seed << " " << sql;
        }
    }
}

/// A side of very many combinations keeps only those that are met; the rows are the same.
TEST(RowScansTest, SidesOfManyCombinationsPassTheSameRows) {
    ScanDatabase database(5, 10'000, false);
    ASSERT_TRUE(database.Scans("SELECT Count(*) FROM Data"));
    const auto image = ColumnImage::Open(database.imageFile(), {database.dataFile(), "Data"});
    ScanPlan plan;
    plan.value = static_cast<std::size_t>(image->find("Datavalue"));
    plan.figures.push_back({ScanFigureKind::FirstRow});
    ScanSide side;
    side.columns = {static_cast<std::size_t>(image->find("AreaNId")), static_cast<std::size_t>(image->find("IUSNId"))};
    side.fields = {CompareKind::Number};
    plan.sides.push_back(side);
    SideClasses dense;
    SideClasses sparse;
    sparse.met.emplace();
    const std::size_t combinations =
        image->columns()[side.columns[0]].numbers.size() * image->columns()[side.columns[1]].numbers.size();
    for (std::size_t each = 0; each < combinations; ++each) {
        const std::int32_t found = each % 3 == 0 ? static_cast<std::int32_t>(each % 4) : -1;
        dense.classOf.push_back(found);
        if (found < 0) continue;
        ASSERT_EQ(sparse.met->PlaceOf(each, nullptr), sparse.classOf.size());
        sparse.classOf.push_back(found);
    }
    sparse.classOf.push_back(-1);
    dense.classes = sparse.classes = 4;
    dense.fields = sparse.fields = {{Value(std::int64_t{7}), Value(std::int64_t{5}), Value(std::int64_t{9}), Value()}};
    WorkWatch watch;
    for (const bool byRow : {false, true}) {
        plan.byRow = byRow;
        plan.order = {{ScanOrderKind::Field, 0, false}};
        for (const ScanThreads threads : {ScanThreads::One, ScanThreads::Two}) {
            const auto one = ScanRows(*image, plan, {{}, {dense}}, watch, threads);
            const auto other = ScanRows(*image, plan, {{}, {sparse}}, watch, threads);
            EXPECT_FALSE(one->filled.empty());
            EXPECT_EQ(one->filled, other->filled);
            EXPECT_EQ(one->first, other->first);
            EXPECT_EQ(one->rows, other->rows);
        }
    }
}

/// The file is read as long as rows are given, also when somebody has cut it meanwhile.
TEST(RowScansTest, ACutImageFailsTheRowsThatAreLeft) {
    ScanDatabase database(5, 10'000, false);
    const std::string sql = "SELECT D.RowNId, D.Datavalue FROM Data D ORDER BY D.Datavalue";
    ASSERT_TRUE(database.Scans(sql));
    Recordset rows = database.withImages().OpenRecordset(sql, CursorType::ForwardOnly);
    std::filesystem::resize_file(database.imageFile(), std::filesystem::file_size(database.imageFile()) - 1);
    int read = 0;
    const auto failure = FailureOf([&] {
        for (; !rows.atEnd(); rows.MoveNext())
            ++read;
    });
    EXPECT_EQ(failure, ErrorNumber::EngineError);
    EXPECT_LE(read, 16);
    EXPECT_EQ(RowsOf(database.withImages(), sql + ", D.RowNId"), RowsOf(database.plain(), sql + ", D.RowNId"));
}

} // namespace
} // namespace jet::test
