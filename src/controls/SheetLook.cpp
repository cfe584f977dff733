#include "controls/SheetLook.h"

#include "session/Session.h"
#include "session/Settings.h"

namespace tessaro {

namespace {

constexpr int kWideTable = 5; ///< columns from which a page lies across

} // namespace

office::CellStyle SheetFont() {
    const bool english = Language.compare(Setting(QStringLiteral("ENG_LNG")), Qt::CaseInsensitive) == 0;
    double size = ProductFontSize;
    if (!english && SettingFlag(QStringLiteral("USE DEFAULT FONT SIZE")))
        size = SettingNumber(QStringLiteral("DEFAULT FONT SIZE"));
    return {.fontName = english ? Setting(QStringLiteral("DEFAULT FONT")) : ProductFont,
            .fontSize = size > 0 ? size : 10,
            .bold = ProductFontStyle == 2 || ProductFontStyle == 3,
            .italic = ProductFontStyle == 1 || ProductFontStyle == 3};
}

void DressTable(office::Worksheet& sheet, int rows, int columns) {
    if (rows < 1 || columns < 1) return;
    office::Range used = sheet.Cells(1, 1, rows, columns);
    used.SetStyle(SheetFont());
    sheet.Cells(1, 1, 1, columns).SetStyle({.bold = true, .interiorColorIndex = HeaderSlot});
    used.SetBorders(office::AllEdges, {office::LineWeight::Thin, office::LineStyle::Continuous, LineSlot});
    used.AutoFitColumns();
    sheet.SetPageSetup(
        {.landscape = columns >= kWideTable, .fitToPagesWide = 1, .footer = QStringLiteral("&P / &N"), .titleRows = 1});
    sheet.FreezePanes(2, 1);
}

} // namespace tessaro
