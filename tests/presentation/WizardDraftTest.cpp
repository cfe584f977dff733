#include "presentation/WizardDraft.h"

#include <gtest/gtest.h>

namespace tessaro {

namespace {

TableDraft Filled() {
    TableDraft draft;
    draft.arrangement.Place(PivotField::AreaName, Placement::Row);
    draft.arrangement.Place(PivotField::Indicator, Placement::Column);
    draft.arrangement.Place(PivotField::Unit, Placement::Column);
    TableOptions& options = draft.options;
    options.title = QStringLiteral("100 % = a|b\nsecond line \u0639");
    options.titleFont = {QStringLiteral("Noto Sans|x"), 12.5, false, true};
    options.sort = options.addColor = options.sameDecimals = true;
    options.sortColumn = 3;
    options.sortAscending = options.formatTable = false;
    options.ranges.colors[1] = QColor(Qt::blue);
    ColorRanges record;
    record.IndicatorGId = QStringLiteral("a b|%20");
    record.Indicator = QStringLiteral("Life expectancy, years");
    record.MinValue = QStringLiteral("-0.5");
    record.MaxValue = QStringLiteral("1e9");
    record.Method = RangeMethod::EqualSize;
    record.HighIsGood = false;
    record.Decimals = 2;
    record.Ranges[0] = {QStringLiteral("-0.50"), QStringLiteral("7"), 12};
    options.ranges.records = {record, record};
    draft.titleTyped = true;
    return draft;
}

} // namespace

TEST(WizardDraftTest, DraftsComeBackFromTheirLines) {
    for (const TableDraft& draft : {TableDraft(), Filled()}) {
        const auto read = ReadTableDraft(DraftText(draft));
        ASSERT_TRUE(read);
        EXPECT_TRUE(*read == draft) << DraftText(draft).toStdString() << DraftText(*read).toStdString();
    }
    GraphDraft graph;
    graph.arrangement.Place(PivotField::TimePeriod, Placement::Column);
    graph.options.kind = office::ChartKind::Scatter;
    graph.options.sortColumn = 7;
    graph.kindChosen = true;
    const auto read = ReadGraphDraft(DraftText(graph));
    ASSERT_TRUE(read);
    EXPECT_TRUE(*read == graph);
    EXPECT_TRUE(ReadGraphDraft(DraftText(Filled()))) << "lines that only tables have are passed over";
}

TEST(WizardDraftTest, UnreadableLinesGiveNoDraft) {
    for (const char* text : {"title", "=x", "format=maybe", "sort column=-1", "sort column=many", "rows=IUS.Colour",
                             "title font=Arial|big||", "colors=#ffffff", "colors=a|b|c", "ranges=a|b"})
        EXPECT_FALSE(ReadTableDraft(QLatin1String(text))) << text;
    EXPECT_FALSE(ReadGraphDraft(QStringLiteral("kind=donut")));
    EXPECT_TRUE(ReadTableDraft(QStringLiteral("of a later version=1\n\ntitle=x")));
}

} // namespace tessaro
