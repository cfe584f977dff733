#pragma once

#include "jet/columns/Scan.h"

struct sqlite3;

namespace jet {

/// Runs the query of a plan's keys and finds the codes that pass, and their ranks. Throws Error: ColumnsUnfit for keys
/// that are no whole numbers, for a key that comes twice where each must be single, and for texts to rank that compare
/// as equal without being the same.
[[nodiscard]] PassingCodes ReadKeys(sqlite3* database, const ImageColumn& column, const ScanKeys& keys);

/// Rows of the image that have one of the codes.
[[nodiscard]] std::uint64_t RowsOf(const ImageColumn& column, const PassingCodes& codes);

} // namespace jet
