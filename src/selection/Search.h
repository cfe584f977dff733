#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

namespace tessaro::selection {

/// The indicators of a classification view with a text somewhere in their names: condition of the list's statement.
[[nodiscard]] QString SearchIndicatorsWhere(int view, const QString& text);
/// Areas with a text somewhere in their names, as the Available list shows them.
[[nodiscard]] QString SearchAreasSql(const QString& text);
[[nodiscard]] std::vector<KeyedItem> SearchAreas(const QString& text);

} // namespace tessaro::selection
