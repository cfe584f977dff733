#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// A condition of HAVING that reads only number fields by which the rows are grouped holds for all rows of a group or
/// for none. It becomes a condition of WHERE, so that the engine groups fewer rows; and a field that it holds to one
/// value no longer tells groups apart. The groups of the result are the same. True when the query was changed.
bool FilterBeforeGrouping(tree::Query& query, const Catalogue& catalogue);

} // namespace jet
