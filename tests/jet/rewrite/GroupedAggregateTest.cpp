#include "jet/TestDatabase.h"

#include <algorithm>

namespace jet {
namespace {

constexpr const char* kStep = "correlated-aggregates-to-groups";

/// Periods of areas, with values that differ in case or form only, and Nulls among keys and values.
class GroupedAggregateTest : public ::testing::Test {
  protected:
    GroupedAggregateTest() : connection(folder.Make("data.mdb")) {
        connection->Execute("CREATE TABLE D (i LONG, Area TEXT(9), Period TEXT(9), Datavalue TEXT(9), n LONG)");
        connection->Execute("CREATE TABLE S (Area TEXT(9), Datavalue TEXT(9), n LONG, m TEXT(9))");
        for (const char* row :
             {"1, 'a', '2001', '5', 1", "2, 'A', '2003', '10', 1", "3, 'b', '2002', '7', 2", "4, 'B', '2002', '7.0', 2",
              "5, Null, '2005', '1', 3", "6, 'c', Null, Null, Null", "7, 'd', '1999', 'n/a', 2"})
            connection->Execute(std::string("INSERT INTO D VALUES (") + row + ")");
        for (const char* row : {"'A', '5.0', 1, '1'", "'b', '7', 2, '2'", "Null, '1', 3, '3'"})
            connection->Execute(std::string("INSERT INTO S VALUES (") + row + ")");
    }

    [[nodiscard]] bool Turned(const std::string& sql) const {
        const std::vector<std::string> steps = connection->Explain(sql).steps;
        return std::ranges::find(steps, kStep) != steps.end();
    }
    /// The rows, with the step and without it.
    [[nodiscard]] std::pair<std::string, std::string> BothWays(const std::string& sql) const {
        const auto without = Connection::Open(connection->path(), "secret");
        without->LeaveOutStep(kStep);
        return {RowsOf(*connection, sql), RowsOf(*without, sql)};
    }

    TestFolder folder;
    std::shared_ptr<Connection> connection;
};

TEST_F(GroupedAggregateTest, IsTheSameTest) {
    const struct {
        bool turned;
        const char* where;
        const char* rows;
    } cases[] = {
        {true, "P.Period = (SELECT Max(Q.Period) FROM D Q WHERE Q.Area = P.Area)", "2;3;4;7;"},
        {true, "P.Period = (SELECT Max(Q.Period) FROM D Q WHERE P.Area = Q.Area AND Q.n < 2)", "2;"},
        {true, "P.Datavalue = (SELECT Max(Q.Datavalue) FROM D Q WHERE Q.Area = P.Area)", "2;3;4;7;"},
        {true, "P.i > 2 AND P.i = (SELECT Min(Q.i) FROM D Q WHERE Q.n = P.n AND Q.Area = P.Area)", "3;7;"},
        {true, "P.i = (SELECT Min(Q.i) FROM D Q INNER JOIN S ON Q.Area = S.Area WHERE Q.n = P.n)", "1;3;"},
        {true, "P.i - 1 = (SELECT Min(i) FROM D Q WHERE Q.Datavalue = P.Datavalue)", "4;"},
        {true, "P.n = (SELECT Max(m) FROM S WHERE S.Area = P.Area)", "1;2;3;4;"},
        {false, "P.n = (SELECT Count(*) FROM S WHERE S.Area = P.Area)", "1;2;"},
        {false, "P.i = (SELECT Min(Q.i) FROM D Q WHERE Q.n = 2)", "3;"},
        {false, "P.i = (SELECT Min(Q.i) FROM D Q WHERE Q.i > P.n)", "2;3;"},
        {false, "P.i = (SELECT Min(Q.i) FROM D Q WHERE Q.Datavalue = P.n)", ""},
        {false, "P.i < (SELECT Max(Q.i) FROM D Q WHERE Q.n = P.n)", "1;3;4;"},
        {false, "NOT P.i = (SELECT Min(Q.i) FROM D Q WHERE Q.n = P.n)", "2;4;7;"},
        {false, "P.i = (SELECT Min(Q.i) FROM D Q LEFT JOIN S ON Q.n = S.n WHERE Q.Area = P.Area)", "1;3;6;7;"},
        {false, "P.i = (SELECT Min(Q.i) FROM (SELECT * FROM D) Q WHERE Q.Area = P.Area)", "1;3;6;7;"},
    };
    for (const auto& each : cases) {
        const std::string sql = std::string("SELECT P.i FROM D P WHERE ") + each.where + " ORDER BY P.i";
        EXPECT_EQ(Turned(sql), each.turned) << each.where;
        const auto [with, without] = BothWays(sql);
        EXPECT_EQ(with, each.rows) << each.where;
        EXPECT_EQ(without, each.rows) << each.where;
    }
}

TEST_F(GroupedAggregateTest, NamesThatMayMeanTwoFieldsAreStillReported) {
    EXPECT_EQ(FailureOf([&] {
                  (void)RowsOf(*connection,
                               "SELECT i FROM D P WHERE i = (SELECT Min(Q.i) FROM D Q, S WHERE Q.n = Area)");
              }),
              ErrorNumber::SyntaxError);
}

} // namespace
} // namespace jet
