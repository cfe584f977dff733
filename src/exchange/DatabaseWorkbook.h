#pragma once

#include "formats/ValueTable.h"

namespace tessaro {

/// Writes values as a workbook (.xls, .xlsx or .ods, by its name), one a row with its footnote, on as many sheets as
/// they need. Gives the number of sheets. Throws office::Error; the old file stays then.
int SaveDatabaseWorkbook(const QString& file, const ValueTable& table);

} // namespace tessaro
