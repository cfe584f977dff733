#include "presentation/GraphWorkbook.h"

#include "office/ColumnLetters.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "sheets/DataList.h"
#include "sheets/LookRuns.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/ValueCells.h"
#include "view/SourcesAndNotes.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kNamesBelow = 12; ///< names that a legend below the plot has room for
constexpr int kMostNames = 24;  ///< names that a legend beside the plot has room for, in small letters
constexpr double kManyNamesSize = 7;
constexpr QRectF kChartPlace(6, 6, 670, 355); ///< points; what the preview has room for, and a landscape page

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

} // namespace

office::ChartKind DefaultKind(const RowsColumns& arrangement) {
    const RowsColumns::FieldList& along = arrangement.Columns().empty() ? arrangement.Rows() : arrangement.Columns();
    const bool time = std::find(along.begin(), along.end(), PivotField::TimePeriod) != along.end();
    return time ? office::ChartKind::Line : office::ChartKind::Column;
}

GraphWorkbook::GraphWorkbook(office::Workbook book, const PivotTable& table, const GraphSubject& subject,
                             const GraphOptions& options, const WizardProgress& progress)
    : book_(std::move(book)), sheet_(book_.Sheet(kTableSheet)), table_(table), subject_(subject), options_(options),
      progress_(progress), plan_(table, subject, options.kind) {}

QString GraphWorkbook::FirstCellAddress() const {
    return QStringLiteral("$A$%1").arg(HeaderRow);
}

QString GraphWorkbook::LastCellAddress() const {
    return QStringLiteral("$%1$%2").arg(office::ColumnLetters(LastColumn())).arg(LastRow());
}

void GraphWorkbook::Write() {
    book_.ActivateSheet(kTableSheet); // while the chart's sheet is active, it is drawn anew after each setting
    book_.SetColors(kHeaderSlot, QColor(241, 241, 241));
    sheet_.SetName(Plain("Table"));
    const SheetFont font = ListFont();
    MeasureColumns();
    SetUpSheet(sheet_, HeaderRow, FirstValueColumn(), widths_.PagesFor(FirstValueColumn() - 1, font));
    progress_.Label("Filling Data Values");
    WriteTable();
    WriteComments();
    if (options_.formatTable) Format();
    WriteLines();
    widths_.WriteTo(sheet_, font);
    sheet_.Cells(HeaderRow, 1).AutoFitRows();
    SetTallDataRows(sheet_, HeaderRow + 1, LastRow(), LastColumn(), font);
    SetGap(sheet_, 2, HeaderRow - 1);
    AddChart();
    progress_.Label("Setting the Body Font - sheet 2");
    WriteDataList(book_, 3, font);
    WriteSourceSheet(book_.Sheet(4), font);
    book_.ActivateSheet(kChartSheet);
    book_.Save();
}

std::vector<QString> GraphWorkbook::Heads() const {
    std::vector<QString> heads;
    for (const PivotField field : table_.rowFields)
        heads.push_back(CaptionOf(field));
    if (plan_.NeedsLabels()) heads.push_back(Plain("Graph"));
    for (const PivotColumn& column : table_.columns)
        heads.push_back(column.head);
    return heads;
}

std::vector<QString> GraphWorkbook::RowHeads(int row) const {
    const QStringList& texts = table_.rowTexts[static_cast<std::size_t>(row)];
    std::vector<QString> heads(texts.begin(), texts.end());
    if (plan_.NeedsLabels()) heads.push_back(plan_.LabelOf(row));
    return heads;
}

void GraphWorkbook::MeasureColumns() {
    int column = 0;
    for (const QString& head : Heads())
        widths_.AddHead(++column, head);
    for (int row = 0; row < table_.RowCount(); ++row) {
        column = 0;
        for (const QString& text : RowHeads(row))
            widths_.Add(++column, text);
        for (const PivotCell& cell : table_.cells[static_cast<std::size_t>(row)])
            widths_.Add(++column, FiledValue(cell.value));
    }
}

std::vector<office::Cell> GraphWorkbook::ChartHeads() const {
    std::vector<office::Cell> heads(static_cast<std::size_t>(FirstValueColumn() - 1));
    for (int column = 0; column < table_.ColumnCount(); ++column)
        if (plan_.layout() == GraphPlan::Layout::AlongTime)
            heads.emplace_back(plan_.Periods().places[static_cast<std::size_t>(column)]);
        else
            heads.emplace_back(plan_.HeadLabelOf(column));
    return heads;
}

void GraphWorkbook::WriteTitle() {
    office::CellStyle title = ListFont().Style();
    title.bold = true;
    title.fontSize = ListFont().size + 4;
    SetLeading(title);
    sheet_.Cells(1, 1).SetStyle(title);
    sheet_.Cells(1, 1).SetValue(Plain("PRES_Graph"));
    SetTallDataRows(sheet_, 1, 1, 1, {title.fontName.value_or(QString()), *title.fontSize});
}

