#include "gallery/PresentationPicture.h"

#include "office/Error.h"
#include "session/Strings.h"

#include <algorithm>
#include <cmath>
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

std::optional<QByteArray> MapOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.HasShape(kMapPicture)) return sheet.ShapeNamed(kMapPicture).AsPng(kPixelWidth);
    return {};
}

/// A metafile puts the letters of joined scripts side by side, and mixes up lines of two directions.
const QString& TypeForTexts() {
    return LanguageIsRightToLeft() ? kPng : kMetafile;
}

std::optional<QByteArray> ChartOf(const office::Workbook& book) {
    for (const office::Worksheet& sheet : SheetsOf(book))
        if (sheet.ChartCount() > 0) return sheet.ChartAt(1).AsPicture(TypeForTexts(), kPixelWidth);
    return {};
}

/// Cells as a picture; a very large block, which nobody could read on a slide anyway, would take too many pixels.
QByteArray PictureOf(const office::Range& cells) {
    constexpr double kMostPoints = 20e6; // of its area
    const QSizeF size = cells.Size();
    return cells.AsPicture(size.width() * size.height() > kMostPoints ? kMetafile : TypeForTexts());
}

std::optional<QByteArray> TableOf(const office::Workbook& book) {
    const office::Range used = book.ActiveSheet().UsedRange();
    const bool empty = used.LastRow() == 1 && used.LastColumn() == 1 && used.Formula().isEmpty();
    if (empty) return {};
    return PictureOf(used);
}

constexpr int kHeadRows = 7;       ///< of a table that the wizard made: titles and heads
constexpr QSizeF kSlide(648, 486); ///< points within the margins of a slide
constexpr double kReadable = 0.6;  ///< of the text's own size
constexpr double kMostCounted = 1e6;

/// The used block of a table, apart from the rows that every part of it shows.
struct TableBlock {
    office::Range whole;
    office::Range head;
    office::Range body;
};

TableBlock BlockOf(const office::Workbook& book) {
    const office::Worksheet sheet = book.ActiveSheet();
    const office::Range used = sheet.UsedRange();
    const int first = std::min(kHeadRows, used.LastRow()) + 1;
    return {used, sheet.Cells(1, 1, first - 1, used.LastColumn()),
            sheet.Cells(first, 1, std::max(first, used.LastRow()), used.LastColumn())};
}

double ScaleOf(const QSizeF& size) {
    return std::min({kSlide.width() / size.width(), kSlide.height() / size.height(), 1.0});
}

} // namespace

QByteArray PictureOfPresentation(const office::Workbook& book, QChar kind) {
    std::optional<QByteArray> picture;
    if (kind == QLatin1Char('M') || kind.isNull()) picture = MapOf(book);
    if (!picture && (kind == QLatin1Char('G') || kind.isNull())) picture = ChartOf(book);
    if (!picture && (kind == QLatin1Char('T') || kind.isNull())) picture = TableOf(book);
    if (picture && !picture->isEmpty()) return *picture;
    const QString what = kind == QLatin1Char('M')   ? QStringLiteral("there is no shape \"Picture 1\"")
                         : kind == QLatin1Char('G') ? QStringLiteral("there is no chart")
                                                    : QStringLiteral("the sheet is empty");
    throw office::Error(office::Failure::Call, what);
}

int SlidesForTable(const office::Workbook& book) {
    const TableBlock block = BlockOf(book);
    const QSizeF size = block.whole.Size();
    const QSizeF head = block.head.Size();
    if (size.isEmpty() || ScaleOf(size) >= kReadable) return 1;
    const double scale = ScaleOf({size.width(), head.height() + 1}); // what the columns leave
    const double room = kSlide.height() / scale - head.height();
    if (room < head.height()) return 1; // a head that leaves nothing
    const double slides = std::ceil((size.height() - head.height()) / room);
    return static_cast<int>(std::min(slides, kMostCounted));
}

std::vector<QList<QByteArray>> PartsOfTable(const office::Workbook& book, int slides) {
    const TableBlock block = BlockOf(book);
    const office::Worksheet sheet = book.ActiveSheet();
    const int rows = block.body.LastRow() - block.body.Row() + 1;
    std::vector<QList<QByteArray>> parts;
    for (int n = 0; n < slides; ++n) {
        const int first = block.body.Row() + rows * n / slides;
        const int last = block.body.Row() + rows * (n + 1) / slides - 1;
        if (first > last) continue;
        parts.push_back({PictureOf(sheet.Cells(first, 1, last, block.body.LastColumn()))});
    }
    const QByteArray head = PictureOf(block.head); // the last one, as each is selected in its turn
    for (QList<QByteArray>& pictures : parts)
        pictures.prepend(head);
    return parts;
}

} // namespace tessaro
