#include "selection/SelectionSheet.h"

#include "database/Database.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "selection/AreaSelection.h"
#include "selection/IndicatorSelection.h"
#include "selection/PrintSummaryView.h"
#include "selection/SheetStatement.h"
#include "selection/TimeSelection.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/ReadXls.h"
#include "support/TestSession.h"

#include <QDir>
#include <QFile>

namespace tessaro::test {
namespace {

/// Takes a copy of the workbook while it is on show.
class KeepingFrame final : public FakeFrame {
  public:
    explicit KeepingFrame(QString copy) : copy_(std::move(copy)) {}
    void ShowWorkbook(const QString& file) override {
        shown << file;
        QFile::remove(copy_);
        QFile::copy(file, copy_);
    }
    QStringList shown;

  private:
    QString copy_;
};

/// The sheets of the sample database, read back by a reader that has nothing to do with the program that wrote them.
class SelectionSheetTest : public SessionTest {
  protected:
    void SetUp() override {
        StartInstallation();
        office::SpreadsheetApplication::SetProfileFolder(Folder() + QStringLiteral("/Office"));
        ASSERT_TRUE(OpenDatabaseFile(JoinPath({AppPath, QStringLiteral("Data/Tessaro World.mdb")})));
        SetFrame(&keeper_);
    }
    void TearDown() override {
        SetFrame(&frame);
        office::SpreadsheetApplication::QuitAll();
    }
    /// Prints a list and reads the sheet that was shown.
    ReadSheet Print(const char* kind, std::vector<KeyedItem> items, int view = 0) {
        KeyedList list;
        list.Items().SetItems(std::move(items));
        PrintSummaryView(QLatin1String(kind), list, nullptr, view);
        return QFile::exists(copy_) ? ReadXls(copy_).at(0) : ReadSheet{};
    }
    static void ExpectRows(const ReadSheet& sheet, const QString& sql, int columns) {
        int row = 2;
        for (Records rows = Select(sql); !rows.atEnd(); rows.MoveNext(), ++row)
            for (int column = 0; column < columns; ++column)
                ASSERT_EQ(sheet.Text(row, column + 1), rows.Text(static_cast<std::size_t>(column)))
                    << "row " << row << " column " << column + 1;
        EXPECT_EQ(sheet.rows.size(), row - 1);
        EXPECT_GT(row, 2) << "the statement gave nothing";
    }

    QString copy_ = Folder() + QStringLiteral("/copy.xls");
    KeepingFrame keeper_{copy_};
};

TEST_F(SelectionSheetTest, HoldsWhatTheThreeListsShow) {
    ShowGlobalColor = true;
    GlobalColor = 0x0000C8; // red
    Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile) SELECT "
                           "AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area WHERE AreaLevel < 3"));
    selection::AreaSelection areas;
    areas.Load();
    const ReadSheet area = Print("AREA", areas.Items());
    ASSERT_EQ(keeper_.shown.size(), 1) << messages.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(area.Text(1, 1), QStringLiteral("Area ID"));
    EXPECT_EQ(area.Text(1, 2), QStringLiteral("Area name"));
    EXPECT_EQ(area.rows.size(), areas.Ids().size() + 1);
    EXPECT_EQ(area.Look(2, 1)[QLatin1String("format")].toString(), QStringLiteral("@"));
    EXPECT_TRUE(area.Look(1, 1)[QLatin1String("bold")].toBool());
    EXPECT_FALSE(area.Look(1, 1)[QLatin1String("back")].isNull()) << "the heading is tinted";
    EXPECT_GT(area.Look(2, 2)[QLatin1String("borders")].toArray().at(0).toInt(), 0);
    EXPECT_EQ(area.Look(2, 2)[QLatin1String("colour")].toString(), QStringLiteral("C80000"));
    EXPECT_TRUE(QDir(TempFolder).entryList(QDir::Files).isEmpty()) << "cleared after showing";

    const std::vector<KeyedItem> periods = selection::AvailablePeriods();
    const ReadSheet time = Print("TIME", periods);
    EXPECT_EQ(time.Text(1, 1), QStringLiteral("Time"));
    ASSERT_EQ(time.rows.size(), static_cast<qsizetype>(periods.size()) + 1);
    EXPECT_EQ(time.Text(2, 1), periods.front().cells.front());

    Records few = Select(QStringLiteral("SELECT TOP 12 IUSNId FROM Indicator_Unit_Subpop ORDER BY IUSNId"));
    const QString ids = few.Joined();
    selection::ReplaceIndicators(ids);
    IndicatorSelectBy = 1;
    ExpectRows(Print("IND", selection::SelectedIndicators(), 0), selection::SheetStatement(0, true, ids), 5);
    IndicatorSelectBy = 0;
    const std::vector<KeyedItem> indicators = selection::SelectedIndicators();
    const ReadSheet goals = Print("IND", indicators, 1);
    EXPECT_EQ(goals.rows.size(), 1) << "the heading alone";
    EXPECT_EQ(goals.Text(1, 4), QStringLiteral("Indicator"));
    EXPECT_EQ(Print("IND", {}, 0).rows.size(), 1);
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QLatin1Char(' ')).toStdString();
}

TEST_F(SelectionSheetTest, ItemsBeyondOneSheetGoOnOnTheNext) {
    constexpr int kItems = 65'535 + 3;
    ShowGlobalColor = true;
    GlobalColor = 0x0000C8;
    std::vector<KeyedItem> items(kItems, {QStringLiteral("A1"), {QStringLiteral("Region"), QStringLiteral("007")}, 0});
    items.back() = {QStringLiteral("A2"), {QStringLiteral("the last one"), QStringLiteral("08")}, 1};
    const auto sheets = ReadXls(selection::MakeSelectionSheet(selection::AreaTable(items)));
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].name, QStringLiteral("Area"));
    EXPECT_EQ(sheets[1].name, QStringLiteral("Area 2"));
    EXPECT_EQ(sheets[0].rows.size(), 65'536);
    const ReadSheet& rest = sheets[1];
    ASSERT_EQ(rest.rows.size(), 4);
    EXPECT_EQ(rest.Text(1, 1), QStringLiteral("Area ID"));
    EXPECT_EQ(rest.Text(2, 1), QStringLiteral("007"));
    EXPECT_EQ(rest.Text(4, 2), QStringLiteral("the last one"));
    EXPECT_EQ(rest.Look(4, 1)[QLatin1String("format")].toString(), QStringLiteral("@"));
    EXPECT_EQ(rest.Look(4, 2)[QLatin1String("colour")].toString(), QStringLiteral("C80000"));
    EXPECT_NE(rest.Look(3, 2)[QLatin1String("colour")].toString(), QStringLiteral("C80000"));
    EXPECT_EQ(selection::PeriodTable(items).rows.size(), items.size());
}

TEST_F(SelectionSheetTest, AMissingTemplateShowsNothing) {
    AppPath = Folder() + QStringLiteral("/nowhere");
    const ReadSheet sheet = Print("TIME", {{QStringLiteral("T1"), {QStringLiteral("1990")}, 0}});
    EXPECT_TRUE(keeper_.shown.isEmpty());
    EXPECT_EQ(keeper_.busy, 0);
    EXPECT_EQ(messages.size(), 1);
}

} // namespace
} // namespace tessaro::test
