#include "controls/DataTable.h"
#include "dataview/DataScreen.h"
#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

namespace tessaro::test {

namespace {

class frmDataTest : public DataScreenTest {
  protected:
    DataTable& Grid() { return *form.findChild<DataTable*>(QStringLiteral("DataGrid")); }
    void ClickHead(int column) {
        QHeaderView* head = Grid().horizontalHeader();
        const QPoint place(head->sectionViewportPosition(column - 1) + 20, head->height() / 2);
        QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    }
    QString Cell(int row, int column) { return Grid().model()->index(row, column - 1).data().toString(); }
};

TEST_F(frmDataTest, ShowsTheFirstPageAtOnceAndTheRestByTheTimer) {
    FillData(3, 10, 4);
    Show();
    EXPECT_FALSE(SelectionChanged);
    EXPECT_EQ(form.grid().ValueRows(), 50);
    EXPECT_EQ(Cell(0, ColIndicator), QStringLiteral("Indicator 1"));
    EXPECT_FALSE(Grid().isColumnHidden(ColSource - 1));
    EXPECT_TRUE(Grid().isColumnHidden(ColIndicatorGID - 1));
    WaitForAll();
    EXPECT_EQ(form.grid().MaxRows(), 120);
    EXPECT_EQ(frame.busy, 0);
}

TEST_F(frmDataTest, TheGuardNamesTheStageThatIsMissing) {
    struct Case {
        const char* emptied;
        const char* message;
        const char* stage;
    };
    FillData(1, 1, 1);
    for (const Case& c : {Case{"_SelArea", "023", "stage 2"}, Case{"_SelTimePeriod", "024", "stage 1"},
                          Case{"_SelIUSNId", "016", "stage 0"}}) {
        Run(QStringLiteral("DELETE * FROM ") + QLatin1String(c.emptied));
        messages.clear();
        frame.calls.clear();
        EXPECT_FALSE(form.MakeQryForTheGrid());
        EXPECT_EQ(messages, QStringList{QLatin1String(c.message)});
        EXPECT_TRUE(frame.calls.contains(QLatin1String(c.stage)));
    }
}

TEST_F(frmDataTest, AnEmptyResultShowsItsMessageAndAnEmptyGrid) {
    SelectTimes(1);
    SelectAreas(1);
    SelectIus(1);
    Show();
    EXPECT_EQ(messages, QStringList{"031"});
    EXPECT_EQ(form.grid().MaxRows(), 0);
    EXPECT_FALSE(form.paging().isRunning());
}

TEST_F(frmDataTest, ARebuildForgetsWhatWasTakenOut) {
    FillData(1, 2, 1);
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE IUSNId = 1"));
    RowFilter = QStringLiteral(" AND D.RowNID not in(1) ");
    DeletedRowNIds = QStringLiteral("1");
    MostRecentClause = QStringLiteral(" AND D.RowNId in (1) ");
    Show();
    EXPECT_TRUE(RowFilter.isEmpty());
    EXPECT_TRUE(DeletedRowNIds.isEmpty());
    EXPECT_TRUE(MostRecentClause.isEmpty());
    EXPECT_TRUE(Select(QStringLiteral("SELECT IUSNId FROM _SelIUSNId WHERE Deleted = True")).isEmpty());
    EXPECT_EQ(form.grid().ValueRows(), 2);
}

TEST_F(frmDataTest, WithoutAChangeOfSelectionTheGridStays) {
    FillData(1, 60, 1);
    Show();
    WaitForAll();
    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId > 1"));
    EXPECT_TRUE(bDataChanged);
    bDataChanged = false; // a calculation has taken the data over
    form.Leave();
    form.Enter();
    EXPECT_EQ(form.grid().MaxRows(), 60);
    EXPECT_FALSE(bDataChanged);
    SelectionChanged = true;
    form.Enter();
    EXPECT_EQ(form.grid().ValueRows(), 1);
    EXPECT_TRUE(bDataChanged);
}

TEST_F(frmDataTest, LeavingStopsTheTimerAndComingBackGoesOn) {
    FillData(2, 60, 2);
    Show();
    form.Leave();
    QTest::qWait(250);
    EXPECT_EQ(form.paging().RowsLoaded(), 50);
    form.Enter();
    WaitForAll();
    EXPECT_EQ(form.grid().MaxRows(), 240);
}

TEST_F(frmDataTest, ControlEndShowsTheLastRowAndControlHomeTheFirst) {
    FillData(10, 20, 10);
    Show();
    QTest::keyClick(&Grid(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(form.paging().BottomStarted());
    EXPECT_EQ(form.grid().ValueRows(), 2000);
    EXPECT_EQ(Grid().currentIndex().row(), 1999);
    EXPECT_EQ(Grid().LastVisibleRow(), 1999);
    EXPECT_EQ(Cell(1999, ColDatavalue), QStringLiteral("1020"));
    QTest::keyClick(&Grid(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_TRUE(form.paging().LoadingFromTop());
    EXPECT_EQ(Grid().currentIndex().row(), 0);
    EXPECT_EQ(Cell(1000, ColAreaName), QStringLiteral("Area 6")) << "the middle shows as soon as it is looked at";
}

TEST_F(frmDataTest, ScrollingToTheEndOfTheLoadedRowsBringsTheNextPage) {
    FillData(10, 20, 10);
    Show();
    const qint64 before = form.paging().RowsLoaded();
    Grid().verticalScrollBar()->setValue(Grid().verticalScrollBar()->maximum());
    EXPECT_EQ(form.paging().RowsLoaded(), before + 50);
}

TEST_F(frmDataTest, AHeadClickSortsACompleteGridWithoutTheDatabase) {
    FillData(3, 10, 2);
    Show();
    WaitForAll();
    const auto before = Connection->cacheCounts();
    ClickHead(ColAreaID);
    EXPECT_TRUE(form.paging().PagingComplete());
    EXPECT_EQ(Cell(0, ColAreaID), QStringLiteral("A0001"));
    ClickHead(ColAreaID);
    EXPECT_EQ(Cell(0, ColAreaID), QStringLiteral("A0003")) << "a second click turns the order";
    EXPECT_EQ(Grid().horizontalHeader()->sortIndicatorSection(), ColAreaID - 1);
    EXPECT_EQ(Grid().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    ClickHead(ColTimePeriod);
    EXPECT_EQ(Cell(0, ColTimePeriod), QStringLiteral("2001")) << "another column begins ascending";
    const auto after = Connection->cacheCounts();
    EXPECT_EQ(before.translated + before.reused, after.translated + after.reused);
}

TEST_F(frmDataTest, TheValueColumnAlwaysRequeriesAndSortsByNumber) {
    SelectTimes(1);
    SelectAreas(1);
    SelectIus(3);
    AddData(1, 1, 1, QStringLiteral("'10'"));
    AddData(1, 1, 2, QStringLiteral("'9'"));
    AddData(1, 1, 3, QStringLiteral("Null"));
    Show();
    WaitForAll();
    ClickHead(ColDatavalue);
    EXPECT_FALSE(form.paging().PagingComplete()) << "a new load has begun";
    WaitForAll();
    EXPECT_EQ(Cell(0, ColDatavalue), QString()) << "Null comes first";
    EXPECT_EQ(Cell(1, ColDatavalue), QStringLiteral("9"));
    EXPECT_EQ(Cell(2, ColDatavalue), QStringLiteral("10"));
}

TEST_F(frmDataTest, ASortBeforeTheLoadHasEndedRequeries) {
    FillData(10, 20, 2);
    Show();
    ClickHead(ColAreaName);
    ClickHead(ColAreaName);
    EXPECT_EQ(Cell(0, ColAreaName), QStringLiteral("Area 9")) << "of all areas, not of those loaded";
    WaitForAll();
    EXPECT_EQ(form.grid().MaxRows(), 400);
}

TEST_F(frmDataTest, CopiesTheChosenCellsTabSeparatedWithoutTheWorkingColumns) {
    FillData(1, 2, 1);
    Show();
    WaitForAll();
    QTest::keyClick(&Grid(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("2001\tA0001\tArea 1\tIndicator 1\t101\tPer cent\tTotal\tCensus\n"
                             "2001\tA0001\tArea 1\tIndicator 2\t102\tPer cent\tTotal\tCensus"));
    Grid().selectionModel()->select(Grid().model()->index(1, ColDatavalue - 1), QItemSelectionModel::ClearAndSelect);
    form.Copy();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("102"));
}

TEST_F(frmDataTest, ColumnsFitTheWindowAtFirstAndThenKeepTheUsersWidths) {
    FillData(1, 1, 1);
    Show();
    EXPECT_EQ(Grid().horizontalScrollBar()->maximum(), 0);
    Grid().setColumnWidth(ColIndicator - 1, 77);
    form.Enter();
    EXPECT_EQ(Grid().columnWidth(ColIndicator - 1), 77);
}

TEST_F(frmDataTest, PreferencesReachTheGrid) {
    FillData(1, 1, 1);
    ViewGridLines = true;
    RightToLeft = true;
    Show();
    EXPECT_TRUE(Grid().showGrid());
    EXPECT_EQ(Grid().layoutDirection(), Qt::RightToLeft);
    ViewGridLines = false;
    RightToLeft = false;
    form.Enter();
    EXPECT_FALSE(Grid().showGrid());
    EXPECT_EQ(Grid().layoutDirection(), Qt::LeftToRight);
}

} // namespace

} // namespace tessaro::test
