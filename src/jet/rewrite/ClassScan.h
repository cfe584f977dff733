#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// The same kind of SELECT as ScanJoined takes, where the numbers of the large table would give too many groups, where
/// the first row of each group is asked for, or where rows are made distinct: the small tables are joined among
/// themselves first, and the scan groups the rows by the fields that these give. The small tables are gone from the
/// statement then. Where its groups are those of the scan, it has no GROUP BY any more either, and `orderBy` gets the
/// order that GROUP BY gave. True when it was changed.
bool ScanClasses(tree::Select& select, std::vector<tree::OrderItem>* orderBy, const Catalogue& catalogue);
/// The same of a crosstab.
bool ScanClasses(tree::Transform& transform, const Catalogue& catalogue);

} // namespace jet
