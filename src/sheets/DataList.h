#pragma once

#include "office/Workbook.h"
#include "sheets/SheetFont.h"

namespace tessaro {

/// Fills the sheet `first` of a presentation's workbook with all values in view, and as many further ones as they need.
/// A sheet that has the head already stays as it is. Throws office::Error.
void WriteDataList(office::Workbook& book, int first, const SheetFont& font);
/// The sheet of the sources that the values come from.
void WriteSourceSheet(office::Worksheet sheet, const SheetFont& font);

} // namespace tessaro
