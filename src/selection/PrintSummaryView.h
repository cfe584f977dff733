#pragma once

#include "controls/KeyedList.h"

namespace tessaro {

/// Turns what a selection list shows into a workbook and opens it for reading and printing. `kind` is "IND", "TIME" or
/// "AREA"; `view` is the classification view of "IND".
void PrintSummaryView(const QString& kind, const KeyedList& list, QWidget* form, int view = 0);

} // namespace tessaro
