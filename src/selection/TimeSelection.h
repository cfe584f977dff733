#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

/// The chosen periods: _SelTimePeriod, and the lists that are read for the screen. Keys are "T" + TimePeriodNId.
namespace tessaro::selection {

[[nodiscard]] QString AvailablePeriodsSql();
[[nodiscard]] std::vector<KeyedItem> AvailablePeriods();
[[nodiscard]] std::vector<KeyedItem> SelectedPeriods();

// --- Writes. Each raises SelectionChanged and gives False when a statement failed.
// ------------------------------------------------------------------------------
/// Inserts one period; a text that is too long for the column is cut.
bool AddPeriod(const KeyedItem& period);
/// The same for several, in one transaction. A period that can't be inserted does not stop the others.
bool AddPeriods(const std::vector<KeyedItem>& periods);
bool RemovePeriods(const std::vector<KeyedItem>& periods);
bool RemoveAllPeriods();

} // namespace tessaro::selection
