#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

/// The selected indicators (table _SelIUSNId) and the lists of the indicator screen. By the mode (IndicatorSelectBy) an
/// item is a combination of indicator, unit and subpopulation, or an indicator with all its combinations.
namespace tessaro::selection {

/// True when items are combinations ("I" + IUSNId, three cells), False when they are indicators ("I" + IndicatorGId,
/// one cell).
[[nodiscard]] bool ByCombination();
/// The items' ids for an IN list: numbers of combinations, or quoted GIds of indicators.
[[nodiscard]] QString IdList(const std::vector<KeyedItem>& items);

/// The list of the current tree node. `from` and `where` come from the classification view.
[[nodiscard]] QString AvailableIndicatorsSql(const QString& from, const QString& where);
/// The rows of such a query as list items; rows without a text are left out.
[[nodiscard]] std::vector<KeyedItem> AvailableIndicators(const QString& from, const QString& where);

/// The rows of _SelIUSNId as list items.
[[nodiscard]] QString SelectedIndicatorsSql();
[[nodiscard]] std::vector<KeyedItem> SelectedIndicators();

// --- Writes. Each raises SelectionChanged.
// ------------------------------------------------------------------------------
[[nodiscard]] QString AddIndicatorsSql(const std::vector<KeyedItem>& items);
[[nodiscard]] QString AddIndicatorSql(const KeyedItem& item);
/// Adds the items that are not selected yet, one row for each of their sources.
bool AddIndicators(const std::vector<KeyedItem>& items);
bool AddIndicator(const KeyedItem& item);
bool RemoveIndicators(const std::vector<KeyedItem>& items);
bool RemoveAllIndicators();
/// Empties the table and fills it with the combinations of a comma list.
bool ReplaceIndicators(const QString& iusList);

/// The items in the order of sector, class and indicator. Items without a sector follow in their old
/// order.
[[nodiscard]] QString SectorOrderSql(const std::vector<KeyedItem>& items);
[[nodiscard]] std::vector<KeyedItem> SortedBySector(const std::vector<KeyedItem>& items);

} // namespace tessaro::selection
