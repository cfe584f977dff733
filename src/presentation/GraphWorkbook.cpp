#include "presentation/GraphWorkbook.h"

#include "controls/SheetLook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
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
constexpr double kGapHeight = 5;              ///< points, of the empty rows below the title
constexpr QRectF kChartPlace(6, 6, 670, 355); ///< points; what the preview has room for, and a landscape page
constexpr qsizetype kLongestNameBeside = 24;  ///< characters of a name in a legend that stands beside the plot

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
    : book_(std::move(book)), sheet_(book_.Sheet(TableSheet)), table_(table), options_(options), progress_(progress) {}

// One text names a point of the chart. Where several fields stand on the rows, a column joins them.
bool GraphWorkbook::NeedsLabels() const {
    if (table_.FieldCount() == 1) return false;
    const bool areaPair = table_.FieldCount() == 2 && table_.rowFields[0] == PivotField::AreaID &&
                          table_.rowFields[1] == PivotField::AreaName;
    return !areaPair;
}

QString GraphWorkbook::LabelOf(int row) const {
    const auto& fields = table_.rowFields;
    const bool named = std::find(fields.begin(), fields.end(), PivotField::AreaName) != fields.end();
    QStringList parts;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i] != PivotField::AreaID || !named)
            parts << table_.rowTexts[static_cast<std::size_t>(row)][static_cast<qsizetype>(i)];
    return parts.join(QStringLiteral(" - "));
}

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
    SetUpSheet(sheet_, HeaderRow, FirstValueColumn());
    const TableFont font = DataFont();
    progress_.Label("Filling Data Values");
    WriteTable();
    WriteComments();
    if (options_.formatTable) Format();
    widths_.WriteTo(sheet_);
    sheet_.Cells(HeaderRow, 1).AutoFitRows();
    for (int row = 2; row < HeaderRow; ++row)
        sheet_.SetRowHeight(row, kGapHeight);
    AddChart();
    progress_.Label("Setting the Body Font - sheet 2");
    WriteDataList(book_, 3, font);
    WriteSourceSheet(book_.Sheet(4), font);
    book_.ActivateSheet(ChartSheet);
    book_.Save();
}

void GraphWorkbook::WriteTable() {
    const TableFont font = DataFont();
    office::CellStyle title = font.Style();
    title.bold = true;
    title.fontSize = font.size + 4;
    sheet_.Cells(1, 1).SetStyle(title);
    sheet_.Cells(1, 1).SetValue(Plain("PRES_Graph"));
    std::vector<office::Cell> head;
    for (const PivotField field : table_.rowFields)
        head.emplace_back(CaptionOf(field));
    if (NeedsLabels()) head.emplace_back(Plain("Graph"));
    for (const PivotColumn& column : table_.columns)
        head.emplace_back(column.head);
    for (std::size_t i = 0; i < head.size(); ++i)
        widths_.AddHead(static_cast<int>(i) + 1, std::get<QString>(head[i]));
    office::Block block{head};
    LookCollector formats;
    for (int row = 0; row < table_.RowCount(); ++row) {
        std::vector<office::Cell> line;
        for (const QString& text : table_.rowTexts[static_cast<std::size_t>(row)])
            line.emplace_back(text);
        if (NeedsLabels()) line.emplace_back(LabelOf(row));
        for (std::size_t i = 0; i < line.size(); ++i)
            widths_.Add(static_cast<int>(i) + 1, std::get<QString>(line[i]));
        for (const PivotCell& cell : table_.cells[static_cast<std::size_t>(row)]) {
            const int column = static_cast<int>(line.size()) + 1;
            widths_.Add(column, cell.value);
            if (!cell.value.isEmpty())
                formats.Add(HeaderRow + 1 + row, column, {.numberFormat = ValueFormat(cell.value)});
            line.push_back(ValueCell(cell.value));
        }
        block.push_back(std::move(line));
    }
    office::CellStyle text = font.Style();
    text.numberFormat = QStringLiteral("@");
    text.horizontal = office::Align::Left;
    office::CellStyle value = font.Style();
    value.horizontal = office::Align::Right;
    sheet_.Cells(HeaderRow, 1, LastRow(), FirstValueColumn() - 1).SetStyle(text);
    sheet_.Cells(HeaderRow, FirstValueColumn(), LastRow(), LastColumn()).SetStyle(value);
    sheet_.Cells(HeaderRow, 1, HeaderRow, LastColumn()).SetStyle({.bold = true, .wrapText = true});
    formats.WriteTo(sheet_);
    SendLooks(sheet_);
    sheet_.Cells(HeaderRow, 1).SetValues(block);
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

QString GraphWorkbook::ChartTitle() const {
    if (table_.ColumnCount() == 1)
        return QString(table_.columns.front().head).replace(QLatin1Char('\n'), QStringLiteral(", "));
    return SingleValues(2).join(QStringLiteral(", "));
}

bool GraphWorkbook::HasLongNames(bool seriesInRows) const {
    qsizetype longest = 0;
    if (seriesInRows)
        for (int row = 0; row < table_.RowCount(); ++row)
            longest = std::max(longest, LabelOf(row).size());
    else
        for (const PivotColumn& column : table_.columns)
            for (const QString& line : column.head.split(QLatin1Char('\n')))
                longest = std::max(longest, line.size());
    return longest > kLongestNameBeside;
}

void GraphWorkbook::AddChart() {
    office::Worksheet sheet = book_.Sheet(ChartSheet);
    sheet.SetName(QStringLiteral("Graph"));
    sheet.SetGridLines(false);
    SetUpSheet(sheet, 0, 1);
    const office::Range data = sheet_.Cells(HeaderRow, FirstValueColumn() - 1, LastRow(), LastColumn());
    office::Chart chart = sheet.AddChart(options_.kind, data, true, true, kChartPlace);
    // The longer side of the block runs along the axis, so that there are few series of many points; a pie shows one.
    const bool seriesInRows = table_.ColumnCount() >= table_.RowCount() && table_.ColumnCount() > 1;
    chart.SetSeriesInRows(seriesInRows);
    const TableFont font = DataFont();
    chart.SetTitle(ChartTitle());
    chart.SetLegend(table_.ColumnCount() > 1 || options_.kind == office::ChartKind::Pie, HasLongNames(seriesInRows));
    chart.SetPlain();
    chart.SetFont(font.name, font.size);
    chart.SetAxisFont(ProductFont.isEmpty() ? font.name : ProductFont,
                      ProductFontSize > 0 ? ProductFontSize : font.size);
}

ShowOutcome ShowGraphXLS(RowsColumns& arrangement, const GraphOptions& options, const WizardProgress& progress) {
    const ErrorTrap trap("ShowXLS");
    PivotTable table;
    ShowOutcome outcome = PrepareTable(WizardKind::Graph, arrangement, table, progress);
    if (outcome.result != ShowResult::Built) return outcome;
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
    progress.Main(100);
    return outcome;
}

} // namespace tessaro
