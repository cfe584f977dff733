#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// A grouped SELECT over inner joins of one table that has a column image with small tables: the image's rows are put
/// into groups by the numbers by which the small tables join, or by which the rows are grouped, and SQLite joins,
/// filters and groups the few figures of these in place of the rows. Tables that only select rows by one number, or
/// give nothing but a least or greatest value, need not be joined at all. `orderBy` belongs to the SELECT. True when it
/// was changed.
bool ScanJoined(tree::Select& select, const std::vector<tree::OrderItem>& orderBy, const Catalogue& catalogue);

} // namespace jet
