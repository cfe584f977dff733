#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

namespace tessaro::selection {

/// The condition that finds the indicators of a classification view whose names contain a text.
[[nodiscard]] QString SearchIndicatorsWhere(int view, const QString& text);
/// The areas whose names contain a text, as items of the Available list.
[[nodiscard]] QString SearchAreasSql(const QString& text);
[[nodiscard]] std::vector<KeyedItem> SearchAreas(const QString& text);

} // namespace tessaro::selection
