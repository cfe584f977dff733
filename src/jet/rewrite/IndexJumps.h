#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// "SELECT DISTINCT number FROM table": where an index begins with the field, each number is looked up behind the one
/// before, as long as there are not very many. SQLite does so by itself where planner statistics tell that it pays; a
/// database that has just been filled has none yet, and SQLite reads all rows. The rows of the result and their order
/// are the same. True when the query was changed.
bool JumpThroughIndex(tree::Query& query, const Catalogue& catalogue);

} // namespace jet
