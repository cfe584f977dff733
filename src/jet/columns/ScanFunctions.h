#pragma once

#include <string_view>

struct sqlite3;

namespace jet {

/// Registers the aggregates that put the figures of several groups of a scan together (see ScanTable.h).
void RegisterScanFunctions(sqlite3* database);

/// Told when an image is no longer that of its database.
inline constexpr std::string_view kStaleImage = "The column image is older than the database, or was changed.";

} // namespace jet
