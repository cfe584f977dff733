#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// A small table that is joined to another small one by texts, and to a large one by numbers, should be joined by its
/// texts first, since the large table can then be searched by the number as well. SQLite would rather find the small
/// table by its number, and reads all rows of the large one that the other conditions leave. Written as "large.k =
/// small.k + 0" the small table can't be found by the number. Of two such tables the one that is joined to the large
/// one by more numbers isn't found by its text either. The rows of the result are the same. True when the query was
/// changed.
bool JoinTextsFirst(tree::Query& query, const Catalogue& catalogue);

} // namespace jet