void GraphWorkbook::WriteTable() {
    WriteTitle();
    office::Block block(1);
    for (const QString& head : Heads())
        block.front().push_back(office::Cell(head));
    if (plan_.layout() == GraphPlan::Layout::AlongTime) {
        const std::vector<office::Cell> places = ChartHeads();
        std::copy(places.end() - table_.ColumnCount(), places.end(), block.front().end() - table_.ColumnCount());
    }
    if (plan_.NeedsHeadLabels()) block.push_back(ChartHeads());
    LookRuns formats;
    for (int row = 0; row < table_.RowCount(); ++row) {
        std::vector<office::Cell> line;
        for (const QString& text : RowHeads(row))
            line.push_back(office::Cell(text));
        for (const PivotCell& cell : table_.cells[static_cast<std::size_t>(row)]) {
            const int column = static_cast<int>(line.size()) + 1;
            if (!cell.value.isEmpty())
                formats.Add(FirstDataRow() + row, column, {.numberFormat = ValueFormat(cell.value)});
            line.push_back(ValueCell(cell.value));
        }
        block.push_back(std::move(line));
    }
    DressTable();
    formats.WriteTo(sheet_);
    SendLooks(sheet_);
    sheet_.Cells(HeaderRow, 1).SetValues(block);
}

void GraphWorkbook::DressTable() {
    const SheetFont font = ListFont();
    office::CellStyle text = font.Style();
    text.numberFormat = QStringLiteral("@");
    SetLeading(text);
    office::CellStyle value = font.Style();
    value.horizontal = office::Align::Right;
    sheet_.Cells(HeaderRow, 1, LastRow(), FirstValueColumn() - 1).SetStyle(text);
    sheet_.Cells(HeaderRow, FirstValueColumn(), LastRow(), LastColumn()).SetStyle(value);
    sheet_.Cells(HeaderRow, FirstValueColumn(), ChartHeadRow(), LastColumn())
        .SetStyle({.numberFormat = text.numberFormat});
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn()).SetStyle({.bold = true, .wrapText = true});
    if (plan_.layout() != GraphPlan::Layout::AlongTime) return;
    // A period that is measured still shows its own text.
    for (int column = 0; column < table_.ColumnCount(); ++column) {
        const QString& period = table_.columns[static_cast<std::size_t>(column)].head;
        sheet_.Cells(HeaderRow, FirstValueColumn() + column)
            .SetStyle({.numberFormat = QLatin1Char('"') + period + QLatin1Char('"')});
    }
}

// A footnote becomes a comment on its cell: the cell has to stay a number, or the chart couldn't draw it.
void GraphWorkbook::WriteComments() {
    QHash<qint64, QString> known;
    for (int row = 0; row < table_.RowCount(); ++row) {
        for (int column = 0; column < table_.ColumnCount(); ++column) {
            const PivotCell& cell = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            if (cell.footnote == 0) continue;
            if (!known.contains(cell.footnote)) known.insert(cell.footnote, FootnoteText(cell.footnote));
            const QString& text = known[cell.footnote];
            if (!text.isEmpty()) sheet_.Cells(FirstDataRow() + row, FirstValueColumn() + column).AddComment(text);
        }
        if (row % 64 == 0) progress_.Child(100 * row / table_.RowCount());
    }
}

void GraphWorkbook::Format() {
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn())
        .SetStyle({.fontColorIndex = kWhiteSlot, .interiorColorIndex = kGraySlot});
    sheet_.Cells(HeaderRow + 1, 1, LastRow(), FirstValueColumn() - 1)
        .SetStyle({.fontColorIndex = kDarkRedSlot, .interiorColorIndex = kHeaderSlot});
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn()).SetBorders(office::EdgeTop, {});
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn())
        .SetBorders(office::EdgeBottom, {office::LineWeight::Medium, office::LineStyle::Continuous, kBlackSlot});
}

void GraphWorkbook::WriteLines() {
    office::CellStyle look = TextFont(ListFont()).Style();
    look.numberFormat = QStringLiteral("@");
    SetLeading(look);
    office::Block block;
    for (const auto& [key, texts] :
         {std::pair("FootNotes", subject_.notes), std::pair("Comm_Source", subject_.sources)}) {
        if (texts.isEmpty()) continue;
        block.push_back({Plain(key)});
        for (const QString& text : texts)
            block.push_back({text});
    }
    if (block.empty()) return;
    const int first = LastRow() + 2;
    sheet_.Cells(first, 1, first + static_cast<int>(block.size()) - 1, 1).SetStyle(look);
    sheet_.Cells(first, 1).SetValues(block);
}

// Texts name points and series; a scatter chart takes the first values as the x coordinates of its points.
office::Chart GraphWorkbook::DrawSeries(office::Worksheet& sheet) const {
    using Layout = GraphPlan::Layout;
    const bool columns = plan_.layout() == Layout::CompareColumns;
    const bool rows = plan_.layout() == Layout::CompareRows;
    const office::Range data =
        sheet_.Cells(rows ? FirstDataRow() : ChartHeadRow(), columns ? FirstValueColumn() : FirstValueColumn() - 1,
                     LastRow(), LastColumn());
    const bool named = !columns && plan_.layout() != Layout::AlongTime;
    office::Chart chart = sheet.AddChart(options_.kind, data, !rows, named, kChartPlace);
    chart.SetSeriesInRows(plan_.SeriesInRows());
    return chart;
}

