#include "sheets/ColumnWidths.h"

#include "session/Session.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr double kColumnGap = 2;     ///< digits that a column is wider than its text
constexpr double kUsualSize = 10;    ///< points of the font whose digits widths are counted in
constexpr double kBoldFactor = 1.1;  ///< how much wider bold texts are
constexpr double kLeastScale = 0.65; ///< a table that would be printed smaller goes over several pages
constexpr int kMeasuredPixels = 100;
constexpr double kUnitWidth = 0.525; ///< of a font's size: seven pixels at ten points
constexpr double kOtherFont = 1.1;   ///< the spreadsheet may have another font for the script, which is wider
constexpr double kDigitWidth = 1.09; ///< units; the digits of the usual fonts

/// How many units of a column's width the letter takes.
double WidthOf(QChar letter) {
    const ushort code = letter.unicode();
    if (letter.category() == QChar::Mark_NonSpacing) return 0;
    if (letter.isDigit()) return kDigitWidth;
    if ((code >= 0x2E80 && code < 0xD7B0) || (code >= 0xF900 && code < 0xFB00) || (code >= 0xFF00 && code < 0xFF60))
        return 1.9; // East Asian
    const bool wide =
        letter.isUpper() || letter.script() == QChar::Script_Cyrillic || QStringLiteral("mw%").contains(letter);
    return wide ? 1.25 : 1;
}

double SizeFactor(const SheetFont& font) {
    return std::max(font.size, 6.0) / kUsualSize * (font.bold ? kBoldFactor : 1);
}

/// Texts are as large as the language's font says, numbers as large as the table's.
double TextFactor(const SheetFont& font) {
    return std::max(SizeFactor(font), SizeFactor(TextFont(font)));
}

/// Scripts whose letters change their width with their neighbours.
bool HasJoinedLetters(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar letter) {
        return letter.script() == QChar::Script_Arabic || letter.script() == QChar::Script_Devanagari;
    });
}

/// The same by the language's own font, where there is one to measure with.
double MeasuredWidth(const QString& text) {
    QFont font(ProductFont);
    font.setPixelSize(kMeasuredPixels);
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return kOtherFont * widest / (kMeasuredPixels * kUnitWidth);
}

/// Width of the longest line, in the units of column widths.
double WidthOf(const QString& text) {
    if (HasJoinedLetters(text) && qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return MeasuredWidth(text);
    double widest = 0;
    double width = 0;
    for (const QChar letter : text) {
        width = letter == QLatin1Char('\n') ? 0 : width + WidthOf(letter);
        widest = std::max(widest, width);
    }
    return widest;
}

} // namespace

double TextWidth(const QString& text, const SheetFont& font) {
    return WidthOf(text) * SizeFactor(font);
}

void ColumnWidths::AddHead(int column, const QString& text) {
    double& width = widths_[column];
    width = std::max(width, std::min(WidthOf(text) * kBoldFactor, kWidestHead));
}

void ColumnWidths::Add(int column, const QString& text) {
    double& width = widths_[column];
    const double length = WidthOf(text);
    if (length > kWidestCell) wraps_[column] = true;
    width = std::max(width, std::min(length, kWidestCell));
}

bool ColumnWidths::Wraps(int column) const {
    return wraps_.count(column) > 0;
}

void ColumnWidths::FitToPage(const SheetFont& font) {
    const double room = kPageDigits / kLeastScale;
    const auto widthAt = [&](double widest) {
        double sum = 0;
        for (const auto& [column, width] : widths_)
            sum += std::min(width, widest) + kColumnGap;
        return sum * TextFactor(font);
    };
    double widest = kWidestCell;
    while (widest > kWidestHead && widthAt(widest) > room)
        --widest;
    if (widthAt(widest) > room) return;
    for (auto& [column, width] : widths_) {
        if (width <= widest) continue;
        width = widest;
        wraps_[column] = true;
    }
}

double ColumnWidths::SheetWidth(int column, const SheetFont& font) const {
    const auto found = widths_.find(column);
    if (found == widths_.end()) return 0;
    return (found->second + kColumnGap) * TextFactor(font);
}

int ColumnWidths::PagesFor(int titleColumns, const SheetFont& font) const {
    double titles = 0;
    double rest = 0;
    for (const auto& [column, width] : widths_)
        (column <= titleColumns ? titles : rest) += SheetWidth(column, font);
    const double page = kPageDigits / kLeastScale;
    const double room = std::max(page - titles, page / 4); // beside the titles, which every page repeats
    return std::max(1, static_cast<int>(std::ceil(rest / room)));
}

void ColumnWidths::WriteTo(office::Worksheet& sheet, const SheetFont& font) const {
    std::map<int, double> widths;
    for (const auto& [column, width] : widths_)
        widths[column] = SheetWidth(column, font);
    sheet.SetColumnWidths(widths);
}

} // namespace tessaro
