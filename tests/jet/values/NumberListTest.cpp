#include "jet/values/NumberList.h"

#include "jet/TestDatabase.h"

#include <string>

namespace jet {

namespace {

/// "from,from+step,…": `count` numbers.
std::string Numbers(std::int64_t from, std::int64_t step, std::size_t count) {
    std::string list;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) list += ',';
        list += std::to_string(from + step * static_cast<std::int64_t>(i));
    }
    return list;
}

} // namespace

TEST(NumberListTest, KnowsAListOfWholeNumbers) {
    const struct {
        const char* text;
        std::size_t length;
    } Cases[] = {
        {"1)", 1},     {"1, 2 ,\n-3 ) AND x IN (4)", 10},
        {"0,-1)", 4},  {"123456789012345678)", 18},
        {")", 0},      {"1,)", 0},
        {"1", 0},      {"1 2)", 0},
        {"1.5)", 0},   {"1e3)", 0},
        {"007)", 0},   {"--1)", 0},
        {"1,'a')", 0}, {"1234567890123456789)", 0},
    };
    for (const auto& each : Cases)
        EXPECT_EQ(NumberListLength(each.text), each.length) << each.text;
}

TEST(NumberListTest, HoldsCloseAndFarNumbersAlike) {
    const struct {
        const char* text;
        std::size_t size;
        std::vector<std::int64_t> held, absent;
    } Cases[] = {
        {"5", 1, {5}, {4, 6, -5}},
        {"3,1,2,3", 3, {1, 2, 3}, {0, 4}},
        {"-64, 0 ,63", 3, {-64, 0, 63}, {-65, -63, 1, 62, 64}},
        {"-999999999999999999,999999999999999999", 2, {-999999999999999999, 999999999999999999}, {0, INT64_MIN}},
        {"1000000,2", 2, {2, 1000000}, {1, 3, 999999, 1000001}},
    };
    for (const auto& each : Cases) {
        const NumberList list(each.text);
        EXPECT_EQ(list.size(), each.size) << each.text;
        for (const std::int64_t number : each.held)
            EXPECT_TRUE(list.contains(number)) << each.text << ": " << number;
        for (const std::int64_t number : each.absent)
            EXPECT_FALSE(list.contains(number)) << each.text << ": " << number;
    }
}

class ListStatementTest : public testing::Test {
  protected:
    void SetUp() override {
        connection_ = folder_.Make("lists.mdb");
        connection_->Execute("CREATE TABLE t (Id COUNTER, N LONG, V DOUBLE, Datavalue TEXT(20))");
        for (const char* row : {"1, 1, '1'", "2, 2.5, '2'", "NULL, NULL, NULL", "90001, 90001, '90001'"})
            connection_->Execute(std::string("INSERT INTO t (N, V, Datavalue) VALUES (") + row + ")");
    }

    [[nodiscard]] std::string IdsWhere(const std::string& condition) const {
        return RowsOf(*connection_, "SELECT Id FROM t WHERE " + condition + " ORDER BY Id");
    }

    TestFolder folder_;
    std::shared_ptr<Connection> connection_;
};

// Whatever way a list takes, by its length, it means the same.
TEST_F(ListStatementTest, MeansTheSameWhateverItsLength) {
    const struct {
        const char* condition; ///< %: the list of 1, 3, 5 …
        const char* ids;
    } Cases[] = {
        {"N IN (%)", "1;"},
        {"N NOT IN (%)", "2;4;"},
        {"NOT (N IN (%))", "2;4;"},
        {"V IN (%)", "1;"},
        {"N + 1 IN (%)", "2;"},
        {"Datavalue IN (%)", "1;"},
        {"N IN (%) OR N = 2", "1;2;"},
        {"Id IN (SELECT Id FROM t WHERE N IN (%)) AND N IN (%)", "1;"},
    };
    for (const std::size_t count : {3U, 40000U}) {
        for (const auto& each : Cases) {
            std::string condition = each.condition;
            for (std::size_t at = condition.find('%'); at != std::string::npos; at = condition.find('%'))
                condition.replace(at, 1, Numbers(1, 2, count));
            EXPECT_EQ(IdsWhere(condition), each.ids) << each.condition << " with " << count;
        }
    }
}

