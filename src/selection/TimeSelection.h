#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

/// The chosen periods: _SelTimePeriod, and the lists that are read for the screen. Keys are "T" + TimePeriodNId.
namespace tessaro::selection {

[[nodiscard]] QString AvailablePeriodsSql();
[[nodiscard]] std::vector<KeyedItem> AvailablePeriods();
[[nodiscard]] std::vector<KeyedItem> SelectedPeriods();

// --- Writes. Each raises SelectionChanged.
// ------------------------------------------------------------------------------
/// One INSERT; the text goes in as it stands.
void AddPeriod(const KeyedItem& period);
/// The same for each of them; written to disk together, one that fails leaves out only itself.
void AddPeriods(const std::vector<KeyedItem>& periods);
void RemovePeriods(const std::vector<KeyedItem>& periods);
void RemoveAllPeriods();

} // namespace tessaro::selection
