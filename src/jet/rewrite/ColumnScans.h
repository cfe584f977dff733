#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// A grouped SELECT over inner joins of one table that has a column image with small tables: the image's rows are put
/// into groups by the numbers by which the small tables join, or by which the rows are grouped, and SQLite joins,
/// filters and groups the few figures of these in place of the rows. Tables that only select rows by one number, or
/// give nothing but a least or greatest value, need not be joined at all. The rows of the result are the same.
/// Conditions on the large table may compare its value with a number, look a number up in a list, or read the numbers
/// that tell groups apart; aggregates may count its rows or values, or take the least, greatest, sum, mean or spread of
/// the values. Selects of any other shape are left alone. True when the query was changed.
bool ScanColumns(tree::Query& query, const Catalogue& catalogue);

/// A figure of the groups as the statement names it.
[[nodiscard]] inline std::string ScanFigureName(std::size_t figure) {
    return "jet$a" + std::to_string(figure);
}

} // namespace jet
