#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"
#include "office/Worksheet.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XViewFreezable.hpp>
#include <com/sun/star/sheet/XViewPane.hpp>
#include <com/sun/star/sheet/XViewSplitable.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::UNO_QUERY;
using Model = Document::Model;

SheetHeads PrintTitles(const Reference<com::sun::star::sheet::XSpreadsheet>& sheet) {
    const auto areas = Need<com::sun::star::sheet::XPrintAreas>(sheet);
    SheetHeads heads;
    if (areas->getPrintTitleRows()) heads.rows = areas->getTitleRows().EndRow + 1;
    if (areas->getPrintTitleColumns()) heads.columns = areas->getTitleColumns().EndColumn + 1;
    return heads;
}

sal_Int16 NumberOf(const Reference<com::sun::star::sheet::XSpreadsheet>& sheet) {
    return Need<com::sun::star::sheet::XCellRangeAddressable>(sheet)->getRangeAddress().Sheet;
}

/// The program computes the place of the split from pixels, so it may be one line too far. Unless it has been scrolled,
/// the last pane's first visible line is exact, so the smaller of the two is taken.
SheetHeads FrozenPanes(const Model& model, const Reference<com::sun::star::sheet::XSpreadsheet>& sheet) {
    const auto controller = model->getCurrentController();
    const Reference<com::sun::star::sheet::XSpreadsheetView> view(controller, UNO_QUERY);
    const Reference<com::sun::star::sheet::XViewFreezable> freezable(controller, UNO_QUERY);
    if (!view.is() || !freezable.is() || NumberOf(view->getActiveSheet()) != NumberOf(sheet)) return {};
    const auto panes = Need<com::sun::star::container::XIndexAccess>(controller);
    if (!freezable->hasFrozenPanes() || panes->getCount() == 0) return {};
    Reference<com::sun::star::sheet::XViewPane> last;
    panes->getByIndex(panes->getCount() - 1) >>= last;
    if (!last.is()) return {};
    const auto split = Need<com::sun::star::sheet::XViewSplitable>(controller);
    return {std::min(split->getSplitRow(), last->getFirstVisibleRow()),
            std::min(split->getSplitColumn(), last->getFirstVisibleColumn())};
}

void Hide(const Reference<com::sun::star::uno::XInterface>& lines) {
    Need<com::sun::star::beans::XPropertySet>(lines)->setPropertyValue("IsVisible", Any(false));
}

} // namespace

SheetHeads Worksheet::Heads() const {
    SheetHeads heads;
    document_->Run([&](const Model& model) {
        const auto sheet = SheetOf(model, number_);
        const SheetHeads printed = PrintTitles(sheet);
        const SheetHeads frozen = FrozenPanes(model, sheet);
        heads = {std::max(printed.rows, frozen.rows), std::max(printed.columns, frozen.columns)};
    });
    return heads;
}

void Worksheet::HideRows(int row, int lastRow) {
    document_->Run([&](const Model& model) {
        const auto range = RangeOf(model, number_, row, 1, lastRow, 1);
        Hide(Need<com::sun::star::table::XColumnRowRange>(range)->getRows());
    });
}

void Worksheet::HideColumns(int column, int lastColumn) {
    document_->Run([&](const Model& model) {
        const auto range = RangeOf(model, number_, 1, column, 1, lastColumn);
        Hide(Need<com::sun::star::table::XColumnRowRange>(range)->getColumns());
    });
}

} // namespace tessaro::office
