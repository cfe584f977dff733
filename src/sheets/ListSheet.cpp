#include "sheets/ListSheet.h"

#include "session/Session.h"
#include "session/Strings.h"
#include "sheets/FurtherSheets.h"
#include "sheets/LookRuns.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"

#include <map>
#include <set>

namespace tessaro {

namespace {

constexpr int kWideTable = 5;             ///< columns from which a page lies across
constexpr std::size_t kRowsFitted = 500;  ///< of which every text counts for the width of its column
constexpr std::size_t kLongestTexts = 12; ///< of the rest: the longest by characters need not be the widest

/// The longest different texts of a column and the rows where each was met first.
class LongestCells final {
  public:
    void Take(const office::Cell& cell, std::size_t row) {
        const auto* text = std::get_if<QString>(&cell);
        const auto* number = std::get_if<double>(&cell);
        if (!text && !number) return;
        const QString shown = text ? *text : QString::number(*number, 'g', 10);
        if (texts_.size() == kLongestTexts && shown.size() <= texts_.begin()->first.first) return;
        texts_.try_emplace({shown.size(), shown}, row);
        if (texts_.size() > kLongestTexts) texts_.erase(texts_.begin());
    }
    void AddRows(std::set<std::size_t>& rows) const {
        for (const auto& [text, row] : texts_)
            rows.insert(row);
    }

  private:
    std::map<std::pair<qsizetype, QString>, std::size_t> texts_; ///< shortest first
};

/// One sheet of a list from `row` on; leaves in `row` the first that found no room.
void FillListSheet(office::Worksheet& sheet, const SheetList& list, std::optional<ListRow>& row) {
    const auto columns = static_cast<std::size_t>(list.heads.size());
    office::Block block;
    block.emplace_back(list.heads.begin(), list.heads.end());
    LookRuns globals;
    for (; row && block.size() <= kRowsBelowHead; row = list.next()) {
        row->cells.resize(columns);
        block.push_back(std::move(row->cells));
        for (std::size_t cell = 0; ShowGlobalColor && row->global != 0 && cell < columns; ++cell)
            if (row->global >> cell & 1U)
                globals.Add(static_cast<int>(block.size()), static_cast<int>(cell) + 1,
                            {.fontColorIndex = kGlobalSlot});
    }
    if (list.identifiers > 0)
        sheet.Cells(1, 1, static_cast<int>(block.size()), list.identifiers)
            .SetStyle({.numberFormat = QStringLiteral("@")});
    WriteTable(sheet, block);
    globals.WriteTo(sheet);
}

} // namespace

void SetGlobalColor(office::Workbook& book) {
    if (ShowGlobalColor) book.SetColors(kGlobalSlot, ColorFromNumber(GlobalColor));
}

int WriteList(office::Workbook& book, const office::Worksheet& first, const SheetList& list) {
    std::optional<ListRow> row = list.next();
    int written = 0;
    return FillSheets(book, first, list.name, [&](office::Worksheet& sheet) {
        FillListSheet(sheet, list, row);
        if (list.sheetWritten) list.sheetWritten(++written);
        return row.has_value();
    });
}

office::Block RowsToFit(const office::Block& table) {
    if (table.size() <= kRowsFitted) return table;
    office::Block rows(table.begin(), table.begin() + kRowsFitted);
    std::vector<LongestCells> columns(table.front().size());
    for (std::size_t row = kRowsFitted; row < table.size(); ++row)
        for (std::size_t column = 0; column < columns.size(); ++column)
            columns[column].Take(table[row][column], row);
    std::set<std::size_t> longest;
    for (const LongestCells& column : columns)
        column.AddRows(longest);
    for (const std::size_t row : longest)
        rows.push_back(table[row]);
    return rows;
}

// The columns are fitted before all rows are written, on those that decide the width: fitting tens of thousands of rows
// would take longer than everything else. The same holds for the page setup.
void WriteTable(office::Worksheet& sheet, const office::Block& table) {
    if (table.empty() || table.front().empty()) return;
    const int rows = static_cast<int>(table.size());
    const int columns = static_cast<int>(table.front().size());
    const office::Block fitted = RowsToFit(table);
    sheet.Cells(1, 1).SetValues(fitted);
    office::Range used = sheet.Cells(1, 1, rows, columns);
    const SheetFont font = ListFont();
    office::CellStyle look = font.Style();
    look.latinFontName.reset(); // a list is in one font throughout
    used.SetStyle(look);
    sheet.Cells(1, 1, 1, columns).SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot});
    used.AutoFitColumns();
    sheet.SetPageSetup({.landscape = columns >= kWideTable,
                        .fitToPagesWide = 1,
                        .header = office::PageLine(),
                        .footer = office::PageLine(QStringLiteral("&P / &N")),
                        .titleRows = 1});
    sheet.FreezePanes(2, 1);
    if (LanguageIsRightToLeft()) sheet.SetRightToLeft(true);
    used.SetBorders(office::AllEdges, {office::LineWeight::Thin, office::LineStyle::Continuous, kLineSlot});
    if (fitted.size() < table.size()) sheet.Cells(1, 1).SetValues(table);
    SetTallRows(sheet, 1, rows, columns, font);
}

} // namespace tessaro
