#pragma once

#include <QString>

namespace tessaro {

/// The six calculations, by the numbers that the data view's list gives them.
enum class CalcType { PerCent = 0, HundredMinus, Formula, CompositeIndex, TransformUnit, Subtotal };
constexpr int kCalculations = 6;

/// How a calculation is called.
struct CalculationNames {
    const char* moduleKey;       ///< its name in logs, as a key of the string table
    const char* titleKey;        ///< the title of its wizard, likewise
    const char* fileStem;        ///< begins the name of its log file, "Per cent ("
    const char* templateMissing; ///< key of the message when a template isn't there
};
[[nodiscard]] const CalculationNames& NamesOf(CalcType type);

} // namespace tessaro
