#include "presentation/GraphPlan.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using F = PivotField;
using K = office::ChartKind;

/// A table of this size in which every cell holds a value.
PivotTable Table(std::vector<F> rowFields, std::vector<F> columnFields, int rows, int columns,
                 const QString& name = QStringLiteral("Row %1")) {
    PivotTable table;
    table.rowFields = std::move(rowFields);
    table.columnFields = std::move(columnFields);
    for (int column = 0; column < columns; ++column)
        table.columns.push_back({QString::number(1990 + column), {}});
    for (int row = 0; row < rows; ++row) {
        table.rowTexts.push_back(QStringList(static_cast<qsizetype>(table.rowFields.size()), name.arg(row)));
        table.cells.emplace_back(static_cast<std::size_t>(columns), PivotCell{QStringLiteral("12"), 0});
    }
    return table;
}

} // namespace

TEST(GraphPlanTest, TimeRunsAlongTheAxisOfLinesAndTheLongerSideOtherwise) {
    const struct {
        const char* what;
        K kind;
        PivotTable table;
        bool seriesInRows;
        int series;
        int points;
    } cases[] = {
        {"lines, time on the columns", K::Line, Table({F::AreaName}, {F::TimePeriod}, 24, 20), true, 24, 480},
        {"lines, time on the rows", K::Line, Table({F::TimePeriod}, {F::AreaName}, 10, 30), false, 30, 300},
        {"columns, many areas", K::Column, Table({F::AreaName}, {F::TimePeriod}, 24, 3), false, 3, 72},
        {"columns, many years", K::Column, Table({F::AreaName}, {F::TimePeriod}, 3, 24), true, 3, 72},
        {"one column", K::Line, Table({F::AreaName}, {F::TimePeriod}, 24, 1), false, 1, 24},
        {"time on both sides", K::Area, Table({F::TimePeriod}, {F::TimePeriod}, 5, 4), false, 4, 20},
        {"a pie of areas", K::Pie, Table({F::AreaName}, {F::TimePeriod}, 9, 2), false, 1, 9},
        {"a pie of columns", K::Pie, Table({F::AreaName}, {F::Subpop}, 1, 6), true, 1, 6},
    };
    for (const auto& c : cases) {
        const GraphPlan plan(c.table, c.kind);
        EXPECT_EQ(plan.SeriesInRows(), c.seriesInRows) << c.what;
        EXPECT_EQ(plan.SeriesCount(), c.series) << c.what;
        EXPECT_EQ(plan.PointCount(), c.points) << c.what;
        EXPECT_FALSE(plan.IsCrowded()) << c.what;
    }
}

TEST(GraphPlanTest, AScatterChartMeasuresItsAxis) {
    const PivotTable indicators = Table({F::AreaName}, {F::Indicator}, 30, 3);
    const GraphPlan compared(indicators, K::Scatter);
    EXPECT_TRUE(compared.ComparesColumns());
    EXPECT_EQ(compared.SeriesCount(), 2);
    EXPECT_FALSE(compared.NeedsNumbersAlong());
    EXPECT_FALSE(GraphPlan(indicators, K::Column).ComparesColumns());
    const PivotTable years = Table({F::AreaName}, {F::TimePeriod}, 5, 8);
    EXPECT_TRUE(GraphPlan(years, K::Scatter).NeedsNumbersAlong());
    EXPECT_FALSE(GraphPlan(years, K::Scatter).ComparesColumns());
    EXPECT_FALSE(GraphPlan(years, K::Line).NeedsNumbersAlong());
    EXPECT_FALSE(GraphPlan(Table({F::AreaName}, {F::Indicator}, 5, 1), K::Scatter).ComparesColumns());
}

TEST(GraphPlanTest, TellsWhatNobodyCouldRead) {
    EXPECT_FALSE(GraphPlan(Table({F::AreaName}, {F::TimePeriod}, 50, 40), K::Line).IsCrowded());
    EXPECT_TRUE(GraphPlan(Table({F::AreaName}, {F::TimePeriod}, 51, 4), K::Line).IsCrowded());
    EXPECT_TRUE(GraphPlan(Table({F::AreaName}, {F::Indicator}, 201, 10), K::Column).IsCrowded());
    EXPECT_TRUE(GraphPlan(Table({F::AreaName}, {F::Indicator}, 251, 1), K::Column).IsCrowded());
    EXPECT_TRUE(GraphPlan(Table({F::AreaName}, {F::Indicator}, 51, 1), K::Pie).IsCrowded());
    EXPECT_FALSE(GraphPlan(Table({F::AreaName}, {F::Indicator}, 800, 2), K::Scatter).IsCrowded());
}

TEST(GraphPlanTest, LongNamesLoseTheirMiddle) {
    const QString name = QString(120, QLatin1Char('a')) + QStringLiteral(" %1 the end");
    const PivotTable one = Table({F::AreaName}, {F::Indicator}, 2, 1, name);
    const GraphPlan plan(one, K::Column);
    EXPECT_TRUE(plan.NeedsLabels());
    EXPECT_LE(plan.LabelOf(1).size(), 40);
    EXPECT_TRUE(plan.LabelOf(1).endsWith(QStringLiteral("1 the end"))) << plan.LabelOf(1).toStdString();
    PivotTable three = Table({F::AreaID, F::AreaName, F::TimePeriod, F::Source}, {F::Indicator}, 1, 1);
    three.rowTexts = {{QStringLiteral("AFRCOD"), QStringLiteral("Congo, The Democratic Republic of the"),
                       QStringLiteral("2005"), QStringLiteral("World_Ratios from Penn World Table 9.1")}};
    EXPECT_EQ(GraphPlan(three, K::Column).LabelOf(0), QStringLiteral("Congo, The…of the - 2005 - World_Ratio…le 9.1"));
    EXPECT_FALSE(GraphPlan(Table({F::AreaID, F::AreaName}, {F::Indicator}, 2, 1), K::Column).NeedsLabels());
}

} // namespace tessaro
