#pragma once

#include "calculate/DataEntry.h"
#include "database/TargetDatabase.h"

#include <QString>

namespace tessaro {

/// Writes one result into a new database, without its former data. With `withDataView` the data in view and all that
/// they refer to are copied first; otherwise they are there already. Throws after reporting the failure.
void Write_New_File(TargetDatabase& target, const DataEntrySheet& result, bool withDataView);

} // namespace tessaro
