#include "exchange/DatabaseWorkbook.h"

#include "formats/FilesBeside.h"
#include "office/Error.h"
#include "office/ForeignWorkbook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Files.h"
#include "session/Strings.h"
#include "sheets/ListSheet.h"
#include "sheets/NewWorkbook.h"
#include "sheets/TimeLimit.h"
#include "sheets/UnfinishedFile.h"
#include "sheets/ValueCells.h"

#include <QScopeGuard>

namespace tessaro {

namespace {

constexpr int kValueField = 4;
constexpr int kFieldsPerValue = 9;

ListRow RowOf(const ValueRow& value) {
    ListRow row;
    const QStringList fields = ValueFields(value);
    for (qsizetype i = 0; i < fields.size(); ++i)
        row.cells.push_back(i == kValueField ? ValueCell(fields[i]) : TextCell(fields[i]));
    return row;
}

} // namespace

int SaveDatabaseWorkbook(const QString& file, const ValueTable& table) {
    const QString name = PlainText(QStringLiteral("TS_SheetData"));
    const bool isXls = file.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive);
    const auto timeLimit = qScopeGuard([] { GiveTimeFor(0); });
    int number = 0;
    int sheets = 0;
    const auto next = [&]() -> std::optional<ListRow> {
        while (number < table.count)
            if (const std::optional<ValueRow> row = table.at(number++)) return RowOf(*row);
        return std::nullopt;
    };
    const auto write = [&](office::Workbook& book) {
        office::Worksheet first = book.Sheet(1);
        first.SetName(name);
        sheets = WriteList(book, first, {.name = name, .heads = ValueHeads(), .next = next, .identifiers = 4});
        book.ActivateSheet(1);
        book.Save();
        if (!isXls) office::SaveCopyAs(book, file);
    };
    const UnfinishedFile made(MakeWorkbook(
        {QStringLiteral("TemplateExcel.xls"), QStringLiteral("Export"), table.count * kFieldsPerValue}, write));
    if (made.Path().isEmpty()) throw office::Error(office::Failure::File, QStringLiteral("TemplateExcel.xls"));
    // The program doesn't give the memory of so many cells back, and would have none left to read a workbook.
    if (sheets > 1) office::SpreadsheetApplication::Instance().Quit();
    if (isXls && !CopyFileOver(made.Path(), file)) throw office::Error(office::Failure::File, file);
    return sheets;
}

} // namespace tessaro
