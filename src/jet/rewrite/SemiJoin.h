#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

namespace jet {

/// In a SELECT DISTINCT, tables that are joined in but give no column of the output only decide whether a row is there
/// at all. The engine would still walk every combination and throw the copies away, which on a table of millions of
/// rows is a thousand times the work. Such tables are turned into tests: "A.k IN (SELECT k FROM t)" for a single table
/// joined by one equality of numbers, which an index answers, and "EXISTS (SELECT 1 FROM … WHERE …)" for the rest,
/// which ends at the first row found. The rows of the result are the same. Selects of any other shape (outer joins,
/// derived tables, subqueries, totals, names that the catalogue can't place) are left alone. True when the query was
/// changed.
bool TurnJoinsIntoTests(tree::Query& query, const Catalogue& catalogue);

/// In an UPDATE over a join, tables that give no value only select the rows. Where they are small and joined to the
/// changed table by one equality of two fields, they become the condition "A.k IN (SELECT k FROM …)", so that SQLite
/// need not collect the rows before it changes them. The rows that change are the same. True when the statement was
/// changed.
bool TurnJoinsIntoTests(tree::Update& update, const Catalogue& catalogue);

} // namespace jet
