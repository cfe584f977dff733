#pragma once

#include "controls/KeyedItem.h"

#include <QString>
#include <QStringList>

#include <vector>

/// The automatic selections: everything for which Data has rows under the selections of the other stages.
namespace tessaro::selection {

// --- Indicators.
// ----------------------------------------------------------------------------------------------------------

/// What an indicator filter is asked for.
struct IndicatorFilter {
    bool byTime = false;
    bool byArea = false;
    int view = 0;          ///< classification view; counts only while DataExistsCriterion is not empty
    bool onlyList = false; ///< limited to the ids in `list`
    QString list;          ///< ids of the Available items: numbers, or quoted GIds
};

/// The statements that make the working tables, in order: each DROP before its SELECT … INTO.
[[nodiscard]] QStringList IndicatorFilterTables(const IndicatorFilter& filter);
/// The query of the list, over the last of those tables.
[[nodiscard]] QString IndicatorFilterSql(const IndicatorFilter& filter);

/// What a filter found: list items (combinations, or indicators, which may repeat) and the IUSNIds as a comma list.
struct FoundIndicators {
    std::vector<KeyedItem> items;
    QString iusList;
};
/// Makes the working tables, runs the query and reads it. Moves the progress meter from 20 to 80.
[[nodiscard]] FoundIndicators FindIndicators(const IndicatorFilter& filter);

// --- Time.
// ----------------------------------------------------------------------------------------------------------------

[[nodiscard]] QString TimeFilterSql(bool byIndicators, bool byAreas);
[[nodiscard]] std::vector<KeyedItem> FindPeriods(bool byIndicators, bool byAreas);

// --- Areas.
// ---------------------------------------------------------------------------------------------------------------

[[nodiscard]] QString AreaFilterSql(bool byIndicators, bool byTime);
/// The same, limited to the direct children of a tree node (the top level for the root).
[[nodiscard]] QString AreaFilterBelowSql(bool byIndicators, bool byTime, const QString& nodeKey);
/// The same, limited to areas by their numbers.
[[nodiscard]] QString AreaFilterOfListSql(bool byIndicators, bool byTime, const QString& areaList);
/// The AreaNIds that such a query finds, as a comma list.
[[nodiscard]] QString FindAreas(const QString& sql);

} // namespace tessaro::selection
