#include "calculate/LogWorkbook.h"

#include "calculate/CalculationSheet.h"
#include "calculate/Numbers.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "session/DisplayValue.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/Templates.h"
#include "sheets/ColumnWidths.h"
#include "sheets/ListSheet.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/TimeLimit.h"
#include "sheets/UnfinishedFile.h"
#include "view/DataFilters.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace tessaro {

namespace {

constexpr int kDecimalsRow = 7; ///< decimals, or the lower end of a scale with the upper one below it
constexpr int kLabelColumns = 2;
constexpr int kChartAreas = 25;     ///< so many names stand side by side
constexpr double kChartWidth = 740; ///< points: as wide as a small window
constexpr double kChartHeight = 320;
constexpr double kChartGap = 8;
constexpr int kRankChartEnd = 5;           ///< the last of the columns with rank now, best and worst rank
constexpr int kRankSlots[] = {23, 10, 46}; ///< of the palette, for rank now, best and worst rank: blue, green, orange
const QString kTrueOrFalse = QStringLiteral("[=0]\"FALSE\";\"TRUE\"");
const QColor kHeadTint(241, 241, 241);

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

QString ModuleName(CalcType type) {
    return Plain(NamesOf(type).moduleKey);
}

int RowsOf(const LogBlock& block) {
    return static_cast<int>(block.cells.size());
}

/// The last row of the headings, which begin at headRow.
int HeadEnd(const LogSheet& sheet) {
    int end = sheet.headRow;
    for (const LogBlock& block : sheet.blocks)
        if (block.row <= sheet.headRow && block.row + RowsOf(block) > sheet.headRow)
            end = std::max(end, block.row + RowsOf(block) - 1);
    return sheet.firstRow > 0 ? std::min(end, sheet.firstRow - 1) : end;
}

int LastRow(const LogSheet& sheet) {
    int last = std::max(sheet.lastRow, kDecimalsRow + 1);
    for (const LogBlock& block : sheet.blocks)
        last = std::max(last, block.row + RowsOf(block) - 1);
    return last;
}

/// "= ROUND(" and the formula without its "=", to the decimals.
QString Rounded(const QString& formula, const QString& decimals) {
    const QString inner = formula.mid(formula.startsWith(QLatin1Char('=')) ? 1 : 0).trimmed();
    return QStringLiteral("= ROUND(%1,%2)").arg(inner, decimals);
}

/// A number as the formats "0", "0.00" and so on show it; any other cell or format: as it is.
QString ShownText(const office::Cell& cell, const QString& numberFormat) {
    const auto* number = std::get_if<double>(&cell);
    if (!number || !numberFormat.startsWith(QLatin1Char('0'))) return CellText(cell);
    const qsizetype point = numberFormat.indexOf(QLatin1Char('.'));
    return QString::number(*number, 'f', point < 0 ? 0 : static_cast<int>(numberFormat.size() - point - 1));
}

/// A head over several short lines, for columns of ranks: there are many, of few digits each.
QString Folded(const QString& text) {
    constexpr qsizetype kLineLength = 14;
    QStringList lines{QString()};
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        QString& line = lines.back();
        if (line.isEmpty())
            line = word;
        else if (line.size() + word.size() < kLineLength)
            line += QLatin1Char(' ') + word;
        else
            lines << word;
    }
    return lines.join(QLatin1Char('\n'));
}

/// Where the table of a sheet begins.
enum class Above { Lines, Chart };

/// Writes one sheet: looks first, on empty cells, then values, then formulas.
class SheetWriter final {
  public:
    SheetWriter(office::Worksheet sheet, const LogSheet& data, QString decimals, QStringList labels)
        : sheet_(std::move(sheet)), data_(data), decimals_(std::move(decimals)), labels_(std::move(labels)),
          font_(ListFont()) {
        for (const LogFormulas& column : data.formulas)
            formats_.insert(column.column, column.numberFormat);
    }

