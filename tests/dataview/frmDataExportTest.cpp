#include "TestPlaces.h"
#include "controls/DataTable.h"
#include "controls/FileDialogs.h"
#include "controls/KeyedList.h"
#include "controls/WorkProgress.h"
#include "dataview/DataScreen.h"
#include "dataview/GridQuery.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTest>
#include <QToolButton>

namespace tessaro::test {

namespace {

/// A frame that offers some of the wizards and writes down which were started.
class OfferingFrame final : public FakeFrame {
  public:
    void StartCalculation(int type) override { started << QString::number(type); }
    [[nodiscard]] bool OffersCalculation(int type) const override { return calculates && type != 2; }
    void StartPresentation(QChar type) override { started << type; }
    [[nodiscard]] bool OffersPresentation(QChar type) const override { return type != QLatin1Char('M'); }

    void ShowWorkbook(const QString& file) override { started << FileNameOf(file); }

    bool calculates = true;
    QStringList started;
};

class frmDataExportTest : public DataScreenTest {
  protected:
    frmDataExportTest() {
        SetFrame(&offering);
        AppPath = Folder();
    }

    [[nodiscard]] QList<QByteArray> SavedLines() {
        const QString file = JoinPath({Folder(), QStringLiteral("DataView.txt")});
        EXPECT_TRUE(form.SaveDataView(file));
        QList<QByteArray> lines = ReadWholeFile(file).value_or(QByteArray()).split('\n');
        if (!lines.isEmpty()) lines.removeLast();
        return lines;
    }
    /// The spreadsheet program and the template that what is printed is made of.
    static void PrepareToPrint() {
        UseSpreadsheet();
        TempFolder = JoinPath({AppPath, QStringLiteral("Temp")});
        const QString templates = JoinPath({AppPath, QStringLiteral("Bin/Template")});
        ASSERT_TRUE(QDir().mkpath(TempFolder) && QDir().mkpath(templates));
        ASSERT_TRUE(CopyFileOver(QStringLiteral(TESSARO_INSTALLATION "/Bin/Template/TemplateExcel.xls"),
                                 templates + QStringLiteral("/TemplateExcel.xls")));
    }
    QListWidget& List(const char* name) { return *form.findChild<QListWidget*>(QLatin1String(name)); }
    DataTable& Stats() { return *form.findChild<DataTable*>(QStringLiteral("DataStats")); }

