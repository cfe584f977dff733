#include "shell/SummaryReport.h"

#include "controls/SheetLook.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "shell/ReportTables.h"

#include <QLocale>

namespace tessaro {

namespace {

constexpr std::size_t kMostRows = 65534; ///< below the heading, with room for a note

void Fill(office::Worksheet& sheet, const ReportTable& table) {
    office::Block block;
    block.emplace_back(table.heads.begin(), table.heads.end());
    const auto columns = static_cast<std::size_t>(table.heads.size());
    for (const auto& row : table.rows) {
        if (block.size() > kMostRows) break;
        block.push_back(row);
        block.back().resize(columns);
    }
    if (table.rows.size() > kMostRows) {
        std::vector<office::Cell> note(columns);
        note.front() = GetText(QStringLiteral("TS_RowsLeftOut"))
                           .replace(QStringLiteral("%1"),
                                    QLocale::system().toString(static_cast<qlonglong>(table.rows.size() - kMostRows)));
        block.push_back(std::move(note));
    }
    WriteTable(sheet, block);
}

} // namespace

QString WriteSummaryReport(const std::function<void(int)>& done) {
    ErrorTrap trap("ValidationReportXLS");
    const auto database = CreateTheConnection(CurrentDatabase);
    if (!database) return {};
    office::Workbook book = office::SpreadsheetApplication::Instance().NewWorkbook(SummarySheets);
    for (int number = 1; number <= SummarySheets; ++number) {
        ReportTable table;
        trap.Try([&] { table = ReadReportTable(number, *database); });
        office::Worksheet sheet = book.Sheet(number);
        if (!table.name.isEmpty()) sheet.SetName(table.name);
        if (!table.heads.isEmpty()) Fill(sheet, table);
        if (done) done(number);
    }
    book.ActivateSheet(1);
    const QString file = JoinPath({TempFolder, GetFreeFileName(QStringLiteral("Summary"))});
    book.SaveAs(file);
    book.Close(false);
    return file;
}

QString WriteLogReport(LogKind kind) {
    ErrorTrap trap("LogReport");
    const QString blank = FindPath(JoinPath({AppPath, QStringLiteral("Bin/Template/Blank.Xls")}));
    const auto database = DatabaseOpen ? CreateTheConnection(CurrentDatabase) : nullptr;
    if (!database || !FileExists(blank)) {
        ShowMessage(QStringLiteral("011"));
        return {};
    }
    const QString file = JoinPath({TempFolder, GetFreeFileName(QStringLiteral("Template"))});
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(blank, file);
    office::Worksheet sheet = book.Sheet(1);
    Fill(sheet, ReadLogTable(kind == LogKind::Template, *database));
    book.Save();
    book.Close(false);
    return file;
}

} // namespace tessaro
