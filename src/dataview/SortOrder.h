#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

namespace tessaro {

/// The sort panel's columns: keys are sort expressions; a marked one goes downwards.
namespace sorting {
/// All columns that can be sorted by, with their captions, ascending.
[[nodiscard]] std::vector<KeyedItem> AvailableColumns();
/// The column that the data view is sorted by until the user decides.
[[nodiscard]] QString DefaultColumn();
} // namespace sorting

/// " ORDER BY " and the columns in order with their directions; empty without columns.
[[nodiscard]] QString OrderByColumns(const std::vector<KeyedItem>& columns);

} // namespace tessaro
