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
/// One INSERT; the text goes in as it stands.
bool AddPeriod(const KeyedItem& period);
/// The same for each of them; written to disk together, one that fails leaves out only itself.
bool AddPeriods(const std::vector<KeyedItem>& periods);
bool RemovePeriods(const std::vector<KeyedItem>& periods);
bool RemoveAllPeriods();

} // namespace tessaro::selection
