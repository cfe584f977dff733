#include "presentation/GraphPlan.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

using F = PivotField;
using K = office::ChartKind;
using Layout = GraphPlan::Layout;

const QString kName = QStringLiteral("Row %1");

/// A table of this size in which every cell holds a value; columns are years.
PivotTable Table(std::vector<F> rowFields, std::vector<F> columnFields, int rows, int columns,
                 const QString& name = kName) {
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

/// Two indicators in two areas over some years; only the hours have a unit of their own.
PivotTable TwoByTwo() {
    PivotTable table = Table({F::AreaName, F::Indicator, F::Source}, {F::TimePeriod}, 4, 5);
    table.rowTexts = {{QStringLiteral("France"), QStringLiteral("Income"), QStringLiteral("A long name of a source")},
                      {QStringLiteral("France"), QStringLiteral("Hours"), QStringLiteral("B")},
                      {QStringLiteral("Spain"), QStringLiteral("Income"), QStringLiteral("A long name of a source")},
                      {QStringLiteral("Spain"), QStringLiteral("Hours"), QStringLiteral("B")}};
    return table;
}

GraphSubject Subject() {
    GraphSubject subject;
    subject.indicators = QStringList{QStringLiteral("Hours"), QStringLiteral("Income")};
    subject.units = {{QStringLiteral("Income"), {QStringLiteral("Dollars")}},
                     {QStringLiteral("Hours"), {QStringLiteral("Hours a year")}}};
    return subject;
}

} // namespace

TEST(GraphPlanTest, WhatStandsOnTheXAxisRunsAlongIt) {
    const struct {
        const char* what;
        K kind;
        PivotTable table;
        Layout layout;
        int series;
        int along;
    } cases[] = {
        {"lines along the time", K::Line, Table({F::AreaName}, {F::TimePeriod}, 5, 20), Layout::RowSeries, 5, 20},
        {"few areas along X", K::Line, Table({F::TimePeriod}, {F::AreaName}, 10, 3), Layout::RowSeries, 10, 3},
        {"columns, few years along X", K::Column, Table({F::AreaName}, {F::TimePeriod}, 9, 3), Layout::RowSeries, 9, 3},
        {"one year along X", K::Column, Table({F::AreaName}, {F::TimePeriod}, 7, 1), Layout::RowSeries, 7, 1},
        {"a pie of areas", K::Pie, Table({F::AreaName}, {F::TimePeriod}, 9, 2), Layout::ColumnSeries, 1, 9},
        {"a pie of subpopulations", K::Pie, Table({F::AreaName}, {F::Subpop}, 2, 6), Layout::RowSeries, 1, 6},
        {"a pie of years", K::Pie, Table({F::AreaName}, {F::TimePeriod}, 1, 6), Layout::RowSeries, 1, 6},
    };
    const GraphSubject subject;
    for (const auto& c : cases) {
        const GraphPlan plan(c.table, subject, c.kind);
        EXPECT_EQ(plan.layout(), c.layout) << c.what;
        EXPECT_EQ(plan.SeriesCount(), c.series) << c.what;
        EXPECT_EQ(plan.PointsAlong(), c.along) << c.what;
    }
}

TEST(GraphPlanTest, AScatterChartMeasuresBothAxes) {
    const GraphSubject subject = Subject();
    PivotTable texts = Table({F::AreaName}, {F::TimePeriod}, 5, 2);
    texts.columns[1].head = QStringLiteral("after the war");
    PivotTable indicators = Table({F::Indicator}, {F::AreaName}, 2, 30);
    const struct {
        const char* what;
        PivotTable table;
        Layout layout;
        int series;
    } cases[] = {
        {"indicators on the columns", Table({F::AreaName}, {F::Indicator}, 30, 3), Layout::CompareColumns, 2},
        {"the same with times on the rows", Table({F::TimePeriod}, {F::Indicator}, 30, 2), Layout::CompareColumns, 1},
        {"indicators on the rows", indicators, Layout::CompareRows, 1},
        {"along the time", Table({F::AreaName}, {F::TimePeriod}, 5, 8), Layout::AlongTime, 5},
        {"one time", Table({F::AreaName}, {F::TimePeriod}, 5, 1), Layout::AlongTime, 5},
        {"periods that are none", texts, Layout::CompareColumns, 1},
        {"one column", Table({F::AreaName}, {F::Indicator}, 5, 1), Layout::Nothing, 1},
    };
    for (const auto& c : cases) {
        const GraphPlan plan(c.table, subject, K::Scatter);
        EXPECT_EQ(plan.layout(), c.layout) << c.what;
        EXPECT_EQ(plan.SeriesCount(), c.series) << c.what;
    }
    EXPECT_FALSE(GraphPlan(indicators, subject, K::Column).Compares());
}

