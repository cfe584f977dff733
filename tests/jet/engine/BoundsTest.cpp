// Short statements that would take the machine.
#include "jet/TestDatabase.h"

#include <chrono>
#include <functional>
#include <sys/resource.h>

namespace jet {
namespace {

std::string Nested(int times, std::string inner, const std::function<std::string(const std::string&)>& wrap) {
    for (int i = 0; i < times; ++i)
        inner = wrap(inner);
    return inner;
}

std::string Repeated(int times, const std::string& text, const std::string& separator) {
    std::string all = text;
    for (int i = 1; i < times; ++i)
        all += separator + text;
    return all;
}

/// "0 AS a0, a0 + a0 AS a1, …": each name stands for the one before, twice.
std::string NamesTwice(int count, const std::string& first, const std::string& op) {
    std::string list = first + " AS a0";
    for (int i = 1; i <= count; ++i) {
        const std::string before = "a" + std::to_string(i - 1);
        list += ", " + before + op + before + " AS a" + std::to_string(i);
    }
    return list;
}

long PeakKilobytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

class BoundsTest : public ::testing::Test {
  protected:
    /// What the statement gives, or its error's text. Neither much time nor much memory may pass.
    [[nodiscard]] std::string Outcome(const std::string& sql) const {
        const long before = PeakKilobytes();
        const auto start = std::chrono::steady_clock::now();
        std::string outcome;
        try {
            outcome = RowsOf(*connection, sql);
        } catch (const Error& error) {
            outcome = error.what();
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << sql.substr(0, 100);
        EXPECT_LT(PeakKilobytes() - before, 200'000) << sql.substr(0, 100);
        EXPECT_EQ(outcome.find("engine reports"), std::string::npos) << sql.substr(0, 100) << "\n" << outcome;
        return outcome.substr(0, 60);
    }

    TestFolder folder;
    std::shared_ptr<Connection> connection = folder.Make("a.mdb");
};

TEST_F(BoundsTest, OperandsAreComputedOnce) {
    const auto choose = [](const std::string& x) { return "Choose(" + x + ",1,2)"; };
    const auto between = [](const std::string& x) { return "(1 BETWEEN 0 AND " + x + ")"; };
    EXPECT_EQ(Outcome("SELECT " + Nested(12, "1", choose)), "1;");
    EXPECT_EQ(Outcome("SELECT 5 BETWEEN 3 + 1 AND 2 * 4, 'b' BETWEEN 'C' & '' AND 'a' & '', 1 NOT BETWEEN 1 + 1 AND 3, "
                      "Null BETWEEN 1 + 1 AND 3, 'É' BETWEEN 'e' & '' AND 'f' & ''"),
              "-1|-1|-1|-|-1;");
    for (const std::string& deep : {Nested(60, "1", choose), Nested(60, "1", between)})
        EXPECT_EQ(Outcome("SELECT " + deep).substr(0, 33), "The statement is nested too deepl");
}

// Each is computed from left to right by hand here.
TEST_F(BoundsTest, RowsOfLogicalOperatorsAreAsLongAsTheBoundAllows) {
    for (const int operands : {2, 3, 24, 25, 99, 100, 101, 200, 2001}) {
        SCOPED_TRACE(operands);
        const bool even = operands % 2 == 0;
        EXPECT_EQ(Outcome("SELECT " + Repeated(operands, "5", " XOR ")), even ? "0;" : "5;");
        EXPECT_EQ(Outcome("SELECT " + Repeated(operands, "5", " EQV ")), even ? "-1;" : "5;");
        EXPECT_EQ(Outcome("SELECT " + Repeated(operands, "5", " IMP ")), even ? "-1;" : "5;");
        EXPECT_EQ(Outcome("SELECT 12 AND " + Repeated(operands, "7", " AND ")), "4;");
        EXPECT_EQ(Outcome("SELECT 12 OR " + Repeated(operands, "7", " OR ")), "15;");
        EXPECT_EQ(Outcome("SELECT " + Repeated(operands, "1 = 1", " XOR ")), even ? "0;" : "-1;");
        EXPECT_EQ(Outcome("SELECT " + Repeated(operands, "1 = 2", " EQV ")), even ? "-1;" : "0;");
        EXPECT_EQ(Outcome("SELECT 1 WHERE " + Repeated(operands, "1 = 2", " IMP ")), even ? "1;" : "");
    }
    EXPECT_TRUE(Outcome("SELECT " + Repeated(2002, "5", " XOR ")).starts_with("The statement has too many operators"));
}

TEST_F(BoundsTest, UnionsWithinUnionsAreWrittenOnce) {
    const auto wrap = [](const std::string& x) { return "SELECT * FROM (" + x + ") AS q UNION SELECT 1 AS a"; };
    EXPECT_EQ(Outcome(Nested(12, "SELECT 2 AS a", wrap)), "1;2;");
}

TEST_F(BoundsTest, DeepNestsAreRefusedInOurWords) {
    const std::vector<std::function<std::string(const std::string&)>> wraps = {
        [](const std::string& x) { return "(" + x + ")"; },
        [](const std::string& x) { return "(1 + " + x + ")"; },
        [](const std::string& x) { return "NOT " + x; },
        [](const std::string& x) { return "- " + x; },
        [](const std::string& x) { return "IIf(1 = 1, 2, " + x + ")"; },
        [](const std::string& x) { return "Abs(" + x + ")"; },
        [](const std::string& x) { return "(1 IN (2, " + x + "))"; },
        [](const std::string& x) { return "EXISTS (SELECT 1 WHERE " + x + ")"; },
        [](const std::string& x) { return "(SELECT " + x + ")"; },
        [](const std::string& x) { return "1 = ANY (SELECT " + x + ")"; },
        [](const std::string& x) { return "(1 = 1 AND " + x + " = 1)"; }};
    for (const auto& wrap : wraps)
        for (const int depth : {110, 5000})
            EXPECT_EQ(Outcome("SELECT " + Nested(depth, "1", wrap)).substr(0, 34), "The statement is nested too deeply")
                << wrap("1");
}

TEST_F(BoundsTest, WhatDoublesIsRefused) {
    const auto stars = [](const std::string& x) { return "(SELECT *, * FROM " + x + ")"; };
    const auto unions = [](const std::string& x) { return "SELECT * FROM (" + x + ") UNION SELECT 1 AS a"; };
    struct Case {
        std::string sql;
        const char* outcome;
    };
    const Case cases[] = {
        {"SELECT " + NamesTwice(19, "1", " + "), "The statement is too complex"},
        {"SELECT " + NamesTwice(12, "'" + std::string(60'000, 'x') + "'", " & "), "The names of the statement"},
        {"SELECT * FROM " + Nested(24, "(SELECT 1 AS q, 2 AS r)", stars), "The query has too many fields"},
        {Nested(60, "SELECT 1 AS a", unions), "The statement is nested too deeply"},
        {Repeated(600, "SELECT 1 AS a", " UNION "), "The statement has too many queries in a union"},
        {"SELECT 1 FROM (SELECT 1 AS b) GROUP BY " + Repeated(2100, "b", ", "), "The statement groups or sorts"},
        {"SELECT Len(Replace(String(1000000, 'a'), 'a', String(1000000, 'b')))", "A text or binary value is too long"},
        {"SELECT Len(String(900000, '€') & String(900000, '€'))", "A text or binary value is too long"},
        {"SELECT Format(1, String(20000, '0'))", "A text or binary value is too long"},
        {"SELECT InStr(String(1000000, 'a'), String(500000, 'a') & 'b')", "The text is too long to be searched"},
        {"SELECT InStrRev(String(1000000, 'a'), String(500000, 'a') & 'b')", "The text is too long to be searched"},
        {"SELECT String(1000000, 'a') LIKE '*' & String(500000, 'a') & 'b'", "The text is too long to be compared"},
    };
    for (const Case& each : cases)
        EXPECT_TRUE(Outcome(each.sql).starts_with(each.outcome)) << each.sql.substr(0, 80) << "\n" << Outcome(each.sql);
}

TEST_F(BoundsTest, ASnapshotOfLongTextsIsBounded) {
    connection->Execute("CREATE TABLE T (a LONG)");
    for (int i = 0; i < 30; ++i)
        connection->Execute("INSERT INTO T VALUES (" + std::to_string(i) + ")");
    const std::string texts = "SELECT String(1000000, 'a') AS t FROM T, T AS U";
    EXPECT_EQ(FailureOf([&] { (void)connection->OpenRecordset(texts); }), ErrorNumber::TooLarge);
    Recordset rows = connection->OpenRecordset(texts, CursorType::ForwardOnly); // holds none of them
    std::size_t count = 0;
    for (; !rows.atEnd(); rows.MoveNext())
        ++count;
    EXPECT_EQ(count, 900U);
}

TEST_F(BoundsTest, FailedConditionsOfATableAreSaidInOurWords) {
    connection->Execute("CREATE TABLE T (a TEXT(5) NOT NULL, b LONG UNIQUE)");
    connection->Execute("INSERT INTO T VALUES ('x', 1)");
    const auto failure = [&](const char* sql) {
        try {
            connection->Execute(sql);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), ErrorNumber::ConstraintFailed);
            return std::string(error.what());
        }
        return std::string("none");
    };
    EXPECT_EQ(failure("INSERT INTO T VALUES ('123456', 2)"),
              "The text is too long for the field 'a', which holds 5 characters.");
    EXPECT_EQ(failure("INSERT INTO T VALUES ('y', 1)"), "The value of 'T.b' is there already.");
    EXPECT_EQ(failure("INSERT INTO T (b) VALUES (3)"), "The field 'T.a' needs a value.");
}

} // namespace
} // namespace jet
