#include "presentation/TableWorkbook.h"

#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/StatementWatch.h"
#include "session/Strings.h"
#include "sheets/DataList.h"
#include "sheets/LookRuns.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/ValueCells.h"
#include "view/SourcesAndNotes.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr int kLegendLines = 3;
constexpr int kBlanksBehindNumber = 10;
constexpr double kEmptyColumn = 10;  ///< digits of a column that holds nothing
constexpr double kWidestColumn = 30; ///< digits; a merged line may end so far before the page does
constexpr double kLeastLine = 30;    ///< digits; in less than that a line isn't wrapped
constexpr int kMostMerged = 24;
constexpr std::size_t kMarksAtOnce = 400; ///< so that progress is seen and the work can be cancelled between them
constexpr double kLineEnds = 0.1;         ///< the share of a line that stays empty because words don't break
constexpr double kLineHeight = 1.5;       ///< in sizes of the font

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

} // namespace

TableLayout::TableLayout(int rows, bool addColor)
    : DataEnd(HeaderRow + rows), LegendRow(addColor ? HeaderRow + rows + 1 : 0),
      LastRow(addColor ? LegendRow + 5 : HeaderRow + rows + 2) {}

TableWorkbook::TableWorkbook(office::Workbook book, const PivotTable& table, const TableOptions& options,
                             const WizardProgress& progress)
    : book_(std::move(book)), sheet_(book_.Sheet(1)), table_(table), options_(options), progress_(progress),
      layout_(table.RowCount(), options.addColor) {}

void TableWorkbook::Write() {
    if (options_.addColor)
        for (int i = 0; i < kRangeCount; ++i)
            book_.SetColors(kFirstRangeSlot + i, options_.ranges.colors[static_cast<std::size_t>(i)]);
    book_.SetColors(kHeaderSlot, QColor(241, 241, 241));
    sheet_.SetName(Plain("Table"));
    FindDecimals();
    MeasureColumns();
    SetUpSheet(sheet_, TableLayout::HeaderRow, table_.FieldCount() + 1,
               widths_.PagesFor(table_.FieldCount(), options_.bodyFont));
    progress_.Label("Setting Title/Subtitle");
    WriteTitles();
    progress_.Label("Filling Headers");
    WriteHeads();
    progress_.Label("Filling Data Values");
    WriteValues();
    if (options_.addColor) WriteLegend();
    WriteSources(WriteFootnotes());
    Dress();
    progress_.Label("Setting the Body Font - sheet 2");
    WriteDataList(book_, 2, options_.bodyFont);
    WriteSourceSheet(book_.Sheet(3), options_.bodyFont);
    book_.ActivateSheet(1);
    book_.Save();
}

void TableWorkbook::MeasureColumns() {
    const int fields = table_.FieldCount();
    for (int i = 0; i < fields; ++i)
        widths_.AddHead(i + 1, CaptionOf(table_.rowFields[static_cast<std::size_t>(i)]));
    for (int i = 0; i < table_.ColumnCount(); ++i)
        widths_.AddHead(fields + i + 1, table_.columns[static_cast<std::size_t>(i)].head);
    for (std::size_t row = 0; row < table_.cells.size(); ++row) {
        for (int i = 0; i < fields; ++i)
            widths_.Add(i + 1, table_.rowTexts[row][i]);
        for (std::size_t i = 0; i < table_.cells[row].size(); ++i) {
            const PivotCell& cell = table_.cells[row][i];
            const QString mark = cell.footnote != 0 ? QStringLiteral(" 9") : QString();
            const QString value = ShownValue(static_cast<int>(row), static_cast<int>(i));
            widths_.Add(fields + static_cast<int>(i) + 1, FiledValue(value) + mark);
        }
    }
}

void TableWorkbook::WriteTitles() {
    const auto write = [this](int row, const QString& text, const SheetFont& font) {
        office::CellStyle look = font.Style();
        SetLeading(look);
        look.numberFormat = QStringLiteral("@");
        sheet_.Cells(row, 1).SetStyle(look);
        if (!text.isEmpty()) sheet_.Cells(row, 1).SetValue(text);
        SetTallDataRows(sheet_, row, row, 1, font);
    };
    write(1, options_.title, options_.titleFont);
    write(2, options_.subTitle, options_.subTitleFont);
}

void TableWorkbook::WriteHeads() {
    std::vector<office::Cell> heads;
    for (const PivotField field : table_.rowFields)
        heads.emplace_back(CaptionOf(field));
    for (const PivotColumn& column : table_.columns)
        heads.emplace_back(column.head);
    const int fields = table_.FieldCount();
    const int header = TableLayout::HeaderRow;
    office::CellStyle text = TextFont(options_.bodyFont).Style();
    text.wrapText = true;
    text.numberFormat = QStringLiteral("@");
    text.vertical = office::VerticalAlign::Bottom;
    SetLeading(text);
    sheet_.Cells(header, 1, header, fields).SetStyle(text);
    text.horizontal = office::Align::Right;
    sheet_.Cells(header, fields + 1, header, LastColumn()).SetStyle(text);
    sheet_.Cells(header, 1).SetValues({heads});
}

