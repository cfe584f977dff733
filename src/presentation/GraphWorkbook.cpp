#include "presentation/GraphWorkbook.h"

#include "controls/SheetLook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kWhite = 2;
constexpr int kDarkRed = 9;
constexpr int kGray = 16;
constexpr double kGapHeight = 5; ///< points, of the empty rows below the title
constexpr int kNamesBelow = 12;  ///< names that a legend below the plot has room for
constexpr double kManyNamesSize = 7;
constexpr QRectF kChartPlace(6, 6, 670, 355); ///< points; what the preview has room for, and a landscape page

QString Plain(const char* key) {
    return GetText(QLatin1String(key)).remove(QLatin1Char('&'));
}

/// The font of the data: the graph's options page has no font of its own.
TableFont DataFont() {
    const office::CellStyle font = SheetFont();
    return {font.fontName.value_or(QString()), font.fontSize.value_or(10), font.bold.value_or(false),
            font.italic.value_or(false)};
}

} // namespace

office::ChartKind DefaultKind(const RowsColumns& arrangement) {
    const RowsColumns::FieldList& along = arrangement.Columns().empty() ? arrangement.Rows() : arrangement.Columns();
    const bool time = std::find(along.begin(), along.end(), PivotField::TimePeriod) != along.end();
    return time ? office::ChartKind::Line : office::ChartKind::Column;
}

GraphWorkbook::GraphWorkbook(office::Workbook book, const PivotTable& table, const GraphOptions& options,
                             const WizardProgress& progress)
    : book_(std::move(book)), sheet_(book_.Sheet(TableSheet)), table_(table), options_(options), progress_(progress),
      plan_(table, options.kind) {}

QString GraphWorkbook::FirstCellAddress() const {
    return QStringLiteral("$A$%1").arg(HeaderRow);
}

QString GraphWorkbook::LastCellAddress() const {
    return QStringLiteral("$%1$%2").arg(office::ColumnLetters(LastColumn())).arg(LastRow());
}

void GraphWorkbook::Write() {
    book_.ActivateSheet(TableSheet); // the chart's sheet would be drawn at each of its settings
    book_.SetColors(RowHeadSlot, QColor(241, 241, 241));
    sheet_.SetName(Plain("Table"));
    const TableFont font = DataFont();
    MeasureColumns();
    SetUpSheet(sheet_, HeaderRow, FirstValueColumn(), widths_.PagesFor(FirstValueColumn() - 1, font));
    progress_.Label("Filling Data Values");
    WriteTable();
    WriteComments();
    if (options_.formatTable) Format();
    widths_.WriteTo(sheet_, font);
    sheet_.Cells(HeaderRow, 1).AutoFitRows();
    SetTallRows(sheet_, HeaderRow + 1, LastRow(), LastColumn(), font);
    for (int row = 2; row < HeaderRow; ++row)
        sheet_.SetRowHeight(row, kGapHeight);
    AddChart();
    progress_.Label("Setting the Body Font - sheet 2");
    WriteDataList(book_, 3, font);
    WriteSourceSheet(book_.Sheet(4), font);
    book_.ActivateSheet(ChartSheet);
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
            widths_.Add(++column, DisplayedValue(cell.value));
    }
}

office::Cell GraphWorkbook::HeadCell(const QString& text) const {
    return plan_.NeedsNumbersAlong() ? ValueCell(text) : office::Cell(text);
}

void GraphWorkbook::WriteTitle() {
    office::CellStyle title = DataFont().Style();
    title.bold = true;
    title.fontSize = DataFont().size + 4;
    SetLeading(title);
    sheet_.Cells(1, 1).SetStyle(title);
    sheet_.Cells(1, 1).SetValue(Plain("PRES_Graph"));
    SetTallRows(sheet_, 1, 1, 1, {title.fontName.value_or(QString()), *title.fontSize});
}

