#include "gallery/PresentationPicture.h"

#include "office/Error.h"

#include <optional>
#include <vector>

namespace tessaro {

namespace {

const QString kMapPicture = QStringLiteral("Picture 1");
const QString kMetafile = QStringLiteral("image/x-emf");
const QString kPng = QStringLiteral("image/png");
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

std::optional<PresentationPicture> MapOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.HasShape(kMapPicture)) return {{sheet.ShapeNamed(kMapPicture).AsPng(kPixelWidth), kPng}};
    return {};
}

std::optional<PresentationPicture> ChartOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.ChartCount() > 0) return {{sheet.ChartAt(1).AsPicture(kMetafile), kMetafile}};
    return {};
}

std::optional<PresentationPicture> TableOf(const office::Workbook& book) {
    const office::Range used = book.ActiveSheet().UsedRange();
    const bool empty = used.LastRow() == 1 && used.LastColumn() == 1 && used.Formula().isEmpty();
    if (empty) return {};
    return {{used.AsPicture(kMetafile), kMetafile}};
}

} // namespace

PresentationPicture PictureOfPresentation(const office::Workbook& book, QChar kind) {
    std::optional<PresentationPicture> picture;
    if (kind == QLatin1Char('M') || kind.isNull()) picture = MapOf(book);
    if (!picture && (kind == QLatin1Char('G') || kind.isNull())) picture = ChartOf(book);
    if (!picture && (kind == QLatin1Char('T') || kind.isNull())) picture = TableOf(book);
    if (picture && !picture->bytes.isEmpty()) return *picture;
    const QString what = kind == QLatin1Char('M')   ? QStringLiteral("there is no shape \"Picture 1\"")
                         : kind == QLatin1Char('G') ? QStringLiteral("there is no chart")
                                                    : QStringLiteral("the sheet is empty");
    throw office::Error(office::Failure::Call, what);
}

} // namespace tessaro
