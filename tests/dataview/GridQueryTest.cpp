#include "dataview/GridQuery.h"

#include "session/Query.h"
#include "support/SelectionTest.h"
#include "view/InView.h"

namespace tessaro::test {

namespace {

class GridQueryTest : public SelectionTest {
  protected:
    static QStringList Values(const QString& statement) {
        QStringList values;
        for (Records rows = Select(statement); !rows.atEnd(); rows.MoveNext())
            values << rows.Text("Datavalue");
        return values;
    }
};

TEST_F(GridQueryTest, EveryVisibleColumnSortsBothWays) {
    SelectTimes(2);
    SelectAreas(2);
    SelectIus(2);
    // Whatever is sorted by, 9 belongs to the lower end and 10 to the upper one; as text 10 would come first.
    AddData(1, 1, 1, QStringLiteral("'9'"));
    AddData(2, 2, 2, QStringLiteral("'10'"));
    for (const int column : {ColTimePeriod, ColAreaID, ColAreaName, ColIndicator, ColDatavalue}) {
        EXPECT_EQ(Values(RequeryStatement({}, DataOrderByColumn(column, true))), (QStringList{"9", "10"})) << column;
        EXPECT_EQ(Values(RequeryStatement({}, DataOrderByColumn(column, false))), (QStringList{"10", "9"})) << column;
    }
    for (const int column : {ColUnit, ColSubpop, ColSource})
        EXPECT_EQ(Values(RequeryStatement({}, DataOrderByColumn(column, true))).size(), 2) << column;
}

TEST_F(GridQueryTest, WorkingColumnsHaveNoOrder) {
    for (const int column : {0, static_cast<int>(ColIndicatorGID), static_cast<int>(ColFootNID), 13})
        EXPECT_TRUE(DataOrderByColumn(column, true).isEmpty()) << column;
}

} // namespace

} // namespace tessaro::test
