#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// Runs grouped selects over one table that has a column image, joined with small tables, on the image. The rows of the
/// result are the same. Conditions on the large table may compare its value with a number, look a number up in a list,
/// or read the numbers that tell groups apart; aggregates may count its rows or values, or take the least, greatest,
/// sum, mean, spread or first of the values. Selects of any other shape are left alone. True when the query was
/// changed. The shapes: JoinedScan.h and ClassScan.h; RowScan.h for rows that are not grouped.
bool ScanColumns(tree::Query& query, const Catalogue& catalogue);
bool ScanColumns(tree::Transform& transform, const Catalogue& catalogue);

} // namespace jet
