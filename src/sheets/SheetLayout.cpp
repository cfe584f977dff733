#include "sheets/SheetLayout.h"

#include "session/Strings.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kGapHeight = 11; ///< points, of the line between titles and table
constexpr double kUsualRow = 1.5; ///< of the font's size: what a sheet gives its rows
constexpr int kMeasuredPixels = 100;

} // namespace

void SetUpSheet(office::Worksheet& sheet, int titleRows, int firstColumn, int pagesWide) {
    if (titleRows > 0) sheet.FreezePanes(titleRows + 1, firstColumn);
    if (titleRows > 0 && LanguageIsRightToLeft()) sheet.SetRightToLeft(true);
    sheet.SetPageSetup({.landscape = true,
                        .fitToPagesWide = pagesWide,
                        .header = office::PageLine(),
                        .footer = office::PageLine(QStringLiteral("&P / &N")),
                        .titleRows = titleRows,
                        .titleColumns = pagesWide > 1 ? firstColumn - 1 : 0,
                        .centered = titleRows == 0});
}

void SetGap(office::Worksheet& sheet, int first, int last) {
    sheet.SetRowHeight(first, kGapHeight);
    if (last > first) sheet.HideRows(first + 1, last);
}

void SetLeading(office::CellStyle& look) {
    look.horizontal = LanguageIsRightToLeft() ? office::Align::Right : office::Align::Left;
    if (LanguageIsRightToLeft()) look.rightToLeft = true;
}

double TallRowHeight(const SheetFont& font) {
    if (font.name.isEmpty() || !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return 0;
    QFont face(font.name);
    face.setPixelSize(kMeasuredPixels);
    const double height = QFontMetricsF(face).height() / kMeasuredPixels;
    return height > kUsualRow ? height * font.size : 0;
}

void SetTallRows(office::Worksheet& sheet, int first, int last, int columns, const SheetFont& font) {
    const double height = TallRowHeight(font);
    if (height <= 0) return;
    sheet.Cells(first, 1, last, columns).SetStyle({.vertical = office::VerticalAlign::Center});
    sheet.SetRowHeights(first, last, height);
}

void SetTallDataRows(office::Worksheet& sheet, int first, int last, int columns, const SheetFont& body) {
    SheetFont font = TextFont(body);
    font.size = std::max(font.size, body.size);
    SetTallRows(sheet, first, last, columns, font);
}

void SendLooks(const office::Worksheet& sheet) {
    static_cast<void>(sheet.Cells(1, 1).Value()); // whatever is read has to be up to date
}

} // namespace tessaro
