#include "office/Convert.h"
#include "office/Document.h"
#include "office/Range.h"
#include "office/SheetAccess.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/TableBorder2.hpp>

namespace tessaro::office {

namespace {

/// Widths in 1/100 mm that become the format's hair, thin, medium and thick lines.
sal_Int16 WidthOf(LineWeight weight) {
    switch (weight) {
    case LineWeight::Hairline:
        return 9;
    case LineWeight::Thin:
        return 35;
    case LineWeight::Medium:
        return 75;
    case LineWeight::Thick:
        return 100;
    case LineWeight::None:
        break;
    }
    return 0;
}

sal_Int16 StyleOf(const Border& border) {
    namespace style = com::sun::star::table::BorderLineStyle;
    if (border.weight == LineWeight::None) return style::NONE;
    return border.style == LineStyle::Dotted   ? style::DOTTED
           : border.style == LineStyle::Dashed ? style::DASHED
                                               : style::SOLID;
}

} // namespace

void Range::SetBorders(unsigned edges, const Border& border) {
    document_->Run([&](const Document::Model& model) {
        com::sun::star::table::BorderLine2 line;
        line.Color = document_->ColorNumber(border.colorIndex);
        line.OuterLineWidth = WidthOf(border.weight);
        line.LineWidth = static_cast<sal_uInt32>(line.OuterLineWidth);
        line.LineStyle = StyleOf(border);
        com::sun::star::table::TableBorder2 table;
        table.LeftLine = table.TopLine = table.RightLine = table.BottomLine = line;
        table.VerticalLine = table.HorizontalLine = line;
        table.IsLeftLineValid = (edges & EdgeLeft) != 0;
        table.IsTopLineValid = (edges & EdgeTop) != 0;
        table.IsRightLineValid = (edges & EdgeRight) != 0;
        table.IsBottomLineValid = (edges & EdgeBottom) != 0;
        table.IsVerticalLineValid = (edges & InsideVertical) != 0;
        table.IsHorizontalLineValid = (edges & InsideHorizontal) != 0;
        Need<com::sun::star::beans::XPropertySet>(RangeOf(model, sheet_, row_, column_, lastRow_, lastColumn_))
            ->setPropertyValue("TableBorder2", com::sun::star::uno::Any(table));
    });
}

} // namespace tessaro::office
