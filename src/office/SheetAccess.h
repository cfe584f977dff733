#pragma once

#include "office/DocumentModel.h"

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XCellRange.hpp>

/// The sheets and cells of a workbook by their numbers from 1, on the worker thread.
namespace tessaro::office {

/// Throws Error for a sheet that there isn't.
[[nodiscard]] com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet> SheetOf(const DocumentModel& model,
                                                                                          int sheet);
[[nodiscard]] com::sun::star::uno::Reference<com::sun::star::table::XCellRange>
RangeOf(const DocumentModel& model, int sheet, int row, int column, int lastRow, int lastColumn);

} // namespace tessaro::office