    void Write(Above above = Above::Lines) {
        SetUp(above);
        MeasureColumns();
        Dress();
        SendLooks(sheet_);
        for (const LogBlock& block : data_.blocks)
            WriteBlock(block);
        WriteFormulas();
        FitRows();
    }

  private:
    /// The lines above the table stand on the first page alone. A chart there would leave no room for rows that scroll.
    void SetUp(Above above) {
        SetUpSheet(sheet_, data_.firstRow > 0 ? data_.firstRow - 1 : HeadEnd(data_), kLabelColumns + 1);
        office::PageSetup page{
            .paper = office::Paper::Own, .titleRows = HeadEnd(data_), .firstTitleRow = data_.headRow};
        if (data_.printedColumns > 0) page.printed = {LastRow(data_), data_.printedColumns};
        sheet_.SetPageSetup(page);
        if (above == Above::Chart) sheet_.FreezePanes(1, kLabelColumns + 1);
    }
    void MeasureColumns() {
        for (const LogBlock& block : data_.blocks)
            if (!IsTitle(block)) MeasureBlock(block);
        for (const QString& label : labels_)
            widths_.AddHead(1, label);
        widths_.FitToPage(font_);
        widths_.WriteTo(sheet_, font_);
    }
    /// Lines above the table, which go on over the columns beside them.
    [[nodiscard]] bool IsTitle(const LogBlock& block) const {
        return block.row < data_.headRow && block.cells.front().size() == 1;
    }
    /// A cell like the one above it needs no more room.
    void MeasureBlock(const LogBlock& block) {
        for (std::size_t row = 0; row < block.cells.size(); ++row)
            for (std::size_t column = 0; column < block.cells[row].size(); ++column)
                if (const office::Cell& cell = block.cells[row][column];
                    row == 0 || cell != block.cells[row - 1][column])
                    Measure(block.row + static_cast<int>(row), block.column + static_cast<int>(column), cell);
    }
    void Measure(int row, int column, const office::Cell& cell) {
        const bool isHead = data_.firstRow == 0 || row < data_.firstRow;
        const QString text = isHead ? CellText(cell) : ShownText(cell, formats_.value(column));
        if (text.isEmpty()) return;
        if (!isHead) return widths_.Add(column, text);
        widths_.AddHead(column, column > kRankChartEnd && data_.printedColumns > 0 ? Folded(text) : text);
    }
    void Dress() {
        office::Range all = sheet_.Cells(1, 1, LastRow(data_), data_.lastColumn);
        all.SetStyle(font_.Style());
        for (const int column : data_.textColumns)
            Rows(column).SetStyle({.numberFormat = QStringLiteral("@")});
        for (const auto& [column, align] : data_.alignments)
            Rows(column).SetStyle({.horizontal = align});
        for (const LogFormulas& column : data_.formulas)
            if (!column.numberFormat.isEmpty()) Rows(column.column).SetStyle({.numberFormat = column.numberFormat});
        WrapLongTexts();
        DressHeads();
        SetTallRows(sheet_, 1, LastRow(data_), data_.lastColumn, font_);
    }
    /// A row of several lines has all its cells at the top.
    void WrapLongTexts() {
        if (!HasWraps()) return;
        for (int column = 1; column <= data_.lastColumn; ++column)
            if (widths_.Wraps(column)) Rows(column).SetStyle({.wrapText = true});
        sheet_.Cells(data_.firstRow, 1, data_.lastRow, data_.lastColumn)
            .SetStyle({.vertical = office::VerticalAlign::Top});
    }
    [[nodiscard]] bool HasWraps() const {
        for (int column = 1; column <= data_.lastColumn; ++column)
            if (HasRows() && widths_.Wraps(column)) return true;
        return false;
    }
    void DressHeads() {
        const office::Border line{office::LineWeight::Thin, office::LineStyle::Continuous, kLineSlot};
        for (const LogBlock& block : data_.blocks) {
            if (RowsOf(block) == 1 && block.row < data_.headRow)
                sheet_.Cells(block.row, 1, block.row, data_.lastColumn).SetStyle({.bold = true});
            if (IsTableAbove(block)) DressTable(block, line);
        }
        office::Range heads = sheet_.Cells(data_.headRow, 1, HeadEnd(data_), data_.lastColumn);
        heads.SetStyle({.bold = true,
                        .interiorColorIndex = kHeaderSlot,
                        .vertical = office::VerticalAlign::Bottom,
                        .wrapText = true});
        heads.SetBorders(office::AllEdges, line);
        if (HasRows())
            sheet_.Cells(data_.firstRow, 1, data_.lastRow, data_.lastColumn).SetBorders(office::AllEdges, line);
    }
    void FitRows() {
        for (const LogBlock& block : data_.blocks)
            if (IsTableAbove(block)) sheet_.Cells(block.row, 1, block.row + RowsOf(block) - 1, 1).AutoFitRows();
        sheet_.Cells(data_.headRow, 1, HeadEnd(data_), 1).AutoFitRows();
        if (HasWraps()) Rows(1).AutoFitRows();
    }
    /// A small table of its own above the heads of the areas.
    [[nodiscard]] bool IsTableAbove(const LogBlock& block) const {
        return RowsOf(block) > 1 && block.cells.front().size() > 1 && block.row + RowsOf(block) <= data_.headRow;
    }
    /// Names that are longer than their column go over several lines.
    void DressTable(const LogBlock& block, const office::Border& line) {
        office::Range table = sheet_.Cells(block.row, block.column, block.row + RowsOf(block) - 1,
                                           block.column + static_cast<int>(block.cells.front().size()) - 1);
        table.SetStyle({.vertical = office::VerticalAlign::Bottom, .wrapText = true});
        sheet_.Cells(block.row, table.Column(), block.row, table.LastColumn())
            .SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot});
        table.SetBorders(office::AllEdges, line);
    }
    /// Cells of the kind "true or false" are shown as 1 and 0 when the spreadsheet program has read them back from the
    /// file, so they become numbers that a format shows as words; formulas take both.
    void WriteBlock(const LogBlock& block) {
        if (!IsTableAbove(block)) return sheet_.Cells(block.row, block.column).SetValues(block.cells);
        office::Block cells = block.cells;
        for (std::size_t row = 0; row < cells.size(); ++row)
            for (std::size_t column = 0; column < cells[row].size(); ++column)
                if (const auto* truth = std::get_if<bool>(&cells[row][column])) {
                    cells[row][column] = *truth ? 1.0 : 0.0;
                    sheet_.Cells(block.row + static_cast<int>(row), block.column + static_cast<int>(column))
                        .SetStyle({.numberFormat = kTrueOrFalse});
                }
        sheet_.Cells(block.row, block.column).SetValues(cells);
    }
    /// A pattern is filled down its column; neighbours with a formula for each row go over in one block.
    void WriteFormulas() {
        if (!HasRows()) return;
        office::FormulaBlock block;
        for (auto column = data_.formulas.begin(); column != data_.formulas.end(); ++column) {
            if (column->formulas.size() == 1)
                Rows(column->column).FillFormula(Final(*column, column->formulas.front()));
            if (column->formulas.size() <= 1) continue;
            AddTo(block, *column);
            const auto next = std::next(column);
            const bool goesOn = next != data_.formulas.end() && next->column == column->column + 1 &&
                                next->formulas.size() == block.size();
            if (goesOn) continue;
            Rows(column->column + 1 - static_cast<int>(block.front().size())).SetFormulas(block);
            block.clear();
        }
    }
    void AddTo(office::FormulaBlock& block, const LogFormulas& column) const {
        block.resize(column.formulas.size());
        for (std::size_t i = 0; i < column.formulas.size(); ++i) {
            const QString& formula = column.formulas[i];
            const int row = data_.firstRow + static_cast<int>(i);
            block[i].push_back(formula.isEmpty() ? CellText(data_.Value(row, column.column)) : Final(column, formula));
        }
    }
    [[nodiscard]] QString Final(const LogFormulas& column, const QString& formula) const {
        return column.rounded && !decimals_.isEmpty() ? Rounded(formula, decimals_) : formula;
    }
    [[nodiscard]] bool HasRows() const { return data_.firstRow > 0 && data_.lastRow >= data_.firstRow; }
    /// A column of the area rows; without any, the cell below the headings.
    [[nodiscard]] office::Range Rows(int column) const {
        if (!HasRows()) return sheet_.Cells(HeadEnd(data_) + 1, column);
        return sheet_.Cells(data_.firstRow, column, data_.lastRow, column);
    }

    office::Worksheet sheet_;
    const LogSheet& data_;
    QString decimals_;   ///< of rounded formulas; empty: they aren't rounded
    QStringList labels_; ///< that come into the first column as well
    SheetFont font_;
    ColumnWidths widths_;
    QHash<int, QString> formats_; ///< of the area rows, by column
};

