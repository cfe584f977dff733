#pragma once

#include "calculate/DataEntry.h"
#include "calculate/TargetDatabase.h"

#include <QString>

namespace tessaro {

/// Writes one result into a database whose data go. With `withDataView` the data in view and all that they refer to
/// come first, else that is there already. Throws; what failed is reported.
void Write_New_File(TargetDatabase& target, const DataEntrySheet& result, bool withDataView);

} // namespace tessaro
