#include "office/FirstPage.h"

#include "office/Convert.h"
#include "office/Document.h"
#include "office/SheetAccess.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
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

/// Height of the first sheet's paper for a width of 1.
double ProportionsOf(const Model& model) {
    rtl::OUString name;
    Need<XPropertySet>(SheetOf(model, 1))->getPropertyValue("PageStyle") >>= name;
    Reference<XNameAccess> styles;
    Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies()->getByName("PageStyles") >>= styles;
    Reference<XPropertySet> style;
    styles->getByName(name) >>= style;
    sal_Int32 width = 0;
    sal_Int32 height = 0;
    style->getPropertyValue("Width") >>= width;
    style->getPropertyValue("Height") >>= height;
    return static_cast<double>(height) / std::max<sal_Int32>(width, 1);
}

} // namespace

QByteArray FirstPageAsPng(const Workbook& book, int pixelWidth) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("page.png")));
    Known(book.document()).Run([&](const Model& model) {
        const auto pixelHeight = static_cast<sal_Int32>(pixelWidth * ProportionsOf(model));
        const auto size = Properties({Property("PixelWidth", Any(static_cast<sal_Int32>(pixelWidth))),
                                      Property("PixelHeight", Any(pixelHeight))});
        Need<com::sun::star::frame::XStorable>(model)->storeToURL(
            FileUrl(file.fileName()),
            Properties({Property("FilterName", Any(Ascii("calc_png_Export"))), Property("FilterData", Any(size))}));
    });
    if (!file.open(QIODevice::ReadOnly)) throw Error(Failure::File, QStringLiteral("the page can't be drawn"));
    return file.readAll();
}

} // namespace tessaro::office
