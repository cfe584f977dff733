#include "TestPlaces.h"
#include "jet/TestDatabase.h"
#include "jet/rewrite/Rewrites.h"
#include "jet/values/Error.h"
#include "support/Locales.h"

#include <fstream>
#include <map>

namespace jet::test {

namespace {

const std::map<ErrorNumber, std::string> ErrorNames = {
    {ErrorNumber::NoSuchTable, "NoSuchTable"},           {ErrorNumber::SyntaxError, "SyntaxError"},
    {ErrorNumber::NoSuchColumn, "NoSuchColumn"},         {ErrorNumber::TypeMismatch, "TypeMismatch"},
    {ErrorNumber::DivisionByZero, "DivisionByZero"},     {ErrorNumber::AlreadyExists, "AlreadyExists"},
    {ErrorNumber::ConstraintFailed, "ConstraintFailed"}, {ErrorNumber::OutsideGroups, "OutsideGroups"},
    {ErrorNumber::OutsideGroups, "OutsideGroups"}};

std::string ResultOf(Connection& connection, const std::string& sql) {
    try {
        if (!sql.starts_with("SELECT") && !sql.starts_with("TRANSFORM"))
            return "= " + std::to_string(connection.Execute(sql));
        if (sql.find(" INTO ") != std::string::npos) return "= " + std::to_string(connection.Execute(sql));
        Recordset rows = connection.OpenRecordset(sql);
        std::string text;
        for (std::size_t i = 0; i < rows.FieldCount(); ++i)
            text += (i == 0 ? "" : "|") + rows.Field(i).name;
        return text + (rows.atEnd() ? "" : "\n" + rows.GetString(-1, "|", "\n"));
    } catch (const Error& error) {
        const auto name = ErrorNames.find(error.number());
        return name == ErrorNames.end() ? error.what() : "! " + name->second;
    }
}

std::string WithoutLastBreaks(std::string text) {
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

void CheckCorpus(std::string_view leftOutStep = {}) {
    TestFolder folder;
    const auto connection = folder.Make("dialect.mdb");
    if (!leftOutStep.empty()) connection->LeaveOutStep(leftOutStep);
    std::ifstream corpus(TESSARO_TESTS "/jet/data/dialect.txt");
    std::string sql;
    std::string expected;
    int statements = 0;
    const auto check = [&] {
        if (sql.empty()) return;
        ++statements;
        EXPECT_EQ(WithoutLastBreaks(ResultOf(*connection, sql)), WithoutLastBreaks(expected)) << sql;
    };
    for (std::string line; std::getline(corpus, line);) {
        if (line.starts_with("#")) continue;
        if (!line.starts_with("> ")) {
            expected += line + "\n";
            continue;
        }
        check();
        sql = line.substr(2);
        expected.clear();
    }
    check();
    EXPECT_GT(statements, 100);
}

} // namespace

TEST(DialectTest, StatementsGiveWhatTheirCorpusSays) {
    CheckCorpus();
}

TEST(DialectTest, TheRowsAreTheSameWithoutAnyRewrite) {
    for (const Rewrite& step : Rewrites()) {
        SCOPED_TRACE(step.name);
        CheckCorpus(step.name);
    }
}

TEST(DialectTest, ADecimalCommaOfTheUserChangesNothing) {
    const tessaro::test::CommaLocale comma;
    ASSERT_TRUE(comma.works());
    CheckCorpus();
    TestFolder folder;
    const auto connection = folder.Make("comma.mdb");
    connection->Execute("CREATE TABLE Data (Datavalue TEXT(20))");
    connection->Execute("INSERT INTO Data VALUES ('40.735')");
    for (int times = 0; times < 3; ++times)
        EXPECT_EQ(connection->Execute("UPDATE Data SET Datavalue = CDbl(Datavalue) * 2"), 1);
    EXPECT_EQ(RowsOf(*connection, "SELECT Datavalue, Datavalue & '', CStr(CDbl(Datavalue)), Format(1234.5, '0.0E+00'), "
                                  "Format(0.5, 'Scientific'), 1.5 & 'x' FROM Data WHERE Datavalue > 325.87"),
              "325.88|325.88|325.88|1.2E+03|5.00E-01|1.5x;");
}

} // namespace jet::test