    OfferingFrame offering;
};

TEST_F(frmDataExportTest, SavesAllRowsWhateverTheGridHasLoadedAndTheLoadGoesOn) {
    FillData(3, 20, 4);
    Show();
    auto& grid = *form.findChild<DataTable*>(QStringLiteral("DataGrid"));
    grid.selectRow(7);
    form.RemoveRowsFromDataGrid();
    const QList<QByteArray> early = SavedLines();
    EXPECT_EQ(early.size(), 240) << "all but the row taken out, and the header";
    EXPECT_EQ(form.grid().ValueRows(), 49) << "the grid is where it was";
    EXPECT_TRUE(form.paging().isRunning());
    WaitForAll();
    EXPECT_EQ(SavedLines(), early);
    form.RestoreDeletedRows();
    EXPECT_EQ(SavedLines().size(), 241);
    EXPECT_FALSE(form.paging().isRunning());
    EXPECT_EQ(offering.busy, 0);
    EXPECT_EQ(offering.calls.count(QStringLiteral("progress start")),
              offering.calls.count(QStringLiteral("progress end")));
}

/// Presses the button that stops a long piece of work as soon as its window stands.
class StopsWork final : public QObject {
  public:
    StopsWork() { startTimer(1); }
    void timerEvent(QTimerEvent*) override {
        if (auto* window = qobject_cast<WorkProgress*>(QApplication::activeModalWidget())) {
            ++stopped;
            window->findChild<QPushButton*>()->click();
        }
    }
    int stopped = 0;
};

TEST_F(frmDataExportTest, SavingAndPrintingCanBeStoppedAndLeaveEverythingAsItWas) {
    PrepareToPrint();
    FillData(100, 100, 12);
    Show();
    const QString file = JoinPath({Folder(), QStringLiteral("DataView.htm")});
    ASSERT_TRUE(ReplaceFile(file, "old"));
    const QScopedValueRollback<qint64> atOnce(WorkProgress::FirstShown, 0); // a fast machine would be done before
    StopsWork user;
    EXPECT_FALSE(form.SaveDataView(file));
    ASSERT_EQ(user.stopped, 1);
    EXPECT_EQ(ReadWholeFile(file).value_or(QByteArray()), QByteArray("old"));
    EXPECT_EQ(QDir(Folder()).entryList({QStringLiteral("DataView*")}).size(), 1) << "and no half file beside it";
    form.Print();
    EXPECT_EQ(user.stopped, 2);
    EXPECT_TRUE(offering.started.isEmpty()) << "nothing to print is shown";
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_LT(form.grid().ValueRows(), 1000);
    EXPECT_TRUE(form.paging().isRunning());
    EXPECT_EQ(offering.busy, 0);
}

// The entry's work lets events through, and the menu must not go with them.
TEST_F(frmDataExportTest, WorkThatAPopupStartsCanBeStopped) {
    FillData(100, 100, 12);
    Show();
    const QString file = JoinPath({Folder(), QStringLiteral("DataView.txt")});
    SetFileAnswerer([&](const FileQuestion&) { return file; });
    const QScopedValueRollback<qint64> atOnce(WorkProgress::FirstShown, 0);
    StopsWork user;
    for (int time = 1; time <= 2; ++time) {
        Q_EMIT form.findChild<DataTable*>(QStringLiteral("DataGrid"))->customContextMenuRequested({5, 5});
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QAction* save = menu->findChild<QAction*>(QStringLiteral("mnu_popup_Data_View_Options_15"));
        ASSERT_NE(save, nullptr);
        const QPoint entry = menu->actionGeometry(save).center();
        QTest::mouseMove(menu, entry);
        QTest::mouseClick(menu, Qt::LeftButton, {}, entry);
        EXPECT_EQ(user.stopped, time);
    }
    SetFileAnswerer({});
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(form.findChildren<QMenu*>(QStringLiteral("mnu_popup_Data_View_Options")).size(), 1);
}

TEST_F(frmDataExportTest, RowsThatCanNoLongerBeReadAreToldInsteadOfSavedBlank) {
    FillData(2, 60, 2);
    Show();
    Run(QStringLiteral("DROP TABLE Data"));
    const QString file = JoinPath({Folder(), QStringLiteral("DataView.txt")});
    EXPECT_FALSE(form.SaveDataView(file));
    EXPECT_EQ(messages.size(), 1);
    EXPECT_FALSE(FileExists(file));
}

TEST_F(frmDataExportTest, FootnotesGoAlongAlsoThoseOfMissingValues) {
    FillData(1, 2, 1);
    Run(QStringLiteral("UPDATE Data SET Datavalue = Null, FootnoteNId = 7 WHERE IUSNId = 2"));
    ShowFootnotes = true;
    ShowAll();
    auto& grid = *form.findChild<DataTable*>(QStringLiteral("DataGrid"));
    const QModelIndex missing = grid.model()->index(1, ColDatavalue - 1);
    EXPECT_TRUE(missing.data(GridModel::FootnoteRole).toBool());
    EXPECT_EQ(missing.data(Qt::ToolTipRole).toString(), QStringLiteral("Provisional"));
    const QList<QByteArray> lines = SavedLines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].count('\t'), VisibleCols);
    EXPECT_EQ(lines[1], QByteArray("2001\tA0001\tArea 1\tIndicator 1\t101\tPer cent\tTotal\tCensus\t"));
    EXPECT_EQ(lines[2], QByteArray("2001\tA0001\tArea 1\tIndicator 2\t\tPer cent\tTotal\tCensus\tProvisional"));
    ShowFootnotes = false;
    EXPECT_EQ(SavedLines()[0].count('\t'), VisibleCols - 1);
}

