#include "view/InView.h"

#include "session/Query.h"
#include "support/SelectionTest.h"

namespace tessaro::test {

namespace {

class InViewTest : public SelectionTest {
  protected:
    static QStringList Values(const QString& statement) {
        QStringList values;
        Records rows = Select(statement);
        EXPECT_TRUE(rows.isOpen()) << statement.toStdString();
        for (; !rows.atEnd(); rows.MoveNext())
            values << rows.Text("Datavalue");
        return values;
    }
    /// What pivots read besides: each indicator, unit and subgroup once.
    void FillNameTables() {
        const struct {
            const char* table;
            const char* gId;
            const char* name;
        } tables[] = {{"_Indicator", "IndicatorGId", "[Indicator]"},
                      {"_Unit", "UnitGId", "Unit"},
                      {"_Subpop", "SubpopGId", "Subpop"}};
        for (const auto& t : tables)
            Run(QStringLiteral("SELECT DISTINCT %2, %3 INTO %1 FROM _SelIUSNId")
                    .arg(QLatin1String(t.table), QLatin1String(t.gId), QLatin1String(t.name)));
    }
};

TEST_F(InViewTest, TakesValuesWhosePairOfCombinationAndSourceIsSelectedInOrderOfAreas) {
    SelectTimes(1);
    SelectAreas(2);
    SelectIus(1);
    AddData(1, 2, 1, QStringLiteral("'second area'"));
    AddData(1, 1, 1, QStringLiteral("'first area'"));
    AddData(1, 1, 1, QStringLiteral("'source not selected'"), 2);
    AddData(2, 1, 1, QStringLiteral("'period not selected'"));
    AddData(1, 3, 1, QStringLiteral("'area not selected'"));
    EXPECT_EQ(Values(IdentifierStatement()), (QStringList{"first area", "second area"}));
}

TEST_F(InViewTest, RequeryHonoursWhatWasTakenOutAndTheRowFilter) {
    FillData(1, 3, 1);
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE IUSNId = 2"));
    EXPECT_EQ(Values(RequeryStatement({}, QStringLiteral(" ORDER BY D.DataValue desc"))), (QStringList{"103", "101"}));
    EXPECT_EQ(Values(RequeryStatement(QStringLiteral(" AND D.RowNID not in(1) "), {})), QStringList{"103"});
}

// The statements differ in order and spacing; the rows must not.
TEST_F(InViewTest, EveryJoinGivesTheSameRows) {
    SelectTimes(1);
    SelectAreas(2);
    SelectIus(2);
    FillNameTables();
    AddData(1, 1, 1, QStringLiteral("'in view'"));
    AddData(1, 2, 1, QStringLiteral("'removed one by one'"));
    AddData(1, 1, 1, QStringLiteral("'source not selected'"), 2);
    AddData(1, 1, 2, QStringLiteral("'taken out'"));
    AddData(2, 1, 1, QStringLiteral("'period not selected'"));
    AddData(1, 3, 1, QStringLiteral("'area not selected'"));
    Run(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = True WHERE IUSNId = 2"));
    RowFilter = QStringLiteral(" AND D.RowNID not in(2) ");
    for (const ViewJoin& join :
         {joins::kGrid, joins::kStatistics, joins::kPanelLists, joins::kPivot, joins::kValueCount, joins::kDistinct,
          joins::kDistinctCount, joins::kSharedCells, joins::kValueRanges, joins::kRangeCount}) {
        const QString select = QStringLiteral("SELECT D.Datavalue ");
        EXPECT_EQ(Values(select + InView(join)), QStringList{"in view"}) << join.from;
        EXPECT_EQ(Values(select + QLatin1String(join.from) + QStringLiteral(" WHERE A.AreaNId > 0") + AndInView()),
                  QStringList{"in view"})
            << join.from;
        EXPECT_EQ(Values(select + InView(join, {})).size(), 2) << "without a filter: " << join.from;
    }
}

} // namespace

} // namespace tessaro::test
