#include "dataview/DataPaging.h"

#include "dataview/GridQuery.h"
#include "session/Session.h"
#include "support/SelectionTest.h"
#include "view/InView.h"

namespace tessaro::test {

namespace {

class DataPagingTest : public SelectionTest {
  protected:
    DataPagingTest() : paging(grid) {
        paging.onTimer = [this](bool on) { timer = on; };
    }
    bool Start(const QString& sql = IdentifierStatement()) {
        grid.Clear();
        return paging.StartPaging(sql);
    }
    /// Ticks until the load ends by itself; gives the number of ticks.
    int TickToTheEnd() {
        int ticks = 0;
        while (timer && ticks < 10000) {
            paging.PageTick();
            ++ticks;
        }
        return ticks;
    }
    QString Value(int row) const {
        const GridRow* there = grid.RowAt(row);
        return there != nullptr ? there->datavalue : QStringLiteral("none");
    }

    GridModel grid;
    DataPaging paging;
    bool timer = false;
};

TEST_F(DataPagingTest, AnEmptyResultSaysSoAndLeavesTheTimerOff) {
    EXPECT_FALSE(Start());
    EXPECT_EQ(messages, QStringList{"031"});
    EXPECT_FALSE(timer);
    EXPECT_EQ(grid.MaxRows(), 0);
    paging.PageTick();
    EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(DataPagingTest, AFailedStatementShowsNothing) {
    SilentErrors = true;
    EXPECT_FALSE(Start(QStringLiteral("SELECT nonsense FROM nowhere")));
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(timer);
    EXPECT_FALSE(paging.LoadFromEnd());
}

TEST_F(DataPagingTest, TheTopStreamFillsPageByPageAndEndsAtEof) {
    struct Case {
        int ius;
        int ticks; ///< one a page, and one that sees the end
    };
    for (const Case& c : {Case{1, 2}, Case{49, 2}, Case{50, 2}, Case{51, 3}, Case{120, 4}}) {
        Run(QStringLiteral("DELETE * FROM Data"));
        for (const char* table : {"_SelIUSNId", "_SelArea", "_SelTimePeriod"})
            Run(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
        FillData(1, c.ius, 1);
        ASSERT_TRUE(Start());
        paging.PageTick();
        EXPECT_EQ(grid.MaxRows(), std::min(c.ius, 50) + 1) << "rows of a page and the spare one";
        EXPECT_EQ(TickToTheEnd(), c.ticks - 1) << c.ius;
        EXPECT_EQ(grid.MaxRows(), c.ius) << "the spare row is gone";
        EXPECT_EQ(paging.RowsLoaded(), c.ius);
        EXPECT_EQ(paging.TotalRows(), c.ius);
        EXPECT_TRUE(paging.PagingComplete());
        EXPECT_EQ(Value(c.ius - 1), QString::number(100 + c.ius));
    }
}

TEST_F(DataPagingTest, AJumpToTheEndAtOnceFillsFromBothEnds) {
    FillData(3, 10, 8);
    ASSERT_TRUE(Start());
    paging.PageTick();
    ASSERT_TRUE(paging.LoadFromEnd());
    EXPECT_TRUE(paging.TotalKnown());
    EXPECT_EQ(paging.TotalRows(), 240);
    EXPECT_TRUE(timer);
    paging.PageTick();
    EXPECT_TRUE(paging.BottomStarted());
    EXPECT_EQ(grid.ValueRows(), 240);
    EXPECT_TRUE(grid.HasSpareRow());
    EXPECT_EQ(paging.TakenFromBottom(), 50);
    EXPECT_EQ(paging.RowsLoaded(), 100);
    EXPECT_EQ(Value(239), QStringLiteral("310"));
    EXPECT_FALSE(paging.LoadFromEnd()) << "the bottom stream has begun: the key moves the cursor as ever";
    EXPECT_TRUE(timer);

    paging.LoadFromStart();
    EXPECT_TRUE(paging.LoadingFromTop());
    EXPECT_FALSE(paging.LoadingFromBottom());
    paging.PageTick();
    EXPECT_EQ(paging.NextFromTop(), 101);
    EXPECT_EQ(grid.ValueRows(), 240) << "the grid has all rows already";
    EXPECT_EQ(TickToTheEnd(), 3) << "50, the last 40 in the middle, the end";
    EXPECT_EQ(paging.RowsLoaded(), 240);
    EXPECT_EQ(grid.MaxRows(), 240);
    EXPECT_TRUE(paging.PagingComplete());
}

TEST_F(DataPagingTest, TheBottomStreamAloneMeetsTheTop) {
    FillData(3, 10, 4);
    ASSERT_TRUE(Start());
    paging.PageTick();
    ASSERT_TRUE(paging.LoadFromEnd());
    EXPECT_EQ(TickToTheEnd(), 3) << "50, 20, the end";
    EXPECT_EQ(grid.MaxRows(), 120);
    for (int row = 0; row < 120; ++row)
        EXPECT_EQ(grid.RowAt(row)->rowNId, row + 1);
}

TEST_F(DataPagingTest, AJumpToTheEndOfAShortResultEndsTheLoad) {
    FillData(1, 30, 1);
    ASSERT_TRUE(Start());
    paging.PageTick();
    ASSERT_TRUE(paging.LoadFromEnd());
    EXPECT_EQ(TickToTheEnd(), 1);
    EXPECT_EQ(grid.MaxRows(), 30) << "no row of values is taken for the spare one";
    EXPECT_TRUE(paging.PagingComplete());
}

TEST_F(DataPagingTest, AJumpToTheEndBeforeTheFirstPage) {
    FillData(1, 30, 1);
    ASSERT_TRUE(Start());
    ASSERT_TRUE(paging.LoadFromEnd());
    EXPECT_EQ(TickToTheEnd(), 2);
    EXPECT_EQ(grid.MaxRows(), 30);
    EXPECT_EQ(Value(0), QStringLiteral("101"));
}

TEST_F(DataPagingTest, TheMiddleIsShownWhenLookedAtWithoutCountingAsLoaded) {
    FillData(3, 10, 8);
    ASSERT_TRUE(Start());
    paging.PageTick();
    ASSERT_TRUE(paging.LoadFromEnd());
    paging.PageTick();
    EXPECT_EQ(grid.RowAt(120)->rowNId, 121);
    EXPECT_EQ(grid.RowAt(120)->areaName, QStringLiteral("Area 2"));
    EXPECT_EQ(paging.RowsLoaded(), 100);
}

TEST_F(DataPagingTest, EndPagingWithoutRemovingKeepsTheSpareRow) {
    FillData(1, 60, 1);
    ASSERT_TRUE(Start());
    paging.PageTick();
    paging.EndPaging(false);
    EXPECT_FALSE(timer);
    EXPECT_TRUE(grid.HasSpareRow());
    EXPECT_FALSE(paging.PagingComplete());
    paging.EndPaging(true);
    EXPECT_TRUE(paging.PagingComplete());
    EXPECT_EQ(grid.MaxRows(), 50);
}

TEST_F(DataPagingTest, ALoadGoesOnAfterTheStageWasLeft) {
    FillData(1, 60, 1);
    ASSERT_TRUE(Start());
    paging.PageTick();
    paging.Suspend();
    EXPECT_FALSE(timer);
    paging.ResumeTimer();
    EXPECT_TRUE(timer);
    TickToTheEnd();
    EXPECT_EQ(grid.MaxRows(), 60);
    EXPECT_EQ(Value(59), QStringLiteral("160"));
    paging.ResumeTimer();
    EXPECT_FALSE(timer) << "a complete grid needs no ticks";
}

TEST_F(DataPagingTest, AnIdentifierEqualToTheRowBeforeCausesNoLookup) {
    FillData(1, 1, 40);
    ASSERT_TRUE(Start());
    paging.PageTick();
    EXPECT_EQ(paging.lookups(), 40 + 1 + 1 + 1) << "each period, one area, one combination, one source";
}

TEST_F(DataPagingTest, MissingTextsLeaveTheirCellsEmpty) {
    FillData(1, 1, 1);
    Run(QStringLiteral("DELETE * FROM Source"));
    ASSERT_TRUE(Start());
    paging.PageTick();
    const GridRow* row = grid.RowAt(0);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->source, QString());
    EXPECT_EQ(row->indicator, QStringLiteral("Indicator 1"));
    EXPECT_TRUE(TickToTheEnd() > 0);
}

TEST_F(DataPagingTest, LanguageAndScriptOfTextsPassUnchanged) {
    FillData(1, 1, 1);
    Run(QStringLiteral("UPDATE _SelArea SET AreaName = 'Côte d''Ivoire [\"x\"] الجزائر Москва 東京'"));
    ASSERT_TRUE(Start());
    paging.PageTick();
    EXPECT_EQ(grid.RowAt(0)->areaName, QStringLiteral("Côte d'Ivoire [\"x\"] الجزائر Москва 東京"));
}

} // namespace

} // namespace tessaro::test