TEST_F(frmDataExportTest, AnOrderThatWaitsInItsPanelIsSavedToo) {
    FillData(1, 2, 1);
    Show();
    form.ShowThisDataOption(5);
    const auto list = [this](const char* name) { return form.findChildren<KeyedList*>(QLatin1String(name)).last(); };
    list("lstSelected")->HighlightKey(list("lstSelected")->Items().Items().front().key);
    QTest::keyClick(list("lstSelected"), Qt::Key_Delete);
    list("lstAvailable")->HighlightKey(QStringLiteral("IUS.[Indicator]"));
    QTest::keyClick(list("lstAvailable"), Qt::Key_Return);
    list("lstSelected")->HighlightKey(QStringLiteral("IUS.[Indicator]"));
    form.findChild<QToolButton*>(QStringLiteral("cmdDescending"))->click();
    const QString file = JoinPath({Folder(), QStringLiteral("Ordered.txt")});
    SetFileAnswerer([&](const FileQuestion&) { return file; });
    form.SaveAs();
    SetFileAnswerer({});
    const QList<QByteArray> lines = ReadWholeFile(file).value_or(QByteArray()).split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[1].contains("Indicator 2")) << lines[1].constData();
    EXPECT_TRUE(lines[2].contains("Indicator 1")) << lines[2].constData();
}

TEST_F(frmDataExportTest, PopupsOfThePanelsPrintAndInform) {
    PrepareToPrint();
    FillData(1, 2, 1);
    Show();
    const auto trigger = [this](int option, const char* list, const char* entry) {
        form.ShowThisDataOption(option);
        auto* view = form.findChild<QStackedWidget*>(QStringLiteral("picPanels"))
                         ->currentWidget()
                         ->findChild<KeyedList*>(QLatin1String(list));
        view->HighlightKey(view->Items().Items().front().key);
        Q_EMIT view->PopupRequested(QPoint());
        auto* action = form.findChild<QAction*>(QLatin1String(entry));
        ASSERT_NE(action, nullptr) << entry;
        EXPECT_TRUE(action->isEnabled()) << entry;
        action->trigger();
    };
    messages.clear();
    trigger(2, "lstAvailable", "mnu_popup_Data_Sources_Avl_Options_6");
    EXPECT_EQ(messages, QStringList{QStringLiteral("035")}) << "the source has no information";
    trigger(5, "lstSelected", "mnu_Data_Sort_PopupMenu_Sel_Options_9");
    EXPECT_EQ(offering.started, QStringList{QStringLiteral("DataView Print.xls")});
}

TEST_F(frmDataExportTest, RowsTakenOutOfTheGridAreNotSaved) {
    FillData(1, 5, 1);
    Show();
    WaitForAll();
    auto& grid = *form.findChild<DataTable*>(QStringLiteral("DataGrid"));
    grid.selectRow(1);
    QTest::keyClick(&grid, Qt::Key_Delete);
    const QList<QByteArray> lines = SavedLines();
    ASSERT_EQ(lines.size(), 5);
    for (const QByteArray& line : lines)
        EXPECT_FALSE(line.contains("Indicator 2"));
}

