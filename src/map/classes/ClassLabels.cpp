#include "map/classes/ClassLabels.h"

#include "map/classes/Decimals.h"
#include "session/DisplayValue.h"
#include "session/Strings.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace tessaro {

namespace {

constexpr auto kDash = " - ";
constexpr QChar kLeftToRightMark(0x200E);
constexpr QChar kRightToLeftMark(0x200F);

} // namespace

QString FormatDecimals(double value, int decimals) {
    const double cut = CutToDecimals(value, decimals);
    return WithDecimals(cut == 0 ? 0 : cut, std::max(decimals, 0)); // no "-0"
}

QString FormatThousands(const QString& number) {
    return DisplayedValue(number);
}

QString BoundText(double bound, int decimals) {
    const bool fits = CutToDecimals(bound, decimals) == bound;
    return FormatThousands(fits ? FormatDecimals(bound, decimals)
                                : QString::number(bound, 'f', QLocale::FloatingPointShortest));
}

QString LegendOf(const ClassBreak& each, int decimals) {
    return FormatThousands(FormatDecimals(each.from, decimals)) + QLatin1String(kDash) +
           FormatThousands(FormatDecimals(each.to, decimals));
}

QString NumberInReadingOrder(const QString& number) {
    return LanguageIsRightToLeft() ? kLeftToRightMark + number : number;
}

QString LegendInReadingOrder(const QString& legend) {
    if (!LanguageIsRightToLeft()) return legend;
    QStringList bounds = legend.split(QLatin1String(kDash));
    const auto isNumber = [](const QString& bound) { return NumberTyped(bound).has_value(); };
    if (bounds.size() > 2 || !std::all_of(bounds.begin(), bounds.end(), isNumber)) return legend;
    for (QString& bound : bounds)
        bound = kRightToLeftMark + NumberInReadingOrder(bound) + kRightToLeftMark;
    return bounds.join(QLatin1String(kDash));
}

} // namespace tessaro
