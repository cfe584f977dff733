#include "jet/sql/Parser.h"

#include "jet/values/Error.h"

#include <gtest/gtest.h>

namespace jet {

namespace {

std::string PlaceOfFailure(const std::string& sql) {
    try {
        (void)Parse(sql);
        return "none";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), ErrorNumber::SyntaxError) << sql;
        const std::string text = error.what();
        const std::size_t start = text.find("(line ");
        return start == std::string::npos ? "no place" : text.substr(start + 6, text.rfind(')') - start - 6);
    }
}

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

TEST(ParserTest, PointsAtTheFirstWrongWord) {
    const struct {
        const char* sql;
        const char* place;
    } Cases[] = {
        {"", "1, column 1"},
        {"EXPLAIN SELECT 1", "1, column 1"},
        {"SELECT", "1, column 7"},
        {"SELECT a, , b FROM t", "1, column 11"},
        {"SELECT a FROM", "1, column 14"},
        {"SELECT a FROM t WHERE", "1, column 22"},
        {"SELECT a FROM t WHERE a IN ()", "1, column 29"},
        {"SELECT a b FROM t", "1, column 10"},
        {"SELECT a FROM t INNER JOIN u", "1, column 29"},
        {"SELECT a FROM (t", "1, column 17"},
        {"SELECT (a FROM t", "1, column 11"},
        {"SELECT a FROM t ORDER a", "1, column 23"},
        {"SELECT Mid(a) FROM t", "1, column 8"},
        {"SELECT a\nFROM t\nWHERE b LIKE", "3, column 13"},
        {"SELECT 1; SELECT 2", "1, column 11"},
        {"INSERT t VALUES (1)", "1, column 8"},
        {"INSERT INTO t (a,) VALUES (1)", "1, column 18"},
        {"UPDATE t SET a", "1, column 15"},
        {"UPDATE t a = 1", "1, column 12"},
        {"DELETE FROM", "1, column 12"},
        {"CREATE TABLE t ()", "1, column 17"},
        {"CREATE TABLE t (a WRONG)", "1, column 19"},
        {"CREATE VIEW v", "1, column 8"},
        {"DROP t", "1, column 6"},
        {"TRANSFORM Sum(a) SELECT b FROM t GROUP BY b", "1, column 44"},
        {"SELECT #2001-02-31x#", "1, column 8"},
    };
    for (const auto& each : Cases)
        EXPECT_EQ(PlaceOfFailure(each.sql), each.place) << each.sql;
}

TEST(ParserTest, TakesTheFormsOfTheDialect) {
    const char* const Statements[] = {
        "select top 5 percent a as [b c] from [t u] as v;",
        "SELECT ALL a FROM ((t INNER JOIN u ON t.a = u.a) LEFT JOIN v ON u.b = v.b), w x",
        "SELECT a FROM t INNER JOIN u INNER JOIN v ON u.b = v.b ON t.a = u.a",
        "SELECT t.[order], t.select FROM t ORDER BY 1 DESC, 2 ASC",
        "SELECT Left(a, 2), Right(a, 2) FROM t",
        "SELECT x.a FROM (SELECT a FROM t UNION ALL SELECT b FROM u) AS x",
        "SELECT a INTO [dBase IV;database=C:\\x].GeoProj.dbf FROM t",
        "INSERT INTO t (a, b) SELECT 1, 2",
        "UPDATE t AS x, u SET x.a = u.a, b = NOT c WHERE x.a BETWEEN 1 AND 2 AND NOT x.b IS NOT NULL",
        "DELETE t.* FROM t INNER JOIN u ON t.a = u.a",
        "CREATE TABLE t (a COUNTER(1,1) CONSTRAINT p PRIMARY KEY, b TEXT(5) WITH COMPRESSION NOT NULL, c LONG DEFAULT "
        "-1 NULL)",
        "CREATE TABLE t (a LONG, b LONG, CONSTRAINT p PRIMARY KEY (a, b), UNIQUE (b))",
        "CREATE UNIQUE INDEX i ON t (a DESC, b ASC) WITH PRIMARY",
        "ALTER TABLE t DROP COLUMN a",
        "TRANSFORM Avg(a) AS x SELECT b FROM t GROUP BY b PIVOT c & 'x' IN ('1', two, 3)",
    };
    for (const char* const each : Statements)
        EXPECT_EQ(PlaceOfFailure(each), "none") << each;
}

TEST(ParserTest, BoundsTheDepthOfTheTree) {
    for (const std::string& part : {std::string("("), std::string("-"), std::string("NOT "), std::string("1+"),
                                    std::string("1^"), std::string("'a'&"), std::string("1="), std::string("Len("),
                                    std::string("(SELECT "), std::string("1 Imp ")}) {
        EXPECT_NE(PlaceOfFailure("SELECT " + Repeated(part, 100000) + "1"), "none") << part;
    }
    EXPECT_NE(PlaceOfFailure("SELECT a FROM " + Repeated("(", 100000) + "t"), "none");
    EXPECT_NE(PlaceOfFailure("SELECT a FROM t" + Repeated(" JOIN t ON 1", 100000) + " ("), "none");
    EXPECT_EQ(PlaceOfFailure("SELECT a FROM t WHERE a = 1" + Repeated(" OR a = 2", 20000)), "none");
    EXPECT_EQ(PlaceOfFailure("SELECT " + Repeated("(", 40) + "1" + Repeated(")", 40)), "none");
}

} // namespace jet