/// The labelled lines below the title of a sheet; the decimals, where they are asked for, stand on the first alone.
std::vector<HeaderLine> LinesOf(int sheet, const CalculationDraft& draft, const QString& stamp) {
    // The header's writer has one text for both calculations of percentages.
    const CalcType named = draft.type == CalcType::HundredMinus ? CalcType::PerCent : draft.type;
    std::vector<HeaderLine> lines{{3, Plain("LOG_MODULE"), ModuleName(draft.type)},
                                  {4, Plain("LOG_DATE_TIME"), stamp},
                                  {5, Plain("LOG_LOG_FILENAME"), LogFileName(named, stamp)}};
    const bool hasDecimals = draft.type != CalcType::CompositeIndex && !draft.decimals.isEmpty();
    if (sheet != kWorkingSheet || !hasDecimals) return lines;
    lines.push_back({kDecimalsRow, Plain("Comm_DECIMAL"), draft.decimals});
    return lines;
}

/// A number of the draft as a cell, so that formulas can refer to it.
office::Cell NumberCell(const QString& typed) {
    const auto number = NumberTyped(typed);
    return number ? office::Cell(*number) : office::Cell(typed);
}

/// A whole log, sheet by sheet.
class LogWriter final {
  public:
    LogWriter(office::Workbook book, const CalculationDraft& draft, const CalculationLog& log)
        : book_(std::move(book)), draft_(draft), log_(log) {}

