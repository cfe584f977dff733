#include "office/FirstPage.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"
#include "office/Transfer.h"

#include <QFile>
#include <QSizeF>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::container::XNameAccess;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using Model = Document::Model;

constexpr double kPixel = 72.0 / 96; ///< points; the page is drawn with so many pixels
constexpr double kMargin = 20;       ///< points on each side, so that nothing goes on to another page
constexpr double kLeast = 500;       ///< points; texts may run over their cells as far as an ordinary page is wide
constexpr double kMostScale = 4;

/// Up to the last cell with a value, and around all shapes, in points.
QSizeF SizeOf(const Worksheet& sheet) {
    QSizeF size = sheet.UsedRange().Size().expandedTo({kLeast, 1});
    for (const QString& name : sheet.ShapeNames()) {
        const QRectF place = sheet.ShapeNamed(name).Place();
        size = size.expandedTo({place.right(), place.bottom()});
    }
    return size;
}

Reference<XPropertySet> PageStyleOf(const Model& model) {
    rtl::OUString name;
    Need<XPropertySet>(SheetOf(model, 1))->getPropertyValue("PageStyle") >>= name;
    Reference<XNameAccess> styles;
    Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies()->getByName("PageStyles") >>= styles;
    Reference<XPropertySet> style;
    styles->getByName(name) >>= style;
    return style;
}

/// A paper on which everything has room at this scale: the program draws a page with a fixed number of pixels to the
/// inch, whatever size is asked for.
void SetPaper(const Reference<XPropertySet>& style, QSizeF content, double scale) {
    const auto length = [](double points) { return Any(static_cast<sal_Int32>(std::lround(points * kPoint))); };
    const QSizeF paper = content * scale + QSizeF(4 * kMargin, 4 * kMargin);
    style->setPropertyValue("IsLandscape", Any(paper.width() > paper.height()));
    style->setPropertyValue("Width", length(paper.width()));
    style->setPropertyValue("Height", length(paper.height()));
    for (const char* margin : {"LeftMargin", "RightMargin", "TopMargin", "BottomMargin"})
        style->setPropertyValue(Ascii(margin), length(kMargin));
    for (const char* line : {"HeaderIsOn", "FooterIsOn", "CenterHorizontally", "CenterVertically"})
        style->setPropertyValue(Ascii(line), Any(false));
    style->setPropertyValue("PageScale", Any(static_cast<sal_Int16>(100 * scale)));
}

} // namespace

QByteArray FirstSheetAsPng(const Workbook& book, int pixelWidth) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("page.png")));
    const QSizeF content = SizeOf(book.Sheet(1));
    const double scale = std::clamp(pixelWidth * kPixel / content.width(), 1.0, kMostScale);
    Known(book.document()).Run([&](const Model& model) {
        SetPaper(PageStyleOf(model), content, scale);
        Need<com::sun::star::frame::XStorable>(model)->storeToURL(
            FileUrl(file.fileName()), Properties({Property("FilterName", Any(Ascii("calc_png_Export")))}));
    });
    if (!file.open(QIODevice::ReadOnly)) throw Error(Failure::File, QStringLiteral("the page can't be drawn"));
    return file.readAll();
}

} // namespace tessaro::office
