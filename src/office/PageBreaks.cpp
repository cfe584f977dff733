#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"
#include "office/Worksheet.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetPageBreak.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::sheet::TablePageBreakData;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using Model = Document::Model;

constexpr sal_Int16 kLeastScale = 10; ///< percent; the program prints nothing smaller
constexpr sal_Int16 kFullScale = 100;
/// Pages side by side are printed up to so many percent smaller than their columns need. A break too many costs little.
constexpr int kSideBySideDrift = 4;

Reference<XPropertySet> PageStyleOf(const Model& model, int sheet) {
    rtl::OUString name;
    Need<XPropertySet>(SheetOf(model, sheet))->getPropertyValue("PageStyle") >>= name;
    Reference<com::sun::star::container::XNameAccess> styles;
    Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies()->getByName("PageStyles") >>= styles;
    Reference<XPropertySet> style;
    styles->getByName(name) >>= style;
    return style;
}

sal_Int16 Number(const Reference<XPropertySet>& style, const char* property) {
    sal_Int16 number = 0;
    style->getPropertyValue(Ascii(property)) >>= number;
    return number;
}

sal_Int32 LastUsedColumn(const Model& model, int sheet) {
    const auto cursor = SheetOf(model, sheet)->createCursor();
    Need<com::sun::star::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
    return Need<com::sun::star::sheet::XCellRangeAddressable>(cursor)->getRangeAddress().EndColumn;
}

/// A page style that fits a width reports page breaks for the smallest scale. This class sets each scale that may be
/// used in turn, and restores the fitting when it is destroyed.
class PrintedScale final {
  public:
    PrintedScale(const Model& model, int sheet)
        : breaks_(Need<com::sun::star::sheet::XSheetPageBreak>(SheetOf(model, sheet))),
          style_(PageStyleOf(model, sheet)), lastColumn_(LastUsedColumn(model, sheet)),
          wide_(Number(style_, "ScaleToPagesX")), high_(Number(style_, "ScaleToPagesY")) {
        if (wide_ > 0) scale_ = LargestScale();
    }
    ~PrintedScale() {
        if (wide_ == 0) return;
        try {
            style_->setPropertyValue("ScaleToPagesX", Any(wide_));
            style_->setPropertyValue("ScaleToPagesY", Any(high_));
        } catch (const com::sun::star::uno::Exception&) {
            // The process has ended, which the call itself tells.
        }
    }
    PrintedScale(const PrintedScale&) = delete;
    PrintedScale& operator=(const PrintedScale&) = delete;

    /// True when a page begins with this row, counted from 1, at one of the scales that may be printed.
    [[nodiscard]] bool BeginsPage(int row) const {
        if (wide_ == 0) return HasBreakBefore(row);
        const int least = std::max<int>(kLeastScale, scale_ - (wide_ > 1 ? kSideBySideDrift : 0));
        for (int scale = scale_; scale >= least; --scale) {
            style_->setPropertyValue("PageScale", Any(static_cast<sal_Int16>(scale)));
            if (HasBreakBefore(row)) return true;
        }
        return false;
    }

  private:
    [[nodiscard]] bool HasBreakBefore(int row) const {
        const Sequence<TablePageBreakData> rows = breaks_->getRowPageBreaks();
        return std::any_of(rows.begin(), rows.end(),
                           [row](const TablePageBreakData& found) { return found.Position == row - 1; });
    }
    [[nodiscard]] bool Fits(sal_Int16 scale) const {
        style_->setPropertyValue("PageScale", Any(scale));
        const Sequence<TablePageBreakData> columns = breaks_->getColumnPageBreaks();
        const auto inside = std::count_if(columns.begin(), columns.end(), [this](const TablePageBreakData& found) {
            return found.Position > 0 && found.Position <= lastColumn_;
        });
        return inside < wide_;
    }

    /// The largest whole percentage at which the columns fit their pages.
    [[nodiscard]] sal_Int16 LargestScale() const {
        if (Fits(kFullScale)) return kFullScale;
        sal_Int16 fits = kLeastScale;
        sal_Int16 tooLarge = kFullScale;
        while (tooLarge - fits > 1) {
            const auto between = static_cast<sal_Int16>((fits + tooLarge) / 2);
            (Fits(between) ? fits : tooLarge) = between;
        }
        return fits;
    }

    const Reference<com::sun::star::sheet::XSheetPageBreak> breaks_;
    const Reference<XPropertySet> style_;
    const sal_Int32 lastColumn_;
    const sal_Int16 wide_;
    const sal_Int16 high_;
    sal_Int16 scale_ = kFullScale;
};

} // namespace

void Worksheet::KeepWithNext(int row) {
    document_->Run([&](const Model& model) {
        if (!PrintedScale(model, number_).BeginsPage(row + 1)) return;
        const auto rows =
            Need<com::sun::star::table::XColumnRowRange>(RangeOf(model, number_, row, 1, row, 1))->getRows();
        Need<XPropertySet>(rows)->setPropertyValue("IsStartOfNewPage", Any(true));
    });
}

} // namespace tessaro::office
