#pragma once

#include "controls/KeyedItem.h"

#include <QString>

#include <vector>

/// The chosen indicators: what stands in _SelIUSNId, and the lists that are read for the screen. The mode
/// (IndicatorSelectBy) decides whether an item is a combination of indicator, unit and subpopulation, or an indicator
/// with all of its own.
namespace tessaro::selection {

/// True when items are combinations ("I" + IUSNId, three cells), False when they are indicators ("I" + IndicatorGId,
/// one cell).
[[nodiscard]] bool ByCombination();
/// The items' ids for an IN list, as the mode wants them.
[[nodiscard]] QString IdList(const std::vector<KeyedItem>& items);

/// The list of the current tree node. `from` and `where` come from the classification view.
[[nodiscard]] QString AvailableIndicatorsSql(const QString& from, const QString& where);
/// Items of such a query; rows without a text are passed over.
[[nodiscard]] std::vector<KeyedItem> AvailableIndicators(const QString& from, const QString& where);

/// What _SelIUSNId holds, as items.
[[nodiscard]] QString SelectedIndicatorsSql();
[[nodiscard]] std::vector<KeyedItem> SelectedIndicators();

// --- Writes. Each raises SelectionChanged.
// ------------------------------------------------------------------------------
[[nodiscard]] QString AddIndicatorsSql(const std::vector<KeyedItem>& items);
[[nodiscard]] QString AddIndicatorSql(const KeyedItem& item);
/// Takes in the items that are not there yet, with all their sources.
bool AddIndicators(const std::vector<KeyedItem>& items);
bool AddIndicator(const KeyedItem& item);
bool RemoveIndicators(const std::vector<KeyedItem>& items);
bool RemoveAllIndicators();
/// Empties the table and fills it with the combinations of a comma list.
bool ReplaceIndicators(const QString& iusList);

/// The items in the order of sector, class and indicator. Items that stand in no sector come behind, in their old
/// order.
[[nodiscard]] QString SectorOrderSql(const std::vector<KeyedItem>& items);
[[nodiscard]] std::vector<KeyedItem> SortedBySector(const std::vector<KeyedItem>& items);

} // namespace tessaro::selection
