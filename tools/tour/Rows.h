#pragma once

#include "controls/KeyedList.h"

#include <vector>

namespace tessaro {

/// The rows of a list in the order of their keys: the same in every language.
[[nodiscard]] std::vector<int> RowsByKey(const KeyedListModel& items);

/// Selects these rows and no others, with the focus in the list.
void SelectRows(KeyedList& list, const std::vector<int>& rows);

} // namespace tessaro