TEST(GraphPlanTest, AsksOnlyAboutWhatNobodyCouldRead) {
    const struct {
        const char* what;
        K kind;
        PivotTable table;
        bool asks;
    } cases[] = {
        {"137 years in two lines", K::Line, Table({F::AreaName}, {F::TimePeriod}, 2, 137), false},
        {"as many lines as colours", K::Line, Table({F::AreaName}, {F::TimePeriod}, 12, 60), false},
        {"more lines than colours", K::Line, Table({F::AreaName}, {F::TimePeriod}, 13, 4), true},
        {"many thin columns", K::Column, Table({F::AreaName}, {F::TimePeriod}, 4, 40), true},
        {"lying bars with names", K::Bar, Table({F::Indicator}, {F::AreaName}, 1, 41), true},
        {"standing ones", K::Column, Table({F::Indicator}, {F::AreaName}, 1, 41), false},
        {"more names than fit", K::Line, Table({F::Indicator}, {F::AreaName}, 1, 61), true},
        {"a pie of many slices", K::Pie, Table({F::AreaName}, {F::Indicator}, 13, 1), true},
        {"a pie that hides rows", K::Pie, Table({F::AreaName}, {F::Subpop}, 3, 3), true},
        {"hundreds of compared areas", K::Scatter, Table({F::AreaName}, {F::Indicator}, 800, 2), false},
    };
    const GraphSubject subject;
    for (const auto& c : cases)
        EXPECT_EQ(!GraphPlan(c.table, subject, c.kind).Doubts().empty(), c.asks) << c.what;
}

TEST(GraphPlanTest, TwoUnitsGetTwoAxesOfLinesAndAQuestionElsewhere) {
    const PivotTable table = TwoByTwo();
    const GraphSubject subject = Subject();
    const GraphPlan lines(table, subject, K::Line);
    EXPECT_EQ(lines.SecondAxisSeries(), (std::vector<int>{2, 4}));
    EXPECT_EQ(lines.ValueAxisTitle(), QStringLiteral("Dollars"));
    EXPECT_EQ(lines.SecondAxisTitle(), QStringLiteral("Hours a year"));
    EXPECT_TRUE(lines.Doubts().empty());
    const GraphPlan columns(table, subject, K::Column);
    EXPECT_TRUE(columns.SecondAxisSeries().empty());
    EXPECT_EQ(columns.ValueAxisTitle(), QStringLiteral("Dollars, Hours a year"));
    EXPECT_EQ(columns.Doubts(), (std::vector{GraphPlan::Doubt::SeveralUnits}));
    PivotTable along = Table({F::AreaName}, {F::Indicator}, 2, 2);
    along.columns = {{QStringLiteral("Income"), QStringLiteral("Income")},
                     {QStringLiteral("Hours"), QStringLiteral("Hours")}};
    const GraphPlan mixed(along, subject, K::Line); // each line has both units
    EXPECT_TRUE(mixed.SecondAxisSeries().empty());
    EXPECT_EQ(mixed.Doubts(), (std::vector{GraphPlan::Doubt::SeveralUnits}));
    EXPECT_EQ(GraphPlan(along, subject, K::Scatter).VariableOf(1), QStringLiteral("Hours (Hours a year)"));
}

TEST(GraphPlanTest, LabelsTellSeriesApartAndNoMore) {
    const PivotTable table = TwoByTwo();
    const GraphSubject subject = Subject();
    EXPECT_EQ(GraphPlan(table, subject, K::Line).LabelOf(3), QStringLiteral("Spain - Hours"));
    PivotTable two = table;
    two.rowTexts[1] = {QStringLiteral("France"), QStringLiteral("Income"), QStringLiteral("B")};
    EXPECT_EQ(GraphPlan(two, subject, K::Line).LabelOf(1), QStringLiteral("France - Income - B")); // needed here
    EXPECT_FALSE(GraphPlan(Table({F::AreaID, F::AreaName}, {F::Indicator}, 2, 1), subject, K::Column).NeedsLabels());
    const QString name = QString(120, QLatin1Char('a')) + QStringLiteral(" %1 the end");
    const PivotTable one = Table({F::AreaName}, {F::Indicator}, 2, 1, name);
    const GraphPlan plan(one, subject, K::Column);
    EXPECT_TRUE(plan.NeedsLabels());
    EXPECT_LE(plan.LabelOf(1).size(), 40);
    EXPECT_TRUE(plan.LabelOf(1).endsWith(QStringLiteral("1 the end"))) << plan.LabelOf(1).toStdString();
}