// Every combination of options: what is saved, copied and counted are the rows of a statement written by hand.
TEST_F(frmDataExportTest, WhatLeavesTheViewFollowsEveryOption) {
    enum Bit : unsigned { SourceOut = 1, Range = 2, Recent = 4, RowOut = 8, All = 15 };
    FillData(2, 3, 3);
    Run(QStringLiteral("SELECT TimePeriodNId, TimePeriod INTO TimePeriod FROM _SelTimePeriod"));
    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId = 3 AND TimePeriodNId = 3"));
    auto& grid = *form.findChild<DataTable*>(QStringLiteral("DataGrid"));
    for (unsigned options = 0; options <= All; ++options) {
        SCOPED_TRACE(options);
        Show();
        WaitForAll();
        QString sql = QStringLiteral("SELECT T.TimePeriod, A.AreaID, D.Datavalue FROM Data AS D, _SelTimePeriod AS T, "
                                     "_SelArea AS A WHERE D.TimePeriodNId = T.TimePeriodNId AND D.AreaNId = A.AreaNId");
        if (options & SourceOut) {
            form.ShowThisDataOption(2);
            auto* list = form.findChild<QStackedWidget*>(QStringLiteral("picPanels"))
                             ->currentWidget()
                             ->findChild<KeyedList*>(QStringLiteral("lstSelected"));
            list->HighlightKey(QStringLiteral("IS_2_1"));
            QTest::keyClick(list, Qt::Key_Delete);
            form.ShowThisDataOption(0);
            sql += QStringLiteral(" AND D.IUSNId <> 2");
        }
        form.SetFilters({.MostRecentOn = (options & Recent) != 0,
                         .ValueRangeOn = (options & Range) != 0,
                         .DataValueFrom = 102,
                         .DataValueTo = 202});
        WaitForAll();
        if (options & Range) sql += QStringLiteral(" AND CDbl(D.Datavalue) >= 102 AND CDbl(D.Datavalue) <= 202");
        if (options & Recent)
            sql += QStringLiteral(" AND T.TimePeriod = (SELECT Max(L.TimePeriod) FROM Data AS E, _SelTimePeriod AS L "
                                  "WHERE E.TimePeriodNId = L.TimePeriodNId AND E.IUSNId = D.IUSNId AND E.AreaNId = "
                                  "D.AreaNId)");
        if (options & RowOut) {
            sql += QStringLiteral(" AND D.RowNId <> ") + grid.model()->index(0, ColRowNID - 1).data().toString();
            grid.selectRow(0);
            form.RemoveRowsFromDataGrid();
        }
        QStringList expected;
        for (Records rows = tessaro::Select(sql); !rows.atEnd(); rows.MoveNext())
            expected << rows.Text(std::size_t{0}) + rows.Text(std::size_t{1}) + rows.Text(std::size_t{2});
        EXPECT_GE(expected.size(), 1);
        const QList<QByteArray> lines = SavedLines().mid(1);
        QStringList saved;
        for (const QByteArray& line : lines) {
            const QList<QByteArray> cells = line.split('\t');
            saved << QString::fromUtf8(cells[ColTimePeriod - 1] + cells[ColAreaID - 1] + cells[ColDatavalue - 1]);
        }
        expected.sort();
        saved.sort();
        EXPECT_EQ(saved, expected);
        grid.selectAll();
        form.Copy();
        EXPECT_EQ(QApplication::clipboard()->text().toUtf8(), lines.join('\n'));
        form.ShowThisDataOption(1);
        qsizetype counted = 0;
        for (int row = 0; row < Stats().model()->rowCount(); ++row)
            counted += Stats().model()->index(row, 4).data().toInt();
        EXPECT_EQ(counted, expected.size());
        form.ShowThisDataOption(0);
    }
}

TEST_F(frmDataExportTest, AFailureIsToldAndLeavesTheViewAsItWas) {
    FillData(1, 5, 1);
    Show();
    WaitForAll();
    const QString file = JoinPath({Folder(), QStringLiteral("way.txt")});
    ASSERT_TRUE(QDir().mkpath(file));
    EXPECT_FALSE(form.SaveDataView(file));
    EXPECT_EQ(messages.size(), 1);
    EXPECT_TRUE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("way.txt"));
    EXPECT_EQ(form.grid().MaxRows(), 5);
    EXPECT_EQ(offering.busy, 0);
    EXPECT_EQ(offering.calls.count(QStringLiteral("progress start")),
              offering.calls.count(QStringLiteral("progress end")));
}

