#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <vector>

namespace jet {

/// Runs selects of single rows of the large table on its image where SQLite would have to sort or compare all of them
/// before it gives the first one: DISTINCTROW of the large table's rows, and an order by anything but numbers of the
/// large table, which have indexes. The scan gives the rows in that order. True when the select was changed; `orderBy`
/// is empty then.
bool ScanInOrder(tree::Select& select, std::vector<tree::OrderItem>& orderBy, const Catalogue& catalogue);

} // namespace jet
