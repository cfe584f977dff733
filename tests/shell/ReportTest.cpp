#include "database/Database.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/SummaryReport.h"
#include "support/ReadXls.h"
#include "support/TestSession.h"

namespace tessaro::test {

namespace {

/// The sample database of the installation.
class ReportTest : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/office"));
        ASSERT_TRUE(OpenDatabaseFile(FindPath(JoinPath({AppPath, QStringLiteral("Data/Tessaro World.mdb")}))));
    }
    void TearDown() override { office::SpreadsheetApplication::QuitAll(); }

    static qint64 Count(const QString& sql, jet::Connection* on = nullptr) {
        const Records rows = Select(sql, jet::CursorType::Static, on);
        return rows.atEnd() ? -1 : rows.Number(std::size_t{0});
    }
    /// Rows that a statement gives.
    static qint64 RowsOf(const QString& sql, jet::Connection* on) {
        Records rows = Select(sql, jet::CursorType::Static, on);
        return rows.isOpen() ? rows.rows().RecordCount() : -1;
    }
};

} // namespace

TEST_F(ReportTest, HasSixteenSheetsWithTheRowsOfTheDatabase) {
    QList<int> steps;
    const auto sheets = ReadXls(WriteSummaryReport([&](int sheet) { steps << sheet; }));
    ASSERT_EQ(sheets.size(), 16U);
    EXPECT_EQ(steps.size(), 16);
    const auto database = CreateTheConnection(CurrentDatabase);
    struct Expected {
        std::size_t sheet; ///< from 1
        const char* sql;
    };
    const Expected expectations[] = {
        {3, "SELECT DISTINCT Unit FROM [Unit_en]"},
        {4, "SELECT DISTINCT Subpop FROM [Subpop_en]"},
        {5, "SELECT * FROM Indicator_Unit_Subpop"},
        {6, "SELECT DISTINCT TimePeriod FROM TimePeriod"},
        {7, "SELECT DISTINCT AreaID, AreaName, AreaLevel, MapFile FROM [Area_en]"},
        {12, "SELECT T.ThemeGId FROM [Theme_en] AS T LEFT JOIN Indicator_Theme AS L ON T.ThemeGId = L.ThemeGId"},
        {14, "SELECT DISTINCT Source FROM [Source_en]"},
        {15, "SELECT * FROM Template_Log"},
        {16, "SELECT * FROM Database_Log"},
    };
    for (const Expected& expected : expectations)
        EXPECT_EQ(sheets[expected.sheet - 1].rows.size() - 1, RowsOf(QLatin1String(expected.sql), database.get()))
            << expected.sheet;
    for (const auto& sheet : sheets) {
        ASSERT_GT(sheet.rows.size(), 0) << sheet.name.toStdString();
        EXPECT_TRUE(sheet.Look(1, 1).value(QLatin1String("bold")).toBool()) << sheet.name.toStdString();
    }
    EXPECT_EQ(sheets[0].Text(2, 2), QStringLiteral("Tessaro World.mdb"));
    EXPECT_EQ(sheets[0].At(5, 2).toDouble(), static_cast<double>(Count(QStringLiteral("SELECT count(*) FROM [Data]"))));
    // A combination is marked under each goal that it stands for, and its count says how many.
    const auto goals = sheets[4].rows.at(0).toArray().size() - 6;
    EXPECT_EQ(goals, Count(QStringLiteral("SELECT count(*) FROM [GoalLabel1_en]"), database.get()));
    double marks = 0;
    for (int row = 2; row <= sheets[4].rows.size(); ++row) {
        int marked = 0;
        for (int column = 7; column < 7 + goals; ++column)
            marked += sheets[4].Text(row, column).isEmpty() ? 0 : 1;
        EXPECT_EQ(sheets[4].At(row, 6).toDouble(), marked) << row;
        marks += marked;
    }
    EXPECT_EQ(marks, static_cast<double>(
                         RowsOf(QStringLiteral("SELECT DISTINCT G.GoalLabel1GId, L.IUSNId FROM Goal AS G INNER JOIN "
                                               "Indicator_Goal AS L ON G.GoalLabel3GId = L.GoalLabel3GId"),
                                database.get())));
    // The maps of the installation are there.
    EXPECT_FALSE(sheets[7].Text(2, 2).isEmpty());
}

TEST_F(ReportTest, ALogComesAsAWorkbook) {
    const auto sheet = ReadXls(WriteLogReport(LogKind::Database)).front();
    EXPECT_EQ(sheet.rows.at(0).toArray().size(), 4);
    EXPECT_GT(sheet.rows.size(), 1);
}

} // namespace tessaro::test
