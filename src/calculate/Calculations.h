#pragma once

#include "calculate/CalculationLog.h"

/// Each calculation on its own; Calculate picks one and clears up behind it.
namespace tessaro {

[[nodiscard]] CalculationLog CalculatePerCent(const CalculationDraft& draft, const Progress& progress);
[[nodiscard]] CalculationLog CalculateHundredMinus(const CalculationDraft& draft);
[[nodiscard]] CalculationLog CalculateFormula(const CalculationDraft& draft, const Progress& progress);
[[nodiscard]] CalculationLog CalculateCompositeIndex(const CalculationDraft& draft, const Progress& progress);
[[nodiscard]] CalculationLog CalculateTransformUnit(const CalculationDraft& draft);
[[nodiscard]] CalculationLog CalculateSubtotal(const CalculationDraft& draft, const Progress& progress);

} // namespace tessaro
