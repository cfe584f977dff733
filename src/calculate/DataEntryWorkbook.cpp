#include "calculate/DataEntryWorkbook.h"

#include "calculate/CalculationSheet.h"
#include "office/SpreadsheetApplication.h"
#include "platform/Paths.h"
#include "session/FileNames.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "session/Templates.h"
#include "sheets/ColumnWidths.h"
#include "sheets/LookRuns.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/TimeLimit.h"
#include "sheets/UnfinishedFile.h"
#include "sheets/ValueCells.h"

namespace tessaro {

namespace {

constexpr int kSectorRow = 3;
constexpr int kClassRow = 4;
constexpr int kIndicatorRow = 5;
constexpr int kUnitRow = 7;
constexpr int kHeadRow = 10;
constexpr int kFirstRow = 11;
enum Columns { TimeColumn = 1, AreaIdColumn, AreaNameColumn, ValueColumn, SubpopColumn, SourceColumn };

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

std::vector<HeaderLine> LinesOf(const DataEntrySheet& result) {
    return {{kSectorRow, Plain("Comm_Sector"), result.sector},
            {kClassRow, Plain("Comm_Class"), result.indicatorClass},
            {kIndicatorRow, Plain("Comm_Indicator"), result.indicator},
            {kUnitRow, Plain("Comm_Unit"), result.unit}};
}

std::vector<office::Cell> CellsOf(const DataEntryRow& row) {
    return {TextCell(row.timePeriod), TextCell(row.areaId), TextCell(row.areaName),
            ValueCell(row.value),     TextCell(row.subpop), TextCell(row.source)};
}

/// ".00" for "12.50": a number is shown with the digits that it is written with.
QString FormatOf(const QString& value) {
    const int decimals = DecimalsOf(value);
    if (decimals == 0) return QStringLiteral("General");
    const QString whole =
        value.startsWith(QLatin1Char('.')) || value.startsWith(QLatin1String("-.")) ? QString() : QStringLiteral("0");
    return whole + QLatin1Char('.') + QString(decimals, QLatin1Char('0'));
}

void WriteRows(office::Worksheet& sheet, const DataEntrySheet& result) {
    office::Block block{{Plain("Comm_Time"), Plain("Comm_Area Id"), Plain("Comm_Area Name"), Plain("Comm_Datavalue"),
                         Plain("Subpop"), Plain("Comm_Source")}};
    const std::vector<office::Cell> heads = block.front();
    ColumnWidths widths;
    for (std::size_t column = 0; column < heads.size(); ++column)
        widths.AddHead(static_cast<int>(column) + 1, std::get<QString>(heads[column]));
    LookRuns formats;
    for (const DataEntryRow& row : result.rows) {
        const QString texts[] = {row.timePeriod, row.areaId, row.areaName, row.value, row.subpop, row.source};
        for (int column = TimeColumn; column <= SourceColumn; ++column)
            widths.Add(column, texts[column - 1]);
        block.push_back(CellsOf(row));
        formats.Add(kHeadRow + static_cast<int>(block.size()) - 1, ValueColumn, {.numberFormat = FormatOf(row.value)});
    }
    for (const HeaderLine& line : LinesOf(result))
        widths.AddHead(1, line.label);
    const SheetFont font = ListFont();
    widths.WriteTo(sheet, font);
    const int last = kHeadRow + static_cast<int>(block.size()) - 1;
    office::Range all = sheet.Cells(1, 1, last, SourceColumn);
    all.SetStyle(font.Style());
    office::Range table = sheet.Cells(kHeadRow, 1, last, SourceColumn);
    office::CellStyle leading;
    SetLeading(leading);
    table.SetStyle(leading);
    sheet.Cells(kHeadRow, TimeColumn, last, AreaIdColumn).SetStyle({.numberFormat = QStringLiteral("@")});
    formats.WriteTo(sheet);
    office::Range headRow = sheet.Cells(kHeadRow, 1, kHeadRow, SourceColumn);
    headRow.SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot, .wrapText = true});
    for (int column = TimeColumn; column <= SourceColumn; ++column)
        if (widths.Wraps(column)) sheet.Cells(kFirstRow, column, last, column).SetStyle({.wrapText = true});
    table.SetBorders(office::AllEdges, {office::LineWeight::Thin, office::LineStyle::Continuous, kLineSlot});
    SetTallRows(sheet, 1, last, SourceColumn, font);
    SendLooks(sheet);
    sheet.Cells(kHeadRow, 1).SetValues(block);
    headRow.AutoFitRows();
}

QString CellAt(const office::Block& cells, int row, int column) {
    const auto r = static_cast<std::size_t>(row - 1);
    const auto c = static_cast<std::size_t>(column - 1);
    return r < cells.size() && c < cells[r].size() ? CellText(cells[r][c]) : QString();
}

} // namespace

WrittenWorkbook WriteDataEntrySheet(const DataEntrySheet& result) {
    const QString templateFile = TemplateFile(QStringLiteral("Data_DataEntry.xls"));
    if (!FileExists(templateFile)) return {{}, QStringLiteral("011")};
    const QString name =
        QStringLiteral("Data_") + result.indicator.trimmed() + QLatin1Char('_') + result.unit.trimmed();
    const QString stem = CutForDisk(MakeFileNameSafe(name));
    QFile::remove(JoinPath({TempFolder, stem + QStringLiteral(".xls")})); // an earlier one gives way
    UnfinishedFile file(GetFreeFileName(stem));
    GiveTimeFor(static_cast<int>(result.rows.size()) * SourceColumn);
    office::Workbook book = office::SpreadsheetApplication::Instance().OpenCopy(templateFile, file.Path());
    book.SetColors(kHeaderSlot, QColor(241, 241, 241));
    office::Worksheet sheet = book.Sheet(1);
    SetUpSheet(sheet, kHeadRow, AreaNameColumn + 1);
    sheet.SetPageSetup({.paper = office::Paper::Own, .titleRows = kHeadRow, .firstTitleRow = kHeadRow});
    WriteRows(sheet, result);
    WriteSheetTop(sheet, Plain("Data Entry Spreadsheet"), LinesOf(result));
    book.ActivateSheet(1);
    book.Save();
    book.Close(false);
    file.Keep();
    return {file.Path(), {}};
}

DataEntrySheet ReadDataEntrySheet(const office::Workbook& book) {
    const office::Block cells = book.Sheet(1).UsedRange().Values();
    DataEntrySheet result{CellAt(cells, kSectorRow, 2),
                          CellAt(cells, kClassRow, 2),
                          CellAt(cells, kIndicatorRow, 2),
                          CellAt(cells, kUnitRow, 2),
                          {}};
    for (int row = kFirstRow; row <= static_cast<int>(cells.size()); ++row) {
        DataEntryRow one{CellAt(cells, row, TimeColumn),     CellAt(cells, row, AreaIdColumn),
                         CellAt(cells, row, AreaNameColumn), CellAt(cells, row, ValueColumn),
                         CellAt(cells, row, SubpopColumn),   CellAt(cells, row, SourceColumn)};
        if (!one.value.isEmpty()) result.rows.push_back(std::move(one));
    }
    return result;
}

} // namespace tessaro
