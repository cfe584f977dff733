#include "office/SheetAccess.h"

#include "office/Convert.h"
#include "office/Error.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

namespace tessaro::office {

using com::sun::star::frame::XModel;
using com::sun::star::uno::Reference;

Reference<com::sun::star::sheet::XSpreadsheet> SheetOf(const Reference<XModel>& model, int sheet) {
    const auto sheets = Need<com::sun::star::container::XIndexAccess>(
        Need<com::sun::star::sheet::XSpreadsheetDocument>(model)->getSheets());
    Reference<com::sun::star::sheet::XSpreadsheet> found;
    sheets->getByIndex(sheet - 1) >>= found;
    if (!found.is()) throw Error(Failure::Call, QStringLiteral("there is no sheet %1").arg(sheet));
    return found;
}

Reference<com::sun::star::table::XCellRange> RangeOf(const Reference<XModel>& model, int sheet, int row, int column,
                                                     int lastRow, int lastColumn) {
    return SheetOf(model, sheet)->getCellRangeByPosition(column - 1, row - 1, lastColumn - 1, lastRow - 1);
}

} // namespace tessaro::office
