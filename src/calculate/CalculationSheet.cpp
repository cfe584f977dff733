#include "calculate/CalculationSheet.h"

#include "sheets/SheetFont.h"
#include "sheets/SheetLayout.h"
#include "view/DataFilters.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kTitleSize = 14;

} // namespace

void WriteSheetTop(const office::Worksheet& sheet, const QString& title, const std::vector<HeaderLine>& lines) {
    SheetFont font = ListFont();
    font.bold = true;
    font.italic = true;
    font.size = std::max(font.size, kTitleSize);
    office::CellStyle look = font.Style();
    SetLeading(look);
    sheet.Cells(1, 1).SetStyle(look);
    sheet.Cells(1, 1).SetValue(title);
    office::CellStyle leading;
    SetLeading(leading);
    leading.numberFormat = QStringLiteral("@");
    for (const HeaderLine& line : lines) {
        sheet.Cells(line.row, 2).SetStyle(leading);
        sheet.Cells(line.row, 1).SetValues({{line.label, line.value}});
    }
}

QString CellText(const office::Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) return NumberText(*number);
    if (const auto* text = std::get_if<QString>(&cell)) return text->trimmed();
    return {};
}

} // namespace tessaro
