#include "shell/SummaryReport.h"

#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/TempFiles.h"
#include "session/Templates.h"
#include "sheets/ListSheet.h"
#include "shell/ReportTables.h"

namespace tessaro {

namespace {

void Fill(office::Workbook& book, const office::Worksheet& sheet, const ReportTable& table) {
    const auto next = [&table, row = std::size_t{0}]() mutable -> std::optional<ListRow> {
        if (row == table.rows.size()) return std::nullopt;
        return ListRow{table.rows[row++]};
    };
    WriteList(book, sheet, {.name = table.name, .heads = table.heads, .next = next});
}

} // namespace

QString WriteSummaryReport(const std::function<void(int)>& done) {
    ErrorTrap trap("ValidationReportXLS");
    const auto database = CreateTheConnection(CurrentDatabase);
    if (!database) return {};
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(kSummarySheets);
    for (int number = 1; number <= kSummarySheets; ++number) {
        ReportTable table;
        trap.Try([&] { table = ReadReportTable(number, *database); });
        office::Worksheet sheet = book.Sheet(number);
        if (!table.name.isEmpty()) sheet.SetName(table.name);
        if (!table.heads.isEmpty()) Fill(book, sheet, table);
        if (done) done(number);
    }
    book.ActivateSheet(1);
    const QString file = GetFreeFileName(QStringLiteral("Summary"));
    book.SaveAs(file);
    book.Close(false);
    return file;
}

QString WriteLogReport(LogKind kind) {
    ErrorTrap trap("LogReport");
    const QString blank = TemplateFile(QStringLiteral("Blank.Xls"));
    const auto database = DatabaseOpen ? CreateTheConnection(CurrentDatabase) : nullptr;
    if (!database || !FileExists(blank)) {
        ShowMessage(QStringLiteral("011"));
        return {};
    }
    const QString file = GetFreeFileName(QStringLiteral("Template"));
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(blank, file);
    Fill(book, book.Sheet(1), ReadLogTable(kind == LogKind::Template, *database));
    book.Save();
    book.Close(false);
    return file;
}

} // namespace tessaro
