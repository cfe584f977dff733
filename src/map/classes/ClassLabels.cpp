#include "map/classes/ClassLabels.h"

#include "map/classes/Decimals.h"
#include "session/DisplayValue.h"

#include <QLocale>

#include <algorithm>

namespace tessaro {

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
    return FormatThousands(FormatDecimals(each.from, decimals)) + QStringLiteral(" - ") +
           FormatThousands(FormatDecimals(each.to, decimals));
}

} // namespace tessaro