TEST(GraphPlanTest, LongHeadsAreShortenedByTheRoomThatTheyHave) {
    const GraphSubject subject;
    for (const int columns : {2, 10, 30}) {
        PivotTable table = Table({F::Indicator}, {F::AreaName}, 1, columns);
        EXPECT_FALSE(GraphPlan(table, subject, K::Column).NeedsHeadLabels());
        for (PivotColumn& column : table.columns)
            column.head = QStringLiteral("Congo, The Democratic Republic of the ") + column.head;
        const GraphPlan plan(table, subject, K::Column);
        EXPECT_TRUE(plan.NeedsHeadLabels());
        EXPECT_LE(plan.HeadLabelOf(0).size(), columns == 2 ? 40 : 20) << columns;
        EXPECT_NE(plan.HeadLabelOf(0), plan.HeadLabelOf(1)) << columns;
    }
}

TEST(GraphPlanTest, TitlesNameTheIndicatorsAndNothingTwice) {
    const PivotTable table = Table({F::AreaName}, {F::TimePeriod}, 2, 2);
    GraphSubject subject = Subject();
    EXPECT_EQ(GraphPlan(table, subject, K::Line).Title(), QStringLiteral("Hours, Income"));
    subject.time = QStringLiteral("2015");
    subject.subpop = QStringLiteral("Female");
    subject.area = QStringLiteral("Spain");
    EXPECT_EQ(GraphPlan(table, subject, K::Line).Title(), QStringLiteral("Hours, Income, Female, Spain, 2015"));
    PivotTable pie = Table({F::AreaName}, {F::TimePeriod}, 3, 1);
    pie.columns.front().head = QStringLiteral("2015");
    EXPECT_EQ(GraphPlan(pie, subject, K::Pie).Title().count(QStringLiteral("2015")), 1);
    PivotTable slices = Table({F::Indicator}, {F::AreaName}, 2, 3);
    slices.rowTexts = {{QStringLiteral("Hours")}, {QStringLiteral("Income")}};
    EXPECT_FALSE(GraphPlan(slices, subject, K::Pie).Title().contains(QStringLiteral("Income"))); // which isn't shown
    subject.indicators << QStringLiteral("Third") << QStringLiteral("Fourth");
    EXPECT_EQ(GraphPlan(table, subject, K::Line).Title(), QStringLiteral("Hours, Income, \u2026, Female, Spain, 2015"));
}

TEST(GraphPlanTest, ValuesBetweenMissingOnesAreFound) {
    PivotTable table = Table({F::AreaName}, {F::TimePeriod}, 3, 4);
    for (const auto& [row, column] : {std::pair(0, 1), std::pair(0, 2), std::pair(2, 1)})
        table.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value.clear();
    const GraphSubject subject;
    EXPECT_EQ(GraphPlan(table, subject, K::Line).SeriesWithLonePoints(), (std::vector<int>{1, 3}));
}

TEST(PeriodPlacesTest, PeriodsStandAtTheirMiddle) {
    const auto years =
        MeasurePeriods({QStringLiteral("1999"), QStringLiteral("2001-2003"), QStringLiteral("1851-2004")});
    ASSERT_TRUE(years);
    EXPECT_FALSE(years->dates);
    EXPECT_EQ(years->places, (std::vector<double>{1999, 2002, 1927.5}));
    const auto months = MeasurePeriods({QStringLiteral("2000.1"), QStringLiteral("2000.02"), QStringLiteral("2000.10"),
                                        QStringLiteral("2000.12.31"), QStringLiteral("2000.10-2000.11")});
    ASSERT_TRUE(months);
    EXPECT_TRUE(months->dates);
    // 1 January 2000 is day 36526 of sheets; the year has 366 days.
    EXPECT_EQ(months->places, (std::vector<double>{36541.5, 36571.5, 36815.5, 36891.5, 36830.5}));
    const auto early = MeasurePeriods({QStringLiteral("1850.07"), QStringLiteral("1851")});
    ASSERT_TRUE(early);
    EXPECT_FALSE(early->dates);
    EXPECT_NEAR(early->places.front(), 1850.54, 0.01);
    for (const char* wrong : {"", "after the war", "2000.13", "2000.02.30", "2003-2001", "2000-10", "1-2-3", "20000"})
        EXPECT_FALSE(MeasurePeriods({QStringLiteral("2000"), QLatin1String(wrong)})) << wrong;
}

} // namespace tessaro
