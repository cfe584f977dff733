#include "selection/SheetStatement.h"

#include "selection/SelectionDatabase.h"
#include "selection/SelectionSheet.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <QFile>

namespace tessaro::test {
namespace {

class SheetStatementTest : public SelectionDatabaseTest {
  protected:
    /// The rows as "a/b/c | d/e/f".
    static std::string Rows(const std::vector<KeyedItem>& list, int view, bool byCombination) {
        QStringList lines;
        for (const QStringList& row : selection::IndicatorTable(list, view, byCombination).rows)
            lines << row.join(QLatin1Char('/'));
        return lines.join(QStringLiteral(" | ")).toStdString();
    }
};

TEST_F(SheetStatementTest, ReadsEveryViewByCombination) {
    ChooseIus(QStringLiteral("1,2,3,4"));
    const std::vector<KeyedItem> all{{QStringLiteral("I1"), {}, 0},
                                     {QStringLiteral("I2"), {}, 0},
                                     {QStringLiteral("I3"), {}, 0},
                                     {QStringLiteral("I4"), {}, 0}};
    const struct {
        int view;
        const char* rows;
    } cases[] = {
        {1, "Goal 1/Target a/Measure 1/Population/Number/Total | Goal 1/Target a/Measure 2/Колодцы/Number/Total"},
        {2, "Demand/Children's \"school\" [rate]/Per cent/Total"},
        {3, "Women's lives/Children's \"school\" [rate]/Per cent/Total"},
        {5, "Ministry/Office/Population/Number/Total"},
        {6, "Convention/Part/Article/Population/Number/Girls' [0-4]"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Rows(all, c.view, true), c.rows) << "view " << c.view;
    EXPECT_EQ(Rows({{QStringLiteral("I3"), {}, 0}}, 0, true),
              "Economy/People/Children's \"school\" [rate]/Per cent/Total | Society/People/Children's \"school\" "
              "[rate]/Per cent/Total");
    EXPECT_EQ(Rows({{QStringLiteral("I1"), {}, 0}}, 4, true),
              "Asia/Census/Population/Number/Total | Asia/Survey \"x\"/Population/Number/Total");
    EXPECT_EQ(Rows({{QStringLiteral("I5"), {}, 0}}, 4, true), "") << "not chosen, so not in the selection";
}

TEST_F(SheetStatementTest, ReadsEveryViewByIndicator) {
    IndicatorSelectBy = 0;
    const std::vector<KeyedItem> all{
        {QStringLiteral("I-I1"), {}, 0}, {QStringLiteral("I-I2"), {}, 0}, {QStringLiteral("IL3"), {}, 0}};
    const struct {
        int view;
        const char* rows;
    } cases[] = {
        {1, ""}, // refused, see below
        {2, "Demand/Children's \"school\" [rate]"},
        {3, "Women's lives/Children's \"school\" [rate]"},
        {5, "Ministry/Office/Population"},
        {6, "Convention/Part/Article/Population"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Rows(all, c.view, false), c.rows) << "view " << c.view;
    EXPECT_EQ(Rows({all[2]}, 0, false), "Society/Water/Колодцы");
    EXPECT_EQ(Rows({all[0]}, 4, false), "Asia/Census/Population | Asia/Survey \"x\"/Population");
}

TEST_F(SheetStatementTest, TheGoalsOfIndicatorsAreRefusedAndLogged) {
    IndicatorSelectBy = 0;
    const QString sql = selection::SheetStatement(1, false, QStringLiteral("'-I1'"));
    EXPECT_TRUE(sql.startsWith(QStringLiteral(
        "SELECT DISTINCTROW GL1.GoalLabel1, GL2.GoalLabel2, GL3.GoalLabel3, I.[Indicator], , GL1.GoalLabel1GId, "
        "GL2.GoalLabel2GId, GL3.GoalLabel3GId, I.IndicatorGId")))
        << sql.toStdString();
    const selection::SheetTable table = selection::IndicatorTable({{QStringLiteral("I-I1"), {}, 0}}, 1, false);
    EXPECT_EQ(table.heads.size(), 4);
    EXPECT_TRUE(table.rows.empty());
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_FALSE(log.readAll().isEmpty());
}

TEST_F(SheetStatementTest, AnEmptyListAsksNothing) {
    Connection.reset(); // a statement would fail and be logged
    EXPECT_TRUE(selection::IndicatorTable({}, 0, true).rows.empty());
    EXPECT_FALSE(QFile::exists(LogFile()));
}

TEST_F(SheetStatementTest, TellsWhichCellsAreShared) {
    ChooseIus(QStringLiteral("3"));
    const selection::SheetTable table = selection::IndicatorTable({{QStringLiteral("I3"), {}, 0}}, 0, true);
    ASSERT_EQ(table.globalCells.size(), 2U);
    EXPECT_EQ(table.globalCells[0], 0b10111U) << "sector, class, indicator and subpopulation; the unit is local";
    const selection::SheetTable areas =
        selection::AreaTable({{QStringLiteral("A3"), {QStringLiteral("Name"), QStringLiteral("00ID")}, 0},
                              {QStringLiteral("A1"), {QStringLiteral("Asia"), QStringLiteral("ASI")}, 3}});
    EXPECT_EQ(areas.rows[0], (QStringList{QStringLiteral("00ID"), QStringLiteral("Name")}));
    EXPECT_EQ(areas.globalCells[0], 0U);
    EXPECT_EQ(areas.globalCells[1] & 3U, 3U);
}

} // namespace
} // namespace tessaro::test
