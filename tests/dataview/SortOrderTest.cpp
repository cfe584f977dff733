#include "dataview/SortOrder.h"

#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "support/SelectionTest.h"
#include "view/InView.h"

namespace tessaro::test {

namespace {

class SortOrderTest : public SelectionTest {};

TEST_F(SortOrderTest, ColumnsGiveTheirOrderWithDirections) {
    EXPECT_EQ(OrderByColumns({}), QString());
    EXPECT_EQ(OrderByColumns({{"T.[TimePeriod]", {}, 0, true}, {"IUS.Unit", {}}}),
              QStringLiteral(" ORDER BY  T.[TimePeriod] Desc, IUS.Unit"));
}

TEST_F(SortOrderTest, EveryColumnSortsTheGridsStatement) {
    FillData(2, 2, 2);
    std::vector<KeyedItem> columns = sorting::AvailableColumns();
    EXPECT_EQ(columns.size(), 8U);
    EXPECT_EQ(Select(RequeryStatement({}, OrderByColumns(columns))).rows().RecordCount(), 8);
    for (KeyedItem& column : columns) {
        column.marked = true;
        EXPECT_EQ(Select(RequeryStatement({}, OrderByColumns({column}))).rows().RecordCount(), 8)
            << column.key.toStdString();
    }
}

TEST_F(SortOrderTest, TheFirstColumnDecidesAndTheNextAmongItsEquals) {
    FillData(2, 2, 2);
    QStringList values;
    Records rows = Select(RequeryStatement(
        {}, OrderByColumns({{"A.AreaName", {}, 0, true}, {"T.[TimePeriod]", {}}, {"D.DataValue", {}, 0, true}})));
    for (; !rows.atEnd(); rows.MoveNext())
        values << rows.Text("Datavalue");
    EXPECT_EQ(values, (QStringList{"202", "201", "202", "201", "102", "101", "102", "101"}));
}

} // namespace

} // namespace tessaro::test
