#include "jet/TestDatabase.h"

#include <algorithm>
#include <utility>

namespace jet::test {
namespace {

/// A table of numbers with an index on each but one, and the same connection without the step.
class IndexJumpsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        connection_ = folder_.Make("jumps.mdb");
        connection_->Execute("CREATE TABLE Data (RowNId COUNTER PRIMARY KEY, k LONG, a LONG, free LONG, t TEXT(20))");
        connection_->Execute("CREATE INDEX ByK ON Data (k, a)");
        connection_->Execute("CREATE INDEX ByA ON Data (a)");
        connection_->Execute("CREATE INDEX ByT ON Data (t)");
        connection_->Execute("CREATE TABLE Ids (NId LONG)");
        plain_ = Connection::Open(folder_.path("jumps.mdb"), "secret");
        plain_->LeaveOutStep("distinct-by-jumps");
    }
    void Fill(int rows) {
        connection_->Begin();
        for (int row = 0; row < rows; ++row)
            connection_->Execute("INSERT INTO Data (k, a, free, t) VALUES (" +
                                 (row % 50 == 3 ? std::string("Null") : std::to_string(row % 7 - 3)) + ", " +
                                 std::to_string(row) + ", 1, 'x')");
        connection_->Commit();
    }
    bool Jumps(const std::string& sql) {
        const std::vector<std::string> steps = connection_->Explain(sql).steps;
        return std::ranges::find(steps, "distinct-by-jumps") != steps.end();
    }

    TestFolder folder_;
    std::shared_ptr<Connection> connection_;
    std::shared_ptr<Connection> plain_;
};

TEST_F(IndexJumpsTest, OnlyNumbersThatAnIndexBeginsWithAreJumpedTo) {
    const std::pair<const char*, bool> cases[] = {{"SELECT DISTINCT k FROM Data", true},
                                                  {"Insert into [Ids](NId) Select distinct k from Data", true},
                                                  {"SELECT DISTINCT D.a AS x FROM Data AS D", true},
                                                  {"SELECT DISTINCT free FROM Data", false},
                                                  {"SELECT DISTINCT t FROM Data", false},
                                                  {"SELECT DISTINCT k, a FROM Data", false},
                                                  {"SELECT DISTINCT k FROM Data WHERE a > 3", false},
                                                  {"SELECT DISTINCT k FROM Data ORDER BY k DESC", false},
                                                  {"SELECT DISTINCT k + 1 FROM Data", false},
                                                  {"SELECT k FROM Data", false}};
    for (const auto& [sql, jumps] : cases)
        EXPECT_EQ(Jumps(sql), jumps) << sql;
}

/// More numbers than are jumped to (20,000), too.
TEST_F(IndexJumpsTest, TheRowsAreTheSame) {
    const std::string statements[] = {"SELECT DISTINCT k FROM Data", "SELECT DISTINCT D.a AS x FROM Data AS D"};
    for (const int rows : {0, 1, 1000, 20'000 - 1001, 1, 500}) {
        Fill(rows);
        for (const std::string& sql : statements)
            EXPECT_EQ(RowsOf(*connection_, sql), RowsOf(*plain_, sql)) << sql;
    }
    connection_->Execute("DROP INDEX ByA ON Data");
    EXPECT_FALSE(Jumps(statements[1]));
    EXPECT_EQ(RowsOf(*connection_, statements[1]), RowsOf(*plain_, statements[1]));
    connection_->Execute("Insert into [Ids](NId) Select distinct k from Data");
    EXPECT_EQ(RowsOf(*connection_, "SELECT NId FROM Ids"), "-;-3;-2;-1;0;1;2;3;");
}

} // namespace
} // namespace jet::test