    void Write(const QString& stamp, bool isFirst, LogResults results) {
        book_.SetColors(kHeaderSlot, kHeadTint);
        // Else each column would be calculated as it is written, to fit its rows, and once more with the next one.
        book_.PauseCalculation();
        const QString name = ModuleName(draft_.type);
        const bool asLog = isFirst && draft_.type != CalcType::CompositeIndex;
        WriteSheet(kWorkingSheet, log_.working, asLog ? Plain("LOG_LOG") + QLatin1Char(' ') + name : name, stamp);
        WriteSheet(kDetailSheet, log_.detail, name, stamp);
        const bool hasRanks = log_.ranks.has_value() && book_.SheetCount() >= kRanksSheet;
        const bool hasRemarks = !log_.remarks.empty() && book_.SheetCount() >= kRemarksSheet;
        if (hasRanks) WriteRanks();
        if (hasRemarks) WriteRemarks();
        NameSheets();
        while (book_.SheetCount() > kRanksSheet - (hasRanks ? 0 : 1))
            book_.RemoveSheet(book_.SheetCount());
        if (!hasRemarks && book_.SheetCount() >= kRemarksSheet) book_.RemoveSheet(kRemarksSheet);
        book_.ActivateSheet(kWorkingSheet);
        results == LogResults::Written ? book_.Save() : book_.SaveWithoutResults();
    }

