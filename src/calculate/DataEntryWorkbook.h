#pragma once

#include "calculate/DataEntry.h"
#include "calculate/LogWorkbook.h"
#include "office/Workbook.h"

namespace tessaro {

/// Writes a result into a copy of Data_DataEntry.xls in TempFolder, named after its indicator and unit. An earlier file
/// of that name is replaced. Throws office::Error.
[[nodiscard]] WrittenWorkbook WriteDataEntrySheet(const DataEntrySheet& result);

/// The result as an open data-entry sheet holds it now. Rows without a value are left out. Throws office::Error.
[[nodiscard]] DataEntrySheet ReadDataEntrySheet(const office::Workbook& book);

} // namespace tessaro
