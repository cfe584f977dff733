#include "selection/SelectionSheet.h"

#include "office/SpreadsheetApplication.h"
#include "selection/IndicatorSelection.h"
#include "selection/SheetStatement.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "session/Templates.h"
#include "sheets/ListSheet.h"

namespace tessaro::selection {

namespace {

constexpr auto kTemplate = "INTERFACE_IND_TIME_AREA_DATA";

QString Heading(const QString& key) {
    return PlainText(key);
}

} // namespace

SheetTable IndicatorTable(const std::vector<KeyedItem>& list, int view, bool byCombination) {
    SheetTable table{.name = Heading(QStringLiteral("Comm_Indicator"))};
    const QStringList keys = SheetHeads(view, byCombination);
    for (const QString& key : keys)
        table.heads << Heading(key);
    if (list.empty()) return table;
    Records rows = Select(SheetStatement(view, byCombination, IdList(list)));
    const auto shown = static_cast<std::size_t>(keys.size());
    for (; !rows.atEnd(); rows.MoveNext()) {
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
    SheetTable table{.name = Heading(QStringLiteral("Comm_Time"))};
    table.heads = {table.name};
    for (const KeyedItem& item : list) {
        table.rows.push_back(item.cells);
        table.globalCells.push_back(0);
    }
    return table;
}

SheetTable AreaTable(const std::vector<KeyedItem>& list) {
    SheetTable table{.name = Heading(QStringLiteral("AREA"))};
    table.heads = {Heading(QStringLiteral("Comm_Area Id")), Heading(QStringLiteral("Comm_Area Name"))};
    for (const KeyedItem& item : list) {
        table.rows.push_back({item.cells.value(1), item.cells.value(0)});
        table.globalCells.push_back(item.globalCells != 0 ? ~0U : 0U);
    }
    return table;
}

QString MakeSelectionSheet(const SheetTable& table) {
    const QString file = GetFreeFileName(QLatin1String(kTemplate));
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(
        TemplateFile(QLatin1String(kTemplate) + QStringLiteral(".xls")), file);
    SetGlobalColor(book);
    std::size_t row = 0;
    const auto next = [&]() -> std::optional<ListRow> {
        if (row == table.rows.size()) return std::nullopt;
        const QStringList& texts = table.rows[row];
        return ListRow{{texts.begin(), texts.end()}, table.globalCells[row++]};
    };
    // Identifiers keep their leading zeros.
    WriteList(book, book.Sheet(1), {.name = table.name, .heads = table.heads, .next = next, .identifiers = 1});
    book.Save();
    book.Close(false);
    return file;
}

} // namespace tessaro::selection
