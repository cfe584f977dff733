#pragma once

#include "controls/KeyedItem.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro::selection {

/// A selection list as a table for a sheet: heads and rows of texts, and which cells belong to global items.
struct SheetTable {
    QString name; ///< of the sheets, when one is not enough
    QStringList heads = {};
    std::vector<QStringList> rows = {};
    std::vector<quint32> globalCells = {}; ///< by row; bit n: cell n
};

/// "IND": the indicators of a list by classification view and mode; empty when the list is.
[[nodiscard]] SheetTable IndicatorTable(const std::vector<KeyedItem>& list, int view, bool byCombination);
/// "TIME": the list as it stands.
[[nodiscard]] SheetTable PeriodTable(const std::vector<KeyedItem>& list);
/// "AREA": the identifiers first, which the list has behind the names. A shared area colours its whole row.
[[nodiscard]] SheetTable AreaTable(const std::vector<KeyedItem>& list);

/// Writes the table into a copy of the template in TempFolder, over as many sheets as it needs, and gives the copy's
/// path. Throws office::Error.
[[nodiscard]] QString MakeSelectionSheet(const SheetTable& table);

} // namespace tessaro::selection
