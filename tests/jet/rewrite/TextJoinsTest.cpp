#include "jet/FixedCatalogue.h"

#include <algorithm>

namespace jet::test {
namespace {

/// A catalogue whose table Data is large.
class LargeData final : public FixedCatalogue {
  public:
    LargeData() {
        define("CREATE TABLE Data (k LONG, a LONG, v TEXT(9))");
        define("CREATE TABLE Latest (a LONG, t TEXT(9))");
        define("CREATE TABLE Times (k LONG, t TEXT(9))");
        run("INSERT INTO Data VALUES (1, 1, 'x'), (2, 1, 'y'), (2, 2, 'z'), (3, 2, 'w'), (NULL, 2, 'n')");
        run("INSERT INTO Latest VALUES (1, '2002'), (2, '2002'), (2, NULL)");
        run("INSERT INTO Times VALUES (1, '2001'), (2, '2002'), (3, '2003'), (NULL, '2002')");
    }
    [[nodiscard]] std::int64_t rowsOnRecord(const TableInfo& table) const override {
        return table.name == "Data" ? 1'000'000 : 10;
    }
};

TEST(TextJoinsTest, ATableJoinedByTextIsNotFoundByItsNumber) {
    LargeData catalogue;
    const std::string from =
        "SELECT D.v FROM Latest L INNER JOIN (Times T INNER JOIN Data D ON T.k = D.k) ON L.t = T.t AND L.a = D.a";
    const struct {
        std::string sql;
        bool turned;
    } cases[] = {
        {from, true},
        {"SELECT D.v FROM Latest L, Times T, Data D WHERE D.k = T.k AND L.t = T.t AND L.a = D.a", true},
        {"SELECT D.v FROM Times T INNER JOIN Data D ON T.k = D.k", false},
        {"SELECT D.v FROM Latest L, Times T, Data D WHERE D.k = T.k AND L.a = T.k AND L.a = D.a", false},
        {"SELECT D.v FROM Latest L, Times T, Data D WHERE D.k = T.k AND D.v = T.t AND L.a = D.a", false},
        {"SELECT L.t FROM Latest L, Times T, Latest M WHERE M.a = T.k AND L.t = T.t", false},
    };
    for (const auto& each : cases) {
        const Translation translation = Translate(each.sql, catalogue);
        EXPECT_EQ(std::ranges::count(translation.steps, "text-joins-first") > 0, each.turned) << each.sql;
        const Translation plain = Translate(each.sql, catalogue, {"text-joins-first"});
        auto rows = catalogue.run(translation.statements.front());
        auto plainRows = catalogue.run(plain.statements.front());
        std::ranges::sort(rows);
        std::ranges::sort(plainRows);
        EXPECT_EQ(rows, plainRows) << each.sql;
    }
    EXPECT_EQ(catalogue.run(Translate(from, catalogue).statements.front()).size(), 2U);
}

// Of the table with the most numbers very many rows may have the same text.
TEST(TextJoinsTest, TheTableWithMoreNumbersLeads) {
    LargeData catalogue;
    catalogue.define("CREATE TABLE Wide (k LONG, a LONG, t TEXT(9))");
    catalogue.run("INSERT INTO Wide VALUES (1, 1, '2001'), (2, 1, '2002'), (3, 2, '2001'), (2, NULL, '2002')");
    catalogue.define("CREATE TABLE Names (a LONG, t TEXT(9))");
    catalogue.run("INSERT INTO Names VALUES (1, '2001'), (1, '2002'), (2, '2003')");
    const std::string sql = "SELECT D.v FROM (Wide W INNER JOIN Data D ON W.k = D.k AND W.a = D.a) INNER JOIN Names N "
                            "ON W.t = N.t AND D.a = N.a";
    const std::string statement = Translate(sql, catalogue).statements.front();
    EXPECT_NE(statement.find("(+\"W\".\"t\") COLLATE JETTEXT = \"N\".\"t\""), std::string::npos) << statement;
    const std::string plain = Translate(sql, catalogue, {"text-joins-first"}).statements.front();
    EXPECT_EQ(catalogue.run(statement), catalogue.run(plain));
    EXPECT_EQ(catalogue.run(statement).size(), 2U);
}

} // namespace
} // namespace jet::test
