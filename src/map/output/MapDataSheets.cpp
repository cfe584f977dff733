#include "map/output/MapDataSheets.h"

#include "office/Limits.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "sheets/ColumnWidths.h"
#include "sheets/FurtherSheets.h"
#include "sheets/PaletteSlots.h"
#include "sheets/SheetLayout.h"
#include "sheets/ValueCells.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kIndicatorRow = 3;
constexpr int kHeadRow = 5;
constexpr int kValueColumn = 4;
constexpr std::size_t kMostRows = office::kMaxRows - kHeadRow;

QString Plain(const char* key) {
    return PlainText(QLatin1String(key));
}

QString FormatOf(int decimals) {
    const QString whole = SysNumFormat ? QStringLiteral("#,##0") : QStringLiteral("0");
    return decimals > 0 ? whole + QLatin1Char('.') + QString(std::min(decimals, kMostDecimals), QLatin1Char('0'))
                        : whole;
}

office::CellStyle TextLook(const SheetFont& font) {
    office::CellStyle look = font.Style();
    look.numberFormat = QStringLiteral("@");
    SetLeading(look);
    return look;
}

/// Looks come before the values, as everywhere.
void Dress(office::Worksheet& sheet, int lastRow, int columns, int decimals, const SheetFont& font) {
    sheet.Cells(kIndicatorRow, 1, lastRow, columns).SetStyle(TextLook(TextFont(font)));
    office::CellStyle value = font.Style();
    value.numberFormat = FormatOf(decimals);
    value.horizontal = office::Align::Right;
    if (lastRow > kHeadRow) sheet.Cells(kHeadRow + 1, kValueColumn, lastRow, kValueColumn).SetStyle(value);
    sheet.Cells(kIndicatorRow, 1).SetStyle({.bold = true});
    office::Range heads = sheet.Cells(kHeadRow, 1, kHeadRow, columns);
    heads.SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot});
    heads.SetBorders(office::EdgeBottom, {});
    sheet.Cells(kHeadRow, kValueColumn).SetStyle({.horizontal = office::Align::Right});
}

std::vector<office::Cell> CellsOf(const QStringList& row, ColumnWidths& widths) {
    std::vector<office::Cell> cells;
    for (const QString& text : row) {
        const int column = static_cast<int>(cells.size()) + 1;
        widths.Add(column, text);
        cells.push_back(column == kValueColumn ? ValueCell(text) : TextCell(text));
    }
    return cells;
}

/// One sheet of rows from number `next` on, which it moves on.
void FillSheet(office::Worksheet& sheet, const MapValues& values, std::size_t& next, const QString& indicator,
               int decimals) {
    const SheetFont font = ListFont();
    SetUpSheet(sheet, kHeadRow, 1);
    sheet.SetPageSetup({.fitToPagesWide = 1, .titleRows = kHeadRow, .firstTitleRow = kHeadRow});
    office::Block block{{}};
    ColumnWidths widths;
    widths.Add(1, Plain("Comm_Indicator"));
    for (const QString& head : values.heads) {
        block.front().emplace_back(head);
        widths.AddHead(static_cast<int>(block.front().size()), head);
    }
    for (; next < values.rows.size() && block.size() <= kMostRows; ++next)
        block.push_back(CellsOf(values.rows[next], widths));
    const int last = kHeadRow + static_cast<int>(block.size()) - 1;
    const int columns = static_cast<int>(values.heads.size());
    Dress(sheet, last, columns, decimals, font);
    SendLooks(sheet);
    sheet.Cells(kIndicatorRow, 1).SetValues({{TextCell(Plain("Comm_Indicator")), TextCell(indicator)}});
    sheet.Cells(kHeadRow, 1).SetValues(block);
    widths.WriteTo(sheet, font);
    SetTallDataRows(sheet, kIndicatorRow, last, columns, font);
}

} // namespace

QStringList MapValueHeads() {
    QStringList heads;
    for (const char* key :
         {"Comm_Time", "Comm_Area Id", "Comm_Area Name", "Comm_Datavalue", "Comm_Unit", "Subpop", "Comm_Source"})
        heads << Plain(key);
    return heads;
}

MapValues ReadMapValues() {
    MapValues values{MapValueHeads(), {}};
    Records rows =
        Select(QStringLiteral("SELECT TimePeriod,AreaId,AreaName,DataValue,Unit,SubPop,Source FROM _MapData"),
               jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        QStringList row;
        for (qsizetype field = 0; field < values.heads.size(); ++field)
            row << rows.Text(static_cast<std::size_t>(field));
        values.rows.push_back(std::move(row));
    }
    return values;
}

QStringList SourcesOfMapData() {
    QStringList sources;
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT [Source] FROM [_MapData] ORDER BY [Source] "));
         !rows.atEnd(); rows.MoveNext())
        sources << rows.Text(std::size_t{0});
    return sources;
}

void WriteMapData(office::Workbook& book, int sheet, const MapValues& values, const QString& indicator, int decimals) {
    office::Worksheet first = book.Sheet(sheet);
    const QString name = Plain("TS_SheetData");
    first.SetName(name);
    std::size_t next = 0;
    FillSheets(book, first, name, [&](office::Worksheet& each) {
        FillSheet(each, values, next, indicator, decimals);
        return next < values.rows.size();
    });
}

void WriteMapSources(office::Worksheet sheet, const QStringList& sources) {
    const SheetFont font = ListFont();
    sheet.SetName(Plain("Comm_Source"));
    SetUpSheet(sheet, 1, 1);
    const int last = static_cast<int>(sources.size()) + 1;
    office::CellStyle look = TextLook(TextFont(font));
    look.wrapText = true;
    look.vertical = office::VerticalAlign::Top;
    sheet.Cells(1, 1, last, 2).SetStyle(look);
    sheet.Cells(1, 1, 1, 2).SetStyle({.bold = true, .interiorColorIndex = kHeaderSlot});
    sheet.Cells(1, 1, 1, 2).SetBorders(office::EdgeBottom, {});
    office::Block block{{TextCell(Plain("Comm_Source")), office::Cell()}};
    ColumnWidths widths;
    widths.AddHead(1, Plain("Comm_Source"));
    for (const QString& source : sources) {
        block.push_back({office::Cell(), TextCell(source)});
        widths.Add(2, source);
    }
    sheet.Cells(1, 1).SetValues(block);
    widths.WriteTo(sheet, font);
    sheet.Cells(1, 1, last, 2).AutoFitRows();
}

} // namespace tessaro