  private:
    void WriteSheet(int number, const LogSheet& data, const QString& title, const QString& stamp) {
        const office::Worksheet sheet = book_.Sheet(number);
        const std::vector<HeaderLine> lines = LinesOf(number, draft_, stamp);
        QStringList labels;
        for (const HeaderLine& line : lines)
            labels << line.label;
        SheetWriter(sheet, data, Decimals(), labels).Write();
        WriteSheetTop(sheet, title, lines);
        if (number == kWorkingSheet && draft_.type == CalcType::CompositeIndex) WriteScale(sheet);
    }
    /// Numbers, for the formulas of the index refer to them.
    void WriteScale(const office::Worksheet& sheet) {
        office::CellStyle look;
        SetLeading(look);
        sheet.Cells(kDecimalsRow, 2, kDecimalsRow + 1, 2).SetStyle(look);
        sheet.Cells(kDecimalsRow, 1)
            .SetValues({{Plain("INDEX_SCALE_MIN"), NumberCell(draft_.scaleMin)},
                        {Plain("INDEX_SCALE_MAX"), NumberCell(draft_.scaleMax)}});
    }
    /// Last of all: formulas know the sheets by the template's names, and follow.
    void NameSheets() {
        static constexpr const char* kNames[] = {"LOG_LOG", "TS_SheetDetail", "TS_SheetRemarks", "TS_SheetRanks"};
        int number = 0;
        for (const char* name : kNames)
            if (++number <= book_.SheetCount()) book_.Sheet(number).SetName(Plain(name));
    }
    void WriteRemarks() {
        office::Worksheet sheet = book_.Sheet(kRemarksSheet);
        office::Block table{{Plain("Comm_Area Id"), Plain("Comm_Area Name"), Plain("TS_Reason")}};
        for (const QStringList& remark : log_.remarks)
            table.emplace_back(remark.begin(), remark.end());
        sheet.Cells(1, 1, static_cast<int>(table.size()), 1).SetStyle({.numberFormat = QStringLiteral("@")});
        WriteTable(sheet, table);
    }
    void WriteRanks() {
        office::Worksheet sheet = book_.Sheet(kRanksSheet);
        SheetWriter(sheet, *log_.ranks, {}, {}).Write(Above::Chart);
        WriteSheetTop(sheet, CellText(log_.ranks->Value(1, 1)), {});
        AddRanksChart(sheet);
    }
    /// The ranks of the first areas, with how far they move, between the title and the table.
    void AddRanksChart(office::Worksheet& sheet) {
        const LogSheet& ranks = *log_.ranks;
        const int gapRow = ranks.headRow - 1;
        sheet.SetRowHeight(gapRow, kChartHeight + 2 * kChartGap);
        const double top = gapRow > 1 ? sheet.Cells(1, 1, gapRow - 1, 1).Size().height() : 0;
        const int last = std::min(ranks.lastRow, ranks.firstRow + kChartAreas - 1);
        office::Chart chart =
            sheet.AddChart(office::ChartKind::Line, sheet.Cells(HeadEnd(ranks), kLabelColumns, last, kRankChartEnd),
                           true, true, {0, top + kChartGap, kChartWidth, kChartHeight});
        chart.SetAxisTitles({}, Plain("TS_RankAxis"));
        chart.SetLegend(true, true);
        chart.SetPlain();
        for (int series = 1; series <= std::min<int>(chart.SeriesCount(), std::size(kRankSlots)); ++series)
            chart.SetSeriesColor(series, kRankSlots[series - 1]);
        const SheetFont font = ListFont();
        chart.SetFont(font.name, font.size);
    }
    [[nodiscard]] QString Decimals() const {
        const auto decimals = DecimalsTyped(draft_.decimals);
        return decimals ? QString::number(*decimals) : QString();
    }

    office::Workbook book_;
    const CalculationDraft& draft_;
    const CalculationLog& log_;
};

