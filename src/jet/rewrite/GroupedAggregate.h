#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <vector>

namespace jet {

/// A condition "x = (SELECT Max(y) FROM t WHERE t.k = outer.k AND …)" reads t again for each outer row. Written as
/// "(x, outer.k) IN (SELECT Max(y), k FROM t WHERE … GROUP BY k)" it is the same test, and t is read once. Applied
/// where t stands for tables of the catalogue, every link to the outer query is an equality of two fields of one kind,
/// and the aggregate is not Count, which gives a value where there is no row. True when a condition was changed; `from`
/// is the FROM clause beside `where`.
bool GroupCorrelatedAggregates(const std::vector<tree::TableReferencePtr>& from, tree::ExpressionPtr& where,
                               const Catalogue& catalogue);

} // namespace jet