int TableWorkbook::FootnoteNumber(qint64 id) {
    const auto found = footnoteNumbers_.constFind(id);
    if (found != footnoteNumbers_.constEnd()) return *found;
    arrFootnotes_.push_back(id);
    const int number = static_cast<int>(arrFootnotes_.size());
    footnoteNumbers_.insert(id, number);
    return number;
}

void TableWorkbook::FindDecimals() {
    decimals_.assign(static_cast<std::size_t>(table_.ColumnCount()), 0);
    for (const std::vector<PivotCell>& row : table_.cells)
        for (std::size_t column = 0; column < row.size(); ++column)
            decimals_[column] = std::max(decimals_[column], DecimalsOf(row[column].value));
}

QString TableWorkbook::ShownValue(int row, int column) const {
    const QString& value = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value;
    return options_.sameDecimals ? WithZeros(value, decimals_[static_cast<std::size_t>(column)]) : value;
}

int TableWorkbook::SetCellBGColor(int row, int column) const {
    if (!options_.addColor) return -1;
    const ColorRanges* record = options_.ranges.Find(table_.IndicatorOf(row, column));
    const QString& value = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].value;
    const auto number = NumberOf(value);
    return record && number ? record->SlotOf(*number) : -1;
}

void TableWorkbook::WriteValues() {
    const int first = TableLayout::FirstDataRow;
    const int fields = table_.FieldCount();
    office::Block block;
    LookRuns formats;
    LookRuns colors;
    for (int row = 0; row < table_.RowCount(); ++row) {
        std::vector<office::Cell> line;
        const QStringList& texts = table_.rowTexts[static_cast<std::size_t>(row)];
        for (const QString& text : texts)
            line.emplace_back(text);
        for (int column = 0; column < table_.ColumnCount(); ++column) {
            const PivotCell& cell = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            const int sheetColumn = fields + column + 1;
            line.push_back(cell.footnote != 0 ? MarkedCell(row, column) : ValueCell(cell.value));
            if (cell.value.isEmpty()) continue;
            formats.Add(first + row, sheetColumn, {.numberFormat = ValueFormat(ShownValue(row, column))});
            if (const int slot = SetCellBGColor(row, column); slot > -1)
                colors.Add(first + row, sheetColumn, {.interiorColorIndex = slot});
        }
        block.push_back(std::move(line));
        if (row % 256 == 0) progress_.Child(100 * row / table_.RowCount());
    }
    progress_.Label("Setting the Body Font");
    office::CellStyle values = BodyLook();
    values.horizontal = office::Align::Right;
    values.vertical = office::VerticalAlign::Top;
    sheet_.Cells(first, fields + 1, layout_.DataEnd, LastColumn()).SetStyle(values);
    office::CellStyle texts = TextFont(options_.bodyFont).Style();
    texts.numberFormat = QStringLiteral("@");
    SetLeading(texts);
    texts.vertical = office::VerticalAlign::Top;
    sheet_.Cells(first, 1, layout_.DataEnd, fields).SetStyle(texts);
    for (int i = 1; i <= fields; ++i)
        if (widths_.Wraps(i)) sheet_.Cells(first, i, layout_.DataEnd, i).SetStyle({.wrapText = true});
    formats.WriteTo(sheet_);
    if (options_.formatTable) FormatTable();
    colors.WriteTo(sheet_);
    SendLooks(sheet_);
    sheet_.Cells(first, 1).SetValues(block);
    WriteMarks();
}

// Every value that has a note is marked with the note's number; without a value the number stands alone.
office::Cell TableWorkbook::MarkedCell(int row, int column) {
    const PivotCell& cell = table_.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    const QString number = QString::number(FootnoteNumber(cell.footnote));
    marks_.push_back(
        {TableLayout::FirstDataRow + row, table_.FieldCount() + column + 1, static_cast<int>(number.size())});
    return cell.value.isEmpty() ? number : FiledValue(ShownValue(row, column)) + QLatin1Char(' ') + number;
}

void TableWorkbook::WriteMarks() {
    const bool regular = options_.bodyFont.bold || options_.bodyFont.italic;
    for (std::size_t start = 0; start < marks_.size(); start += kMarksAtOnce) {
        const auto from = marks_.begin() + static_cast<std::ptrdiff_t>(start);
        const auto count = std::min<std::ptrdiff_t>(kMarksAtOnce, marks_.end() - from);
        sheet_.MarkEnds({from, from + count}, kRedSlot, regular);
        progress_.Child(static_cast<int>(100 * (start + static_cast<std::size_t>(count)) / marks_.size()));
    }
}

