#pragma once

#include "calculate/CalculationLog.h"

/// Each calculation on its own; Calculate picks one and clears up behind it.
namespace tessaro {

[[nodiscard]] CalculationLog CalculatePerCent(const CalculationDraft& draft, const Progress& progress);

} // namespace tessaro
