#include "office/SheetAccess.h"

#include "office/Error.h"

namespace tessaro::office {

using com::sun::star::uno::Reference;

Reference<com::sun::star::sheet::XSpreadsheet> SheetOf(const DocumentModel& model, int sheet) {
    Reference<com::sun::star::sheet::XSpreadsheet> found;
    model.Sheets()->getByIndex(sheet - 1) >>= found;
    if (!found.is()) throw Error(Failure::Call, QStringLiteral("there is no sheet %1").arg(sheet));
    return found;
}

Reference<com::sun::star::table::XCellRange> RangeOf(const DocumentModel& model, int sheet, int row, int column,
                                                     int lastRow, int lastColumn) {
    return SheetOf(model, sheet)->getCellRangeByPosition(column - 1, row - 1, lastColumn - 1, lastRow - 1);
}

} // namespace tessaro::office