void TableWorkbook::WriteLegend() {
    office::CellStyle look = BodyLook();
    SetLeading(look);
    const char* const texts[kLegendLines] = {"Table Color3", "Table Color2", "Table Color1"};
    for (int i = 0; i < kLegendLines; ++i) {
        const int row = layout_.LegendRow + i;
        sheet_.Cells(row, 1).SetStyle({.interiorColorIndex = kFirstRangeSlot + i});
        sheet_.Cells(row, 2).SetStyle(look);
        sheet_.Cells(row, 2).SetValue(Plain(texts[i]));
    }
}

int TableWorkbook::WriteFootnotes() {
    if (arrFootnotes_.empty()) return layout_.LastRow;
    int row = layout_.LastRow;
    listHeads_.push_back(row);
    office::CellStyle head = BodyLook();
    head.bold = true;
    head.italic = true;
    SetLeading(head);
    sheet_.Cells(row, 1).SetStyle(head);
    sheet_.Cells(row, 1).SetValue(Plain("FootNotes"));
    sheet_.Cells(row, 1, row, LastColumn()).SetBorders(office::EdgeTop, {});
    const office::CellStyle body = TextFont(options_.bodyFont).Style();
    office::CellStyle left = body;
    SetLeading(left);
    for (std::size_t i = 0; i < arrFootnotes_.size(); ++i) {
        const QString text = FootnoteText(arrFootnotes_[i]);
        if (text.isNull()) continue; // the number is taken all the same
        ++row;
        const QString shown = QString(kBlanksBehindNumber, QLatin1Char(' ')) + text;
        sheet_.Cells(row, 1).SetStyle(left);
        sheet_.Cells(row, 1).SetRichText({{QString::number(i + 1), true, body}, {shown, false, body}});
        longLines_.push_back({row, shown});
    }
    return row + 2;
}

void TableWorkbook::WriteSources(int row) {
    office::CellStyle look = TextFont(options_.bodyFont).Style();
    SetLeading(look);
    look.numberFormat = QStringLiteral("@");
    office::Block block{{Plain("Comm_Source")}};
    for (const QString& source : SourcesOfSelection()) {
        longLines_.push_back({row + static_cast<int>(block.size()), source});
        block.push_back({source});
    }
    const int last = row + static_cast<int>(block.size()) - 1;
    lastRow_ = last;
    if (last > row) listHeads_.push_back(row);
    sheet_.Cells(row, 1, last, 1).SetStyle(look);
    sheet_.Cells(row, 1).SetStyle({.underline = true});
    sheet_.Cells(row, 1).SetValues(block);
}

// The columns that a line takes up and their digits: what the page is wide. Pages side by side repeat the columns of
// the rows' heads; a line that keeps within these stands whole on each of them.
TableWorkbook::LineRoom TableWorkbook::RoomOfLines() const {
    const int fields = table_.FieldCount();
    double room = 0;
    for (int column = 1; column <= fields; ++column)
        room += widths_.SheetWidth(column, options_.bodyFont);
    if (widths_.PagesFor(fields, options_.bodyFont) > 1 && room >= kLeastLine) return {fields, room, room};
    int columns = 0;
    for (room = 0; room < kPageDigits - kWidestColumn && columns < kMostMerged; ++columns)
        room += columns < LastColumn() ? widths_.SheetWidth(columns + 1, options_.bodyFont) : kEmptyColumn;
    return {columns, room, kPageDigits};
}

// Longer texts are wrapped.
void TableWorkbook::WrapLongLines() {
    const SheetFont font = TextFont(options_.bodyFont);
    const auto [columns, room, longest] = RoomOfLines();
    for (const auto& [row, text] : longLines_) {
        const double length = TextWidth(text, font);
        if (length <= longest) continue;
        office::Range line = sheet_.Cells(row, 1, row, columns);
        line.Merge();
        line.SetStyle({.vertical = office::VerticalAlign::Top, .wrapText = true});
        sheet_.SetRowHeight(row, std::ceil(length / room + kLineEnds) * font.size * kLineHeight);
    }
}

void TableWorkbook::FormatTable() {
    const int header = TableLayout::HeaderRow;
    office::Range head = sheet_.Cells(header, 1, header, LastColumn());
    head.SetStyle({.fontColorIndex = kWhiteSlot, .interiorColorIndex = kGraySlot});
    sheet_.Cells(TableLayout::FirstDataRow, 1, layout_.DataEnd, table_.FieldCount())
        .SetStyle({.fontColorIndex = kDarkRedSlot, .interiorColorIndex = kHeaderSlot});
}

