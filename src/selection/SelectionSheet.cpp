#include "selection/SelectionSheet.h"

#include "controls/SheetLook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "selection/IndicatorSelection.h"
#include "selection/SheetStatement.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"

namespace tessaro::selection {

namespace {

constexpr auto kTemplate = "INTERFACE_IND_TIME_AREA_DATA";
constexpr int kMostRows = 65535; ///< below the heading

QString Heading(const QString& key) {
    return GetText(key).remove(QLatin1Char('&'));
}

} // namespace

SheetTable IndicatorTable(const std::vector<KeyedItem>& list, int view, bool byCombination) {
    SheetTable table;
    const QStringList keys = SheetHeads(view, byCombination);
    for (const QString& key : keys)
        table.heads << Heading(key);
    if (list.empty()) return table;
    Records rows = Select(SheetStatement(view, byCombination, IdList(list)));
    const auto shown = static_cast<std::size_t>(keys.size());
    for (; !rows.atEnd() && table.rows.size() < kMostRows; rows.MoveNext()) {
        QStringList cells;
        quint32 global = 0;
        for (std::size_t cell = 0; cell < shown; ++cell) {
            cells << rows.Text(cell);
            if (rows.Text(shown + cell).startsWith(QLatin1Char('-'))) global |= 1U << cell;
        }
        table.rows.push_back(cells);
        table.globalCells.push_back(global);
    }
    return table;
}

SheetTable PeriodTable(const std::vector<KeyedItem>& list) {
    SheetTable table;
    table.heads = {Heading(QStringLiteral("Comm_Time"))};
    for (const KeyedItem& item : list) {
        if (table.rows.size() == kMostRows) break;
        table.rows.push_back(item.cells);
        table.globalCells.push_back(0);
    }
    return table;
}

SheetTable AreaTable(const std::vector<KeyedItem>& list) {
    SheetTable table;
    table.heads = {Heading(QStringLiteral("Comm_Area Id")), Heading(QStringLiteral("Comm_Area Name"))};
    for (const KeyedItem& item : list) {
        if (table.rows.size() == kMostRows) break;
        table.rows.push_back({item.cells.value(1), item.cells.value(0)});
        table.globalCells.push_back(item.globalCells != 0 ? ~0U : 0U);
    }
    return table;
}

QString MakeSelectionSheet(const SheetTable& table) {
    const QString file = JoinPath({TempFolder, GetFreeFileName(QLatin1String(kTemplate))});
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(
        FindPath(
            JoinPath({AppPath, QStringLiteral("Bin/Template"), QLatin1String(kTemplate) + QStringLiteral(".xls")})),
        file);
    if (ShowGlobalColor) book.SetColors(GlobalSlot, ColorFromNumber(GlobalColor));
    office::Worksheet sheet = book.Sheet(1);
    office::Block block;
    block.emplace_back(table.heads.begin(), table.heads.end());
    const auto columns = static_cast<std::size_t>(table.heads.size());
    for (const QStringList& row : table.rows) {
        std::vector<office::Cell> cells(row.begin(), row.end());
        cells.resize(columns);
        block.push_back(std::move(cells));
    }
    const int rows = static_cast<int>(block.size());
    // Identifiers keep their leading zeros.
    sheet.Cells(1, 1, rows, 1).SetStyle({.numberFormat = QStringLiteral("@")});
    WriteTable(sheet, block);
    for (int row = 0; ShowGlobalColor && row < rows - 1; ++row)
        for (int cell = 0; cell < static_cast<int>(columns); ++cell)
            if (table.globalCells[static_cast<std::size_t>(row)] >> cell & 1U)
                sheet.Cells(row + 2, cell + 1).SetStyle({.fontColorIndex = GlobalSlot});
    book.Save();
    book.Close(false);
    return file;
}

} // namespace tessaro::selection
