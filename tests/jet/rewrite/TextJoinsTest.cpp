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

} // namespace
} // namespace jet::test