int CellsOf(const LogSheet& sheet) {
    return std::accumulate(sheet.blocks.begin(), sheet.blocks.end(), 0, [](int sum, const LogBlock& block) {
        return sum + (block.cells.empty() ? 0 : RowsOf(block) * static_cast<int>(block.cells.front().size()));
    });
}

} // namespace

QString LogFileName(CalcType type, const QString& stamp) {
    return QStringLiteral("Log_") + QLatin1String(NamesOf(type).fileStem) + stamp + QStringLiteral(").xls");
}

WrittenWorkbook WriteLog(const CalculationDraft& draft, const CalculationLog& log, bool isFirst, LogResults results) {
    const QString templateFile = TemplateFile(QStringLiteral("Log_Calculate.xls"));
    if (!FileExists(templateFile)) return {{}, QLatin1String(NamesOf(draft.type).templateMissing)};
    // Neither the locale's digits nor a ":" belong into the name of a file.
    const QString stamp = Now().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    UnfinishedFile file(JoinPath({TempFolder, LogFileName(draft.type, stamp)}));
    GiveTimeFor(CellsOf(log.working) + CellsOf(log.detail));
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(templateFile, file.Path());
    LogWriter(book, draft, log).Write(stamp, isFirst, results);
    book.Close(false);
    file.Keep();
    return {file.Path(), {}};
}

namespace {

/// The cells of the first sheet that results stand in, read at once.
class ResultCells final {
  public:
    ResultCells(const office::Worksheet& sheet, const std::vector<LogResult>& results) {
        int lastRow = 0;
        int lastColumn = 0;
        for (const LogResult& result : results) {
            if (result.sheetRow == 0) continue;
            row_ = row_ == 0 ? result.sheetRow : std::min(row_, result.sheetRow);
            column_ = column_ == 0 ? result.sheetColumn : std::min(column_, result.sheetColumn);
            lastRow = std::max(lastRow, result.sheetRow);
            lastColumn = std::max(lastColumn, result.sheetColumn);
        }
        if (row_ > 0) cells_ = sheet.Cells(row_, column_, lastRow, lastColumn).Values();
    }

    /// What counts for a result; empty for none. A cell whose result could not be calculated counts once it holds
    /// another number than the zero or the error of its formula.
    [[nodiscard]] QString ValueOf(const LogResult& result) const {
        if (result.sheetRow == 0) return result.row.value;
        const QString text = CellText(cells_[static_cast<std::size_t>(result.sheetRow - row_)]
                                            [static_cast<std::size_t>(result.sheetColumn - column_)]);
        const auto number = NumberOf(text) ? NumberOf(text) : NumberTyped(text);
        if (!number || (result.row.value.isEmpty() && *number == 0)) return {};
        return NumberText(*number);
    }

  private:
    int row_ = 0;
    int column_ = 0;
    office::Block cells_;
};

} // namespace

DataEntrySheet ReadResults(const office::Workbook& book, const CalculationDraft& draft, const CalculationLog& log) {
    const office::Worksheet working = book.Sheet(kWorkingSheet);
    const bool hasScale = draft.type == CalcType::CompositeIndex;
    const QString decimals = hasScale ? draft.decimals : CellText(working.Cells(kDecimalsRow, 2).Value());
    const ResultCells cells(working, log.results);
    DataEntrySheet result{draft.sector,
                          draft.indicatorClass,
                          draft.indicator,
                          draft.type == CalcType::TransformUnit ? draft.targetUnit : draft.unit,
                          {}};
    QSet<QString> known;
    for (const LogResult& one : log.results) {
        const QString value = cells.ValueOf(one);
        const QString key = KeyOf(one.row);
        if (value.isEmpty() || known.contains(key)) continue;
        known.insert(key);
        result.rows.push_back(one.row);
        result.rows.back().value = FormatToDecimals(ToDotDecimal(value), decimals);
    }
    return result;
}

} // namespace tessaro