TEST_F(ListStatementTest, ServesEveryKindOfStatement) {
    const std::string list = Numbers(1, 2, 40000);
    EXPECT_EQ(RowsOf(*connection_, "SELECT N FROM t WHERE N IN (" + list + ") UNION SELECT N FROM t WHERE N IN (" +
                                       Numbers(2, 2, 40000) + ") ORDER BY N"),
              "1;2;");
    EXPECT_EQ(RowsOf(*connection_,
                     "TRANSFORM First(Datavalue) SELECT N FROM t WHERE N IN (" + list + ") GROUP BY N PIVOT Id"),
              "1|1;");
    EXPECT_EQ(
        RowsOf(*connection_, "TRANSFORM First(Datavalue) SELECT N FROM t GROUP BY N PIVOT Id IN (1, 2)").substr(0, 4),
        "-|-|");
    connection_->Execute("SELECT Id, N INTO made FROM t WHERE N IN (" + list + ")");
    EXPECT_EQ(RowsOf(*connection_, "SELECT * FROM made"), "1|1;");
    EXPECT_EQ(connection_->Execute("UPDATE t SET V = 9 WHERE N IN (" + list + ")"), 1);
    EXPECT_EQ(connection_->Execute("DELETE * FROM t WHERE N NOT IN (" + list + ")"), 2);
    EXPECT_EQ(RowsOf(*connection_, "SELECT Id, V FROM t"), "1|9;3|-;");
}

// The same list twice is the same expression, whichever parameter stands for it.
TEST_F(ListStatementTest, GroupsAndSortsByALongList) {
    const std::string listed = "N IN (" + Numbers(1, 2, 40000) + ")";
    EXPECT_EQ(RowsOf(*connection_, "SELECT " + listed + ", Count(*) FROM t WHERE N > 0 GROUP BY " + listed),
              "-1|1;0|2;");
    EXPECT_EQ(RowsOf(*connection_, "SELECT DISTINCT " + listed + " FROM t WHERE N > 0 ORDER BY " + listed + " DESC"),
              "0;-1;");
}

TEST_F(ListStatementTest, TakesMillionsOfNumbers) {
    const std::string list = Numbers(1, 1, 3'000'000);
    EXPECT_EQ(IdsWhere("N IN (" + list + ")"), "1;2;4;");
    EXPECT_EQ(IdsWhere("N NOT IN (" + list + ")"), "");
}

// A translation is kept as long as its tables are made alike, and no longer.
TEST(KeptTranslationTest, OutlivesTheMakingAnewOfATable) {
    const TestFolder folder;
    const auto connection = folder.Make("kept.mdb");
    connection->Execute("CREATE TABLE t (Id LONG, Name TEXT(20))");
    connection->Execute("INSERT INTO t VALUES (1, 'one')");
    const struct {
        const char* into;
        const char* rows;
        bool reused; ///< the SELECT below
    } Cases[] = {
        {"SELECT Id, Name INTO made FROM t", "1|one;", false},
        {"SELECT Id, Name INTO made FROM t", "1|one;", true},
        {"SELECT Name, Id INTO made FROM t", "one|1;", false},
        {"SELECT Id, Name, Id + 1 AS More INTO made FROM t", "1|one|2;", false},
        {"SELECT Id & '' AS Id, Name, Id + 1 AS More INTO made FROM t", "1|one|2;", false},
    };
    for (const auto& each : Cases) {
        (void)FailureOf([&] { connection->Execute("DROP TABLE made"); });
        connection->Execute(each.into);
        const auto before = connection->cacheCounts();
        EXPECT_EQ(RowsOf(*connection, "SELECT * FROM made"), each.rows) << each.into;
        EXPECT_EQ(connection->cacheCounts().translated == before.translated, each.reused) << each.into;
    }
    connection->Execute("DROP TABLE made");
    EXPECT_EQ(FailureOf([&] { (void)RowsOf(*connection, "SELECT * FROM made"); }), ErrorNumber::NoSuchTable);
}

} // namespace jet