// Sources and notes stand at the foot of the chart, below the title of the axis that lies there.
void GraphWorkbook::NameAxes(office::Chart& chart) const {
    const QString below = plan_.SourceLines();
    const auto above = [&below](const QString& title) {
        return title.isEmpty() || below.isEmpty() ? title + below : title + QStringLiteral("\n\n") + below;
    };
    if (plan_.Compares())
        chart.SetAxisTitles(above(plan_.VariableOf(0)), plan_.SeriesCount() == 1 ? plan_.VariableOf(1) : QString());
    else if (options_.kind == office::ChartKind::Bar)
        chart.SetAxisTitles({}, above(plan_.ValueAxisTitle()));
    else if (options_.kind != office::ChartKind::Pie)
        chart.SetAxisTitles(below, plan_.ValueAxisTitle());
    if (const std::vector<int> second = plan_.SecondAxisSeries(); !second.empty())
        chart.SetSecondAxis(second, plan_.SecondAxisTitle());
}

void GraphWorkbook::DressChart(office::Chart& chart) const {
    const SheetFont font = ListFont();
    const bool pie = options_.kind == office::ChartKind::Pie;
    const int names = plan_.LegendNames();
    const bool many = names > kNamesBelow;
    chart.SetLegend((names > 1 || pie) && names <= kMostNames, plan_.HasLongNames() && !many);
    chart.SetPlain();
    if (SysNumFormat && plan_.HasLongNumbers()) chart.SetValueFormat(QStringLiteral("#,##0"), plan_.Compares());
    if (plan_.layout() == GraphPlan::Layout::AlongTime && plan_.Periods().dates)
        chart.SetAlongFormat(QStringLiteral("YYYY-MM"));
    chart.SetFont(font.name, font.size);
    if (many) chart.SetLegendFont(font.name, std::min(font.size, kManyNamesSize));
    chart.SetAxisFont(ProductFont.isEmpty() ? font.name : ProductFont,
                      ProductFontSize > 0 ? ProductFontSize : font.size);
}

void GraphWorkbook::AddChart() {
    office::Worksheet sheet = book_.Sheet(kChartSheet);
    sheet.SetName(QStringLiteral("Graph"));
    sheet.SetGridLines(false);
    SetUpSheet(sheet, 0, 1);
    office::Chart chart = DrawSeries(sheet);
    if (options_.kind == office::ChartKind::Area) chart.SetStacked(true);
    if (plan_.Compares()) chart.SetLines(false);
    if (const auto lone = plan_.SeriesWithLonePoints(); options_.kind == office::ChartKind::Line && !lone.empty())
        chart.SetSymbols(lone);
    const bool pie = options_.kind == office::ChartKind::Pie;
    if (pie) chart.SetShares();
    const QString below = plan_.SourceLines();
    chart.SetTitle(pie && !below.isEmpty() ? plan_.Title() + QLatin1Char('\n') + below : plan_.Title());
    NameAxes(chart);
    DressChart(chart);
}

namespace {

ShowOutcome BuildGraph(RowsColumns& arrangement, const GraphOptions& options, const WizardProgress& progress,
                       const MayDraw& mayDraw) {
    PivotTable table;
    ShowOutcome outcome = PrepareTable(WizardKind::Graph, arrangement, table, progress);
    if (outcome.result != ShowResult::Built) return outcome;
    if (options.sort) table.SortRows(options.sortColumn, options.sortAscending);
    const GraphSubject subject = ReadGraphSubject(table);
    const GraphPlan plan(table, subject, options.kind);
    if (plan.layout() == GraphPlan::Layout::Nothing) return {ShowResult::NothingToCompare};
    if (const QString question = plan.Question(); !question.isEmpty() && mayDraw && !mayDraw(question))
        return {ShowResult::GivenUp};
    outcome.SuggestedName = CleanedTitle(plan.Title(), Plain("Graph"));
    const QString stem = CleanedTitle(Plain("PRES_Graph"), Plain("Graph"));
    const auto write = [&](office::Workbook& book) { GraphWorkbook(book, table, subject, options, progress).Write(); };
    return WriteWorkbook({QStringLiteral("GraphTmp.Xls"), stem, table.ValueCount()}, outcome, progress, write);
}

} // namespace

ShowOutcome ShowGraphXLS(RowsColumns& arrangement, const GraphOptions& options, const WizardProgress& progress,
                         const MayDraw& mayDraw) {
    const ErrorTrap trap("ShowXLS");
    try {
        return BuildGraph(arrangement, options, progress, mayDraw);
    } catch (const WorkGivenUp&) {
        return {ShowResult::GivenUp};
    }
}

} // namespace tessaro
