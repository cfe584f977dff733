#include "gallery/PresentationPicture.h"

#include "gallery/GalleryFolder.h"
#include "gallery/PictureType.h"
#include "gallery/TableSlides.h"
#include "office/Error.h"

#include <algorithm>
#include <vector>

namespace tessaro {

namespace {

/// Sharp on any projector.
constexpr int kPixelWidth = 2400;

/// The active sheet, then all others.
std::vector<office::Worksheet> SheetsOf(const office::Workbook& book) {
    std::vector<office::Worksheet> sheets{book.ActiveSheet()};
    const int active = sheets.front().Number();
    for (int number = 1; number <= book.SheetCount(); ++number)
        if (number != active) sheets.push_back(book.Sheet(number));
    return sheets;
}

QByteArray MapOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.HasShape(kMapPicture)) return sheet.ShapeNamed(kMapPicture).AsPng(kPixelWidth);
    return {};
}

QByteArray ChartOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.ChartCount() > 0) return sheet.ChartAt(1).AsPicture(TypeForTexts(), kPixelWidth);
    return {};
}

bool Holds(const office::Workbook& book, QChar kind) {
    if (kind == QLatin1Char('T')) return HoldsTable(book);
    const std::vector<office::Worksheet> sheets = SheetsOf(book);
    return std::any_of(sheets.begin(), sheets.end(), [&](const office::Worksheet& sheet) {
        return kind == QLatin1Char('M') ? sheet.HasShape(kMapPicture) : sheet.ChartCount() > 0;
    });
}

} // namespace

QChar KindToCopy(const office::Workbook& book, const QString& name) {
    QList<QChar> kinds = PresentationKinds(name);
    if (kinds.size() == 1) return kinds.front();
    if (kinds.isEmpty()) kinds = {QLatin1Char('M'), QLatin1Char('G'), QLatin1Char('T')};
    const auto held = std::find_if(kinds.begin(), kinds.end(), [&](QChar kind) { return Holds(book, kind); });
    return held == kinds.end() ? kinds.front() : *held;
}

QByteArray PictureOfPresentation(const office::Workbook& book, QChar kind) {
    const bool map = kind == QLatin1Char('M');
    const bool graph = kind == QLatin1Char('G');
    const QByteArray picture = map ? MapOf(book) : graph ? ChartOf(book) : PictureOfTable(book);
    if (!picture.isEmpty()) return picture;
    throw office::Error(office::Failure::Call, map     ? QStringLiteral("there is no shape \"Picture 1\"")
                                               : graph ? QStringLiteral("there is no chart")
                                                       : QStringLiteral("the sheet is empty"));
}

} // namespace tessaro
