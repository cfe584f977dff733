#include "dataview/PageQuery.h"

#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/SelectionTest.h"
#include "view/InView.h"

#include <algorithm>

namespace tessaro::test {

namespace {

class PageQueryTest : public SelectionTest {
  protected:
    static QList<qint64> Numbers(const std::vector<IdentifierRow>& rows) {
        QList<qint64> numbers;
        for (const IdentifierRow& row : rows)
            numbers << row.rowNId;
        return numbers;
    }
    static QList<qint64> From(qint64 first, qint64 last) {
        QList<qint64> numbers;
        for (qint64 n = first; n <= last; ++n)
            numbers << n;
        return numbers;
    }

    PageQuery query;
};

TEST_F(PageQueryTest, AFailingStatementAndAnEmptyResultDoNotOpen) {
    EXPECT_FALSE(query.Open(QStringLiteral("SELECT nonsense FROM nowhere")));
    EXPECT_FALSE(query.isOpen());
    EXPECT_TRUE(query.GetRows(0, 50).empty());
    EXPECT_EQ(query.RecordCount(), 0);

    EXPECT_FALSE(query.Open(IdentifierStatement())) << "nothing is selected";
    EXPECT_TRUE(query.isOpen());
    EXPECT_TRUE(query.AtEnd());
    EXPECT_TRUE(query.GetRows(0, 50).empty());
}

TEST_F(PageQueryTest, StepsNoFurtherThanItIsAsked) {
    FillData(3, 10, 4);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    EXPECT_EQ(Numbers(query.GetRows(0, 50)), From(1, 50));
    EXPECT_EQ(query.RowsPassed(), 50);
    EXPECT_FALSE(query.AtEnd());
    EXPECT_EQ(Numbers(query.GetRows(50, 50)), From(51, 100));
    EXPECT_EQ(Numbers(query.GetRows(100, 50)), From(101, 120)) << "fewer at the end";
    EXPECT_TRUE(query.AtEnd());
}

TEST_F(PageQueryTest, GivesPagesFromAnywhereWithAllIdentifiers) {
    FillData(3, 10, 4);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    qint64 reported = 0;
    EXPECT_EQ(query.RecordCount([&](qint64 rows) {
        reported = rows;
        return true;
    }),
              120);
    EXPECT_EQ(reported, 0) << "a short walk is not worth a report";
    EXPECT_EQ(Numbers(query.GetRows(70, 50)), From(71, 120));
    EXPECT_EQ(Numbers(query.GetRows(0, 2)), From(1, 2));
    EXPECT_TRUE(query.GetRows(120, 50).empty());
    EXPECT_TRUE(query.GetRows(-1, 50).empty());

    const std::vector<IdentifierRow> last = query.GetRows(119, 1);
    ASSERT_EQ(last.size(), 1U);
    EXPECT_EQ(last[0].timePeriodNId, 4);
    EXPECT_EQ(last[0].areaNId, 3);
    EXPECT_EQ(last[0].iusNId, 10);
    EXPECT_EQ(last[0].sourceNId, 1);
    EXPECT_EQ(last[0].datavalue, "310");
}

TEST_F(PageQueryTest, WalksToAPageThatLiesAhead) {
    FillData(3, 10, 4);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    EXPECT_EQ(Numbers(query.GetRows(90, 10)), From(91, 100));
    EXPECT_EQ(Numbers(query.GetRows(85, 10)), From(86, 95)) << "partly passed, partly not, must not matter";
    EXPECT_EQ(Numbers(query.GetRows(95, 10)), From(96, 105));
}

TEST_F(PageQueryTest, KeepsRowsWithoutAValueWhole) {
    FillData(1, 2, 1);
    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId = 2"));
    ASSERT_TRUE(query.Open(QStringLiteral(
        "SELECT T.TimePeriodNId, A.AreaNId, IUS.IUSNId, D.Datavalue, IUS.SourceNId, D.FootnoteNId, D.RowNId FROM "
        "(_SelIUSNId AS IUS LEFT JOIN Data AS D ON IUS.IUSNId = D.IUSNId), _SelArea AS A, _SelTimePeriod AS T ORDER BY "
        "IUS.IUSNId")));
    EXPECT_EQ(query.RecordCount(), 2);
    const std::vector<IdentifierRow> rows = query.GetRows(0, 50);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_TRUE(rows[0].hasRowNId);
    EXPECT_FALSE(rows[1].hasRowNId);
    EXPECT_EQ(rows[1].iusNId, 2);
    EXPECT_EQ(rows[1].areaNId, 1);
    EXPECT_EQ(rows[1].datavalue, "");
}

TEST_F(PageQueryTest, GoesOnAfterASuspensionWithoutRepeatingOrLosingRows) {
    FillData(3, 10, 4);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    (void)query.GetRows(0, 50);
    query.Suspend();
    Run(QStringLiteral("SELECT DISTINCT IUSNId INTO _DataAll FROM Data"));
    Run(QStringLiteral("DROP TABLE _DataAll"));
    EXPECT_EQ(Numbers(query.GetRows(0, 10)), From(1, 10)) << "rows passed need no walk";
    EXPECT_FALSE(query.AtEnd());
    EXPECT_EQ(Numbers(query.GetRows(50, 50)), From(51, 100));
    query.Suspend();
    query.Suspend();
    EXPECT_EQ(query.RecordCount(), 120);
    EXPECT_EQ(Numbers(query.GetRows(100, 50)), From(101, 120));
}

TEST_F(PageQueryTest, GivesEachRowOnceWhenTheyComeInAnotherOrderAfterASuspension) {
    FillData(3, 10, 4);
    for (const char* changed :
         {"UPDATE _SelArea SET AreaID = '0' WHERE AreaNId = 3", "UPDATE _SelArea SET AreaID = '1' WHERE AreaNId = 2"}) {
        ASSERT_TRUE(query.Open(IdentifierStatement()));
        (void)query.GetRows(0, 50);
        query.Suspend();
        Run(QLatin1String(changed));
        EXPECT_EQ(query.RecordCount(), 120) << changed;
        QList<qint64> numbers = Numbers(query.GetRows(0, 120));
        std::ranges::sort(numbers);
        EXPECT_EQ(numbers, From(1, 120)) << changed;
    }
}

TEST_F(PageQueryTest, SurvivesAStatementThatCannotBeRunAgain) {
    FillData(3, 10, 4);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    (void)query.GetRows(0, 50);
    query.Suspend();
    Run(QStringLiteral("DROP TABLE _SelTimePeriod"));
    EXPECT_TRUE(query.AtEnd());
    EXPECT_EQ(query.RecordCount(), 50);
    EXPECT_EQ(Numbers(query.GetRows(0, 2)), From(1, 2));
}

TEST_F(PageQueryTest, AWorkingTableMayBeDroppedWhileTheQueryIsOpen) {
    FillData(3, 10, 4);
    Run(QStringLiteral("SELECT DISTINCT IUSNId INTO _DataAll FROM Data"));
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    (void)query.GetRows(0, 50);
    Run(QStringLiteral("DROP TABLE _DataAll"));
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE IUSNId = 2"));
    EXPECT_EQ(query.RecordCount(), 120);
}

TEST_F(PageQueryTest, ARowDeletedMeanwhileComesBackBlank) {
    FillData(1, 3, 1);
    ASSERT_TRUE(query.Open(IdentifierStatement()));
    (void)query.RecordCount();
    Run(QStringLiteral("DELETE * FROM Data WHERE RowNId = 2"));
    const std::vector<IdentifierRow> rows = query.GetRows(0, 3);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].datavalue, "101");
    EXPECT_EQ(rows[1].datavalue, "");
    EXPECT_EQ(rows[2].datavalue, "103");
}

} // namespace

} // namespace tessaro::test
