#pragma once

#include "map/classes/ClassBreaks.h"

#include <QString>

namespace tessaro {

/// A number with so many decimals, a half away from zero; without decimals cut downwards (2.5 gives "2", -2.4 "-3").
/// "." is the decimal point.
[[nodiscard]] QString FormatDecimals(double value, int decimals);
/// A number's text as the grid shows it: with the user's separators when that is set, else as it stands.
[[nodiscard]] QString FormatThousands(const QString& number);
/// A bound's cell: both of them. A bound that was edited to more decimals than `decimals` keeps all of them.
[[nodiscard]] QString BoundText(double bound, int decimals);
/// "from - to", the legend of a class until the user writes another.
[[nodiscard]] QString LegendOf(const ClassBreak& each, int decimals);

} // namespace tessaro