TEST_F(frmDataExportTest, ListsTheCalculationsInTheirOrderAndStartsThem) {
    FillData(1, 2, 1);
    Show();
    form.ShowThisDataOption(6);
    QListWidget& list = List("lstCalculate");
    QStringList keys;
    for (int row = 0; row < list.count(); ++row)
        keys << list.item(row)->data(Qt::UserRole).toString();
    EXPECT_EQ(keys, (QStringList{"C0", "C1", "C3", "C5", "C4", "C2"}));
    EXPECT_FALSE(list.item(5)->flags().testFlag(Qt::ItemIsEnabled)) << "not offered by the frame";
    for (int row = 0; row < list.count(); ++row) {
        list.setCurrentRow(row);
        Q_EMIT list.itemActivated(list.item(row));
    }
    EXPECT_EQ(offering.started, (QStringList{"0", "1", "3", "5", "4"}));
    list.setCurrentRow(5);
    form.ShowThisDataOption(6);
    EXPECT_EQ(list.currentRow(), 0) << "what isn't offered isn't chosen";
    offering.calculates = false;
    form.ShowThisDataOption(6);
    EXPECT_EQ(list.currentRow(), -1);
}

TEST_F(frmDataExportTest, ShowsTheThreePresentationsAndStartsThem) {
    FillData(1, 2, 1);
    Show();
    form.ShowThisDataOption(7);
    QListWidget& list = List("picPresentationOptions");
    ASSERT_EQ(list.count(), 3);
    for (int row = 0; row < list.count(); ++row) {
        list.setCurrentRow(row);
        Q_EMIT list.itemActivated(list.item(row));
    }
    EXPECT_EQ(offering.started, (QStringList{"T", "G"})) << "the map is not offered";
}

TEST_F(frmDataExportTest, AnEmptyGridStartsNothing) {
    SelectTimes(1);
    SelectAreas(1);
    SelectIus(1);
    Show();
    messages.clear();
    for (const auto& [option, name] : {std::pair{6, "lstCalculate"}, std::pair{7, "picPresentationOptions"}}) {
        form.ShowThisDataOption(option);
        List(name).setCurrentRow(0);
        Q_EMIT List(name).itemActivated(List(name).item(0));
    }
    form.SaveAs();
    form.Print();
    EXPECT_EQ(messages, (QStringList{"041", "041", "041", "041"}));
    EXPECT_TRUE(offering.started.isEmpty());
}

TEST_F(frmDataExportTest, StatisticsOpenAndCloseByKeyAndAreCopied) {
    FillData(2, 1, 2);
    Show();
    form.ShowThisDataOption(1);
    DataTable& stats = Stats();
    ASSERT_EQ(stats.model()->rowCount(), 1);
    stats.setCurrentIndex(stats.model()->index(0, 3));
    QTest::keyClick(&stats, Qt::Key_Plus);
    EXPECT_EQ(stats.model()->rowCount(), 2);
    QTest::keyClick(&stats, Qt::Key_Minus);
    EXPECT_EQ(stats.model()->rowCount(), 1);
    QTest::keyClick(&stats, Qt::Key_Right);
    stats.setCurrentIndex(stats.model()->index(1, 3));
    QTest::keyClick(&stats, Qt::Key_Right);
    EXPECT_EQ(stats.model()->rowCount(), 3);
    form.SelectAll();
    form.Copy();
    const QStringList lines = QApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 3) << "the rows that are shown";
    EXPECT_TRUE(lines[2].contains(QStringLiteral("Total\t4\t101\t201"))) << lines[2].toStdString();
}

TEST_F(frmDataExportTest, StatisticsFollowRowsTakenOut) {
    FillData(2, 1, 1);
    Show();
    WaitForAll();
    auto& grid = *form.findChild<DataTable*>(QStringLiteral("DataGrid"));
    grid.selectRow(0);
    QTest::keyClick(&grid, Qt::Key_Delete);
    form.ShowThisDataOption(1);
    EXPECT_EQ(Stats().model()->index(0, 4).data().toString(), QStringLiteral("1"));
}

} // namespace

} // namespace tessaro::test
