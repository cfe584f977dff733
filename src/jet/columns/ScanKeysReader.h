#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"

struct sqlite3;

namespace jet {

/// Runs the query of a plan's keys and finds the codes that pass, and their ranks. Throws Error: ColumnsUnfit for keys
/// that are no whole numbers, for a key that comes twice where each must be single, and for texts to rank that compare
/// as equal without being the same.
[[nodiscard]] PassingCodes ReadKeys(sqlite3* database, const ImageColumn& column, const ScanKeys& keys);
/// The same of a side. `whole`: its classes must also differ where they are compared, not only in their letters.
[[nodiscard]] SideClasses ReadSide(sqlite3* database, const ColumnImage& image, const ScanSide& side, bool whole);

/// Rows of the image that have one of the codes.
[[nodiscard]] std::uint64_t RowsOf(const ImageColumn& column, const std::vector<std::uint8_t>& passes);
/// At most so many rows of the image pass a side.
[[nodiscard]] std::uint64_t RowsOf(const ColumnImage& image, const ScanSide& side, const SideClasses& classes);

} // namespace jet