void GraphWorkbook::WriteTable() {
    WriteTitle();
    office::Block block(1);
    for (const QString& head : Heads())
        block.front().push_back(plan_.SeriesInRows() ? HeadCell(head) : office::Cell(head));
    LookCollector formats;
    for (int row = 0; row < table_.RowCount(); ++row) {
        std::vector<office::Cell> line;
        for (const QString& text : RowHeads(row))
            line.push_back(plan_.SeriesInRows() ? office::Cell(text) : HeadCell(text));
        for (const PivotCell& cell : table_.cells[static_cast<std::size_t>(row)]) {
            const int column = static_cast<int>(line.size()) + 1;
            if (!cell.value.isEmpty())
                formats.Add(HeaderRow + 1 + row, column, {.numberFormat = ValueFormat(cell.value)});
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
    const TableFont font = DataFont();
    office::CellStyle text = font.Style();
    text.numberFormat = plan_.NeedsNumbersAlong() ? QStringLiteral("General") : QStringLiteral("@");
    SetLeading(text);
    office::CellStyle value = font.Style();
    value.horizontal = office::Align::Right;
    sheet_.Cells(HeaderRow, 1, LastRow(), FirstValueColumn() - 1).SetStyle(text);
    sheet_.Cells(HeaderRow, FirstValueColumn(), LastRow(), LastColumn()).SetStyle(value);
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn()).SetStyle({.bold = true, .wrapText = true});
}

// A footnote goes on its cell, whose number stays one that can be drawn.
void GraphWorkbook::WriteComments() {
    QHash<qint64, QString> known;
    for (int row = 0; row < table_.RowCount(); ++row) {
        for (int column = 0; column < table_.ColumnCount(); ++column) {
            const PivotCell& cell = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            if (cell.footnote == 0 || cell.value.isEmpty()) continue;
            if (!known.contains(cell.footnote)) known.insert(cell.footnote, FootnoteText(cell.footnote));
            const QString& text = known[cell.footnote];
            if (!text.isEmpty()) sheet_.Cells(HeaderRow + 1 + row, FirstValueColumn() + column).AddComment(text);
        }
        if (row % 64 == 0) progress_.Child(100 * row / table_.RowCount());
    }
}

void GraphWorkbook::Format() {
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn())
        .SetStyle({.fontColorIndex = kWhite, .interiorColorIndex = kGray});
    sheet_.Cells(HeaderRow + 1, 1, LastRow(), FirstValueColumn() - 1)
        .SetStyle({.fontColorIndex = kDarkRed, .interiorColorIndex = RowHeadSlot});
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn()).SetBorders(office::EdgeTop, {});
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn())
        .SetBorders(office::EdgeBottom, {office::LineWeight::Medium, office::LineStyle::Continuous, 1});
}

void GraphWorkbook::AddChart() {
    office::Worksheet sheet = book_.Sheet(ChartSheet);
    sheet.SetName(QStringLiteral("Graph"));
    sheet.SetGridLines(false);
    SetUpSheet(sheet, 0, 1);
    const int first = plan_.ComparesColumns() ? FirstValueColumn() : FirstValueColumn() - 1;
    const office::Range data = sheet_.Cells(HeaderRow, first, LastRow(), LastColumn());
    // Texts name the points; numbers are where a scatter chart's points stand.
    const bool named = !plan_.ComparesColumns() && !plan_.NeedsNumbersAlong();
    office::Chart chart = sheet.AddChart(options_.kind, data, true, named, kChartPlace);
    chart.SetSeriesInRows(plan_.SeriesInRows() && !plan_.ComparesColumns());
    if (options_.kind == office::ChartKind::Area) chart.SetStacked(true);
    if (plan_.ComparesColumns()) {
        chart.SetLines(false);
        chart.SetAxisTitles(plan_.HeadOf(0), table_.ColumnCount() == 2 ? plan_.HeadOf(1) : QString());
    }
    const TableFont font = DataFont();
    chart.SetTitle(plan_.Title());
    const int names = options_.kind == office::ChartKind::Pie ? plan_.PointCount() : plan_.SeriesCount();
    const bool many = names > kNamesBelow;
    chart.SetLegend(names > 1 || options_.kind == office::ChartKind::Pie, plan_.HasLongNames() && !many);
    chart.SetPlain();
    if (SysNumFormat && plan_.HasLongNumbers()) chart.SetValueFormat(QStringLiteral("#,##0"));
    chart.SetFont(font.name, font.size);
    if (many) chart.SetLegendFont(font.name, std::min(font.size, kManyNamesSize));
    chart.SetAxisFont(ProductFont.isEmpty() ? font.name : ProductFont,
                      ProductFontSize > 0 ? ProductFontSize : font.size);
}

ShowOutcome ShowGraphXLS(RowsColumns& arrangement, const GraphOptions& options, const WizardProgress& progress,
                         const MayDraw& mayDraw) {
    const ErrorTrap trap("ShowXLS");
    PivotTable table;
    ShowOutcome outcome = PrepareTable(WizardKind::Graph, arrangement, table, progress);
    if (outcome.result != ShowResult::Built) return outcome;
    const GraphPlan plan(table, options.kind);
    if (plan.IsCrowded() && mayDraw && !mayDraw(plan.PointCount(), plan.SeriesCount())) return {ShowResult::GivenUp};
    if (options.sort) table.SortRows(options.sortColumn, options.sortAscending);
    const QString templateFile = TemplateFile(QStringLiteral("GraphTmp.Xls"));
    if (templateFile.isEmpty()) return {ShowResult::TemplateMissing};
    outcome.WorkbookFile = JoinPath({TempFolder, GetFreeFileName(CleanedTitle(Plain("PRES_Graph"), Plain("Graph")))});
    progress.Label("Setting the Excel Objects");
    GiveTimeFor(table.ValueCount());
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(templateFile, outcome.WorkbookFile);
    progress.Main(65);
    GraphWorkbook(book, table, options, progress).Write();
    book.Close(false);
    outcome.SuggestedName = CleanedTitle(plan.Title(), Plain("Graph"));
    progress.Main(100);
    return outcome;
}

} // namespace tessaro
