#include "sheets/DataList.h"

#include "session/Query.h"
#include "session/Strings.h"
#include "sheets/ColumnWidths.h"
#include "sheets/FurtherSheets.h"
#include "sheets/LookRuns.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/ValueCells.h"
#include "view/InView.h"
#include "view/SourcesAndNotes.h"

namespace tessaro {

namespace {

constexpr int kValueColumn = 5;
constexpr int kListColumns = 8;

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

std::vector<office::Cell> ListHead() {
    std::vector<office::Cell> head;
    for (const char* key : {"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Indicator", "Comm_Datavalue",
                            "Comm_Unit", "Subpop", "Comm_Source"})
        head.emplace_back(Plain(key));
    return head;
}

Records ListRows() {
    return Select(QStringLiteral("SELECT T.TimePeriod, A.AreaId, A.AreaName, IUS.[Indicator], D.Datavalue, IUS.Unit, "
                                 "IUS.Subpop, IUS.Source") +
                      InView(joins::kDataList),
                  jet::CursorType::ForwardOnly);
}

/// The look of a list of values: body font on the numbers, the language's font on all that is text.
void DressList(office::Worksheet& sheet, int rows, const SheetFont& font) {
    office::CellStyle text = TextFont(font).Style();
    text.numberFormat = QStringLiteral("@");
    SetLeading(text);
    office::CellStyle value = font.Style();
    value.horizontal = office::Align::Right;
    sheet.Cells(1, 1, rows, kValueColumn - 1).SetStyle(text);
    sheet.Cells(1, kValueColumn + 1, rows, kListColumns).SetStyle(text);
    if (rows > 1) sheet.Cells(2, kValueColumn, rows, kValueColumn).SetStyle(value);
    office::CellStyle head = TextFont(font).Style();
    head.bold = true;
    head.interiorColorIndex = kHeaderSlot;
    sheet.Cells(1, 1, 1, kListColumns).SetStyle(head);
    sheet.Cells(1, kValueColumn).SetStyle({.horizontal = office::Align::Right});
    sheet.Cells(1, 1, 1, kListColumns).SetBorders(office::EdgeBottom, {});
}

/// One sheet of values from the record on.
void FillListSheet(office::Worksheet sheet, Records& records, const SheetFont& font) {
    SetUpSheet(sheet, 1, 1);
    office::Block block{ListHead()};
    LookRuns formats;
    ColumnWidths widths;
    for (int column = 1; column <= kListColumns; ++column)
        widths.AddHead(column, std::get<QString>(block.front()[static_cast<std::size_t>(column - 1)]));
    for (; !records.atEnd() && block.size() <= kRowsBelowHead; records.MoveNext()) {
        std::vector<office::Cell> row;
        for (int column = 1; column <= kListColumns; ++column) {
            const QString text = records.Text(static_cast<std::size_t>(column - 1));
            widths.Add(column, text);
            row.push_back(column == kValueColumn ? ValueCell(text) : TextCell(text));
            if (column == kValueColumn)
                formats.Add(static_cast<int>(block.size()) + 1, column, {.numberFormat = ValueFormat(text)});
        }
        block.push_back(std::move(row));
    }
    const int rows = static_cast<int>(block.size());
    DressList(sheet, rows, font);
    formats.WriteTo(sheet);
    SendLooks(sheet);
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet, font);
    SetTallDataRows(sheet, 1, rows, kListColumns, font);
}

} // namespace

void WriteDataList(office::Workbook& book, int first, const SheetFont& font) {
    office::Worksheet sheet = book.Sheet(first);
    const office::Cell corner = sheet.Cells(1, 1).Value();
    if (const auto* text = std::get_if<QString>(&corner); text && *text == Plain("Comm_Time")) return;
    const QString name = Plain("TS_SheetData");
    sheet.SetName(name);
    Records records = ListRows();
    FillSheets(book, sheet, name, [&](office::Worksheet& next) {
        FillListSheet(next, records, font);
        return !records.atEnd();
    });
}

void WriteSourceSheet(office::Worksheet sheet, const SheetFont& font) {
    sheet.SetName(Plain("Comm_Source"));
    SetUpSheet(sheet, 1, 1);
    office::Block block{{Plain("Comm_Source")}};
    ColumnWidths widths;
    widths.AddHead(1, Plain("Comm_Source"));
    for (const QString& source : SourcesOfSelection()) {
        block.push_back({TextCell(source)});
        widths.Add(1, source);
    }
    office::Range list = sheet.Cells(1, 1, static_cast<int>(block.size()), 1);
    office::CellStyle look = TextFont(font).Style();
    look.numberFormat = QStringLiteral("@");
    look.wrapText = true;
    SetLeading(look);
    look.vertical = office::VerticalAlign::Top;
    list.SetStyle(look);
    sheet.Cells(1, 1).SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot});
    sheet.Cells(1, 1).SetBorders(office::EdgeBottom, {});
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet, font);
    list.AutoFitRows();
}

} // namespace tessaro
