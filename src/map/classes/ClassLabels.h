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

/// A number as it is shown, not stored: in languages from right to left a mark keeps its minus in front of it.
[[nodiscard]] QString NumberInReadingOrder(const QString& number);
/// A legend as it is shown: its one or two numbers marked like that, with the lower one first in the reading order.
/// Words stand as they are.
[[nodiscard]] QString LegendInReadingOrder(const QString& legend);

} // namespace tessaro