void TableWorkbook::DrawBorders() {
    progress_.Label("Filling borders");
    if (options_.addColor)
        sheet_.Cells(TableLayout::HeaderRow, 1, layout_.DataEnd, LastColumn())
            .SetBorders(office::AllEdges, {office::LineWeight::Thin, office::LineStyle::Continuous, kLineSlot});
    if (!options_.formatTable) return;
    office::Range head = sheet_.Cells(TableLayout::HeaderRow, 1, TableLayout::HeaderRow, LastColumn());
    head.SetBorders(office::EdgeTop, {});
    head.SetBorders(office::EdgeBottom, {office::LineWeight::Medium, office::LineStyle::Continuous, kBlackSlot});
}

void TableWorkbook::Dress() {
    progress_.Label("Autofit");
    widths_.WriteTo(sheet_, options_.bodyFont);
    sheet_.Cells(TableLayout::HeaderRow, 1).AutoFitRows();
    SetTallDataRows(sheet_, TableLayout::FirstDataRow, lastRow_, LastColumn(), options_.bodyFont);
    WrapLongLines();
    for (int i = 1; i <= table_.FieldCount(); ++i)
        if (widths_.Wraps(i)) sheet_.Cells(TableLayout::FirstDataRow, i, layout_.DataEnd, i).AutoFitRows();
    SetGap(sheet_, 3, TableLayout::HeaderRow - 1);
    DrawBorders();
    for (const int row : listHeads_)
        sheet_.KeepWithNext(row);
}

ShowOutcome PrepareTable(WizardKind kind, RowsColumns& arrangement, PivotTable& table, const WizardProgress& progress) {
    const StatementWatch watch([&](std::optional<int> percent) {
        if (percent && progress.child) progress.child(*percent);
        return !progress.givenUp || !progress.givenUp();
    });
    progress.Main(5);
    CreateDistinctIUSTables();
    progress.Main(20);
    arrangement.Build_Records([&](int percent) { progress.Child(std::min(percent, 100)); });
    progress.Main(40);
    if (kind == WizardKind::Graph) arrangement.FillEmptyRows();
    if (arrangement.Rows().empty()) return {kind == WizardKind::Table ? ShowResult::NoRows : ShowResult::NoYAxis};
    const int columns = CountPivotColumns(arrangement);
    if (columns + static_cast<int>(arrangement.Rows().size()) > kMostPivotColumns)
        return {ShowResult::TooManyColumns, {}, columns, WidestColumnField(arrangement)};
    table = ReadPivot(BuildPivotSQL(arrangement, ShowFootnotes), [&](int percent) { progress.Child(percent); });
    progress.Child(100); // where it was given up meanwhile
    if (table.RowCount() == 0) return {ShowResult::NoData};
    if (table.RowCount() > kMostTableRows) return {ShowResult::TooManyRows, {}, table.RowCount()};
    progress.Label("SETTING THE ORDER BY CLAUSE");
    if (!arrangement.Columns().empty()) table.SortColumns();
    ShowOutcome outcome;
    outcome.hidden = std::max(CountValues() - table.ValueCount(), 0);
    return outcome;
}

namespace {

ShowOutcome BuildTable(RowsColumns& arrangement, const TableOptions& options, const WizardProgress& progress) {
    PivotTable table;
    ShowOutcome outcome = PrepareTable(WizardKind::Table, arrangement, table, progress);
    if (outcome.result != ShowResult::Built) return outcome;
    if (options.sort) table.SortRows(options.sortColumn, options.sortAscending);
    const QString stem = CleanedTitle(options.title, Plain("Table"));
    const auto write = [&](office::Workbook& book) { TableWorkbook(book, table, options, progress).Write(); };
    return WriteWorkbook({QStringLiteral("TableTmp.Xls"), stem, table.ValueCount()}, outcome, progress, write);
}

} // namespace

ShowOutcome WriteWorkbook(const WorkbookPlan& plan, ShowOutcome outcome, const WizardProgress& progress,
                          const std::function<void(office::Workbook&)>& write) {
    progress.Label("Setting the Excel Objects");
    const auto fill = [&](office::Workbook& book) {
        progress.Main(65);
        write(book);
        progress.Main(100);
    };
    outcome.WorkbookFile = MakeWorkbook(plan, fill);
    return outcome.WorkbookFile.isEmpty() ? ShowOutcome{ShowResult::TemplateMissing} : outcome;
}

ShowOutcome ShowXLS(RowsColumns& arrangement, const TableOptions& options, const WizardProgress& progress) {
    const ErrorTrap trap("ShowXLS");
    try {
        return BuildTable(arrangement, options, progress);
    } catch (const WorkGivenUp&) {
        return {ShowResult::GivenUp};
    }
}

} // namespace tessaro
