#include "gallery/TableSlides.h"

#include "gallery/PictureType.h"
#include "office/Error.h"
#include "office/SpreadsheetApplication.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessaro {

namespace {

constexpr QSizeF kSlide(648, 486); ///< points within the margins of a slide
constexpr double kReadable = 0.7;  ///< of the text's own size
constexpr double kMostParts = 1e6;

double ScaleFor(double width, double height) {
    return std::min({kSlide.width() / std::max(width, 1.0), kSlide.height() / std::max(height, 1.0), 1.0});
}

/// Cells as a picture; a very large block, which nobody could read on a slide anyway, would take too many pixels.
QByteArray PictureOf(const office::Range& cells) {
    constexpr double kMostPoints = 20e6; // of its area
    const QSizeF size = cells.Size();
    const bool large = size.width() * size.height() > kMostPoints;
    return cells.AsPicture(large ? MetafileType() : TypeForTexts());
}

double SumOf(const std::vector<double>& widths, int first, int last) {
    return std::accumulate(widths.begin() + first - 1, widths.begin() + last, 0.0);
}

/// Cuts the columns from `first` on into runs that are no wider than `most`; a wider column is a run of its own.
std::vector<SheetLines> ColumnRuns(const std::vector<double>& widths, int first, double most) {
    std::vector<SheetLines> runs;
    double width = 0;
    for (int column = first; column <= static_cast<int>(widths.size()); ++column) {
        const double own = widths[static_cast<std::size_t>(column - 1)];
        if (runs.empty() || width + own > most) {
            runs.push_back({column, column});
            width = 0;
        }
        runs.back().last = column;
        width += own;
    }
    return runs;
}

/// The fewest runs for the room, of about the same width.
std::vector<SheetLines> EvenColumnRuns(const std::vector<double>& widths, int first, double room) {
    const auto runs = ColumnRuns(widths, first, room);
    if (runs.size() < 2) return runs;
    const double all = SumOf(widths, first, static_cast<int>(widths.size()));
    const double widest = *std::max_element(widths.begin() + first - 1, widths.end());
    return ColumnRuns(widths, first, std::min(room, all / static_cast<double>(runs.size()) + widest));
}

std::vector<SheetLines> EvenRowRuns(int first, int rows, int parts) {
    std::vector<SheetLines> runs;
    const auto before = [&](int part) { return static_cast<int>(qint64(rows) * part / parts); };
    for (int n = 0; n < parts; ++n)
        runs.push_back({first + before(n), first + before(n + 1) - 1});
    return runs;
}

/// Hides the rows or columns between the heads and a run, and those after the run up to `last`.
template <class Hide> void HideAround(int heads, const SheetLines& run, int last, Hide&& hide) {
    if (run.first > heads + 1) hide(heads + 1, run.first - 1);
    if (run.last < last) hide(run.last + 1, last);
}

} // namespace

TableMeasures SizesOf(const office::Worksheet& sheet) {
    const office::Range used = sheet.UsedRange();
    TableMeasures sizes;
    sizes.heads = sheet.Heads();
    sizes.heads.rows = std::min(sizes.heads.rows, used.LastRow());
    sizes.heads.columns = std::min(sizes.heads.columns, used.LastColumn());
    for (int column = 1; column <= used.LastColumn(); ++column)
        sizes.columns.push_back(sheet.Cells(1, column).Size().width());
    if (sizes.heads.rows > 0) sizes.headHeight = sheet.Cells(1, 1, sizes.heads.rows, 1).Size().height();
    sizes.bodyHeight = used.Size().height() - sizes.headHeight;
    sizes.bodyRows = used.LastRow() - sizes.heads.rows;
    return sizes;
}

SlidePlan PlanSlides(const TableMeasures& sizes) {
    const int columns = static_cast<int>(sizes.columns.size());
    const double width = SumOf(sizes.columns, 1, columns);
    const double height = sizes.headHeight + sizes.bodyHeight;
    if (columns == 0 || ScaleFor(width, height) >= kReadable)
        return {{}, {{1, columns}}, {{1, sizes.heads.rows + sizes.bodyRows}}};

    SlidePlan plan{sizes.heads, {}, {}};
    const double roomAcross = kSlide.width() / kReadable;
    double headWidth = SumOf(sizes.columns, 1, plan.heads.columns);
    if (width <= roomAcross || headWidth > roomAcross / 2) {
        plan.heads.columns = 0;
        headWidth = 0;
    }
    plan.columns = EvenColumnRuns(sizes.columns, plan.heads.columns + 1, roomAcross - headWidth);
    double widest = 0;
    for (const SheetLines& run : plan.columns)
        widest = std::max(widest, headWidth + SumOf(sizes.columns, run.first, run.last));

    const double roomDown = kSlide.height() / std::max(ScaleFor(widest, 1), kReadable);
    int rows = sizes.bodyRows;
    double body = sizes.bodyHeight;
    double room = roomDown - sizes.headHeight;
    if (height <= roomDown || room < roomDown / 2) {
        plan.heads.rows = 0;
        rows += sizes.heads.rows;
        body = height;
        room = roomDown;
    }
    const double parts = std::clamp(std::ceil(body / room), 1.0, kMostParts);
    plan.rows = EvenRowRuns(plan.heads.rows + 1, rows, std::clamp(static_cast<int>(parts), 1, std::max(rows, 1)));
    return plan;
}

bool HoldsTable(const office::Workbook& book) {
    const office::Range used = book.ActiveSheet().UsedRange();
    return used.LastRow() > 1 || used.LastColumn() > 1 || !used.Formula().isEmpty();
}

QByteArray PictureOfTable(const office::Workbook& book) {
    return HoldsTable(book) ? PictureOf(book.ActiveSheet().UsedRange()) : QByteArray();
}

// The pictures are taken of a copy that isn't shown, in which everything else is hidden. So the workbook on show isn't
// touched, texts that run over their cell are drawn as on the sheet, and what the user has hidden stays hidden.
QList<QByteArray> PicturesOfTable(const office::Workbook& book, const SlidePlan& plan) {
    const QTemporaryDir place;
    const QString file = place.filePath(QStringLiteral("table.xls"));
    book.SaveCopy(file);
    const int number = book.ActiveSheet().Number();
    const office::Range used = book.ActiveSheet().UsedRange();
    QList<QByteArray> pictures;
    for (const SheetLines& rows : plan.rows) {
        for (const SheetLines& columns : plan.columns) {
            const office::Workbook copy = office::SpreadsheetApplication::Hosted().OpenWorkbook(file);
            office::Worksheet sheet = copy.Sheet(number);
            HideAround(plan.heads.rows, rows, used.LastRow(), [&](int a, int b) { sheet.HideRows(a, b); });
            HideAround(plan.heads.columns, columns, used.LastColumn(), [&](int a, int b) { sheet.HideColumns(a, b); });
            pictures << PictureOf(sheet.Cells(1, 1, used.LastRow(), used.LastColumn()));
        }
    }
    return pictures;
}

} // namespace tessaro
