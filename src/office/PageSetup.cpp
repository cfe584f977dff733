#include "office/Convert.h"
#include "office/Document.h"
#include "office/Worksheet.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XHeaderFooterContent.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::beans::XPropertySet;
using com::sun::star::sheet::XHeaderFooterContent;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;
using Model = Document::Model;

constexpr sal_Int32 kPageShort = 21000; ///< A4, 1/100 mm
constexpr sal_Int32 kPageLong = 29700;
constexpr sal_Int32 kMargin = 1500;

/// The page style of a sheet; a new document's sheets share one, so each gets its own.
Reference<XPropertySet> PageStyleOf(const Model& model, int sheet) {
    const auto families = Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies();
    Reference<com::sun::star::container::XNameContainer> styles;
    families->getByName("PageStyles") >>= styles;
    const auto properties = Need<XPropertySet>(Document::SheetOf(model, sheet));
    const rtl::OUString own = ToUno(QStringLiteral("Tessaro page %1").arg(sheet));
    if (!styles->hasByName(own)) {
        const auto factory = Need<com::sun::star::lang::XMultiServiceFactory>(model);
        styles->insertByName(own, Any(factory->createInstance("com.sun.star.style.PageStyle")));
    }
    properties->setPropertyValue("PageStyle", Any(own));
    Reference<XPropertySet> style;
    styles->getByName(own) >>= style;
    return style;
}

/// Text with "&P" and "&N" as fields.
void FillLine(const Model& model, const Reference<com::sun::star::text::XText>& target, const QString& text) {
    const auto factory = Need<com::sun::star::lang::XMultiServiceFactory>(model);
    target->setString(rtl::OUString());
    QString plain;
    const auto append = [&] {
        const auto cursor = target->createTextCursor();
        cursor->gotoEnd(false);
        target->insertString(Need<com::sun::star::text::XTextRange>(cursor), ToUno(plain), false);
        plain.clear();
    };
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QString mark = text.mid(place, 2);
        const char* field = mark == QLatin1String("&P")   ? "com.sun.star.text.TextField.PageNumber"
                            : mark == QLatin1String("&N") ? "com.sun.star.text.TextField.PageCount"
                                                          : nullptr;
        if (!field) {
            plain += text.at(place);
            continue;
        }
        append();
        const auto cursor = target->createTextCursor();
        cursor->gotoEnd(false);
        target->insertTextContent(Need<com::sun::star::text::XTextRange>(cursor),
                                  Need<com::sun::star::text::XTextContent>(factory->createInstance(Ascii(field))),
                                  false);
        ++place;
    }
    append();
}

void SetLine(const Model& model, const Reference<XPropertySet>& style, const char* isOn, const char* content,
             const QString& text) {
    style->setPropertyValue(Ascii(isOn), Any(!text.isEmpty()));
    if (text.isEmpty()) return;
    // The content is a copy: kept in a variable, changed, and given back.
    Reference<XHeaderFooterContent> line;
    style->getPropertyValue(Ascii(content)) >>= line;
    if (!line.is()) return;
    const auto left = line->getLeftText();
    const auto center = line->getCenterText();
    const auto right = line->getRightText();
    left->setString(rtl::OUString());
    right->setString(rtl::OUString());
    FillLine(model, center, text);
    style->setPropertyValue(Ascii(content), Any(line));
}

} // namespace

void Worksheet::SetPageSetup(const PageSetup& setup) {
    document_->Run([&](const Model& model) {
        const auto style = PageStyleOf(model, number_);
        style->setPropertyValue("IsLandscape", Any(setup.landscape));
        style->setPropertyValue("Width", Any(setup.landscape ? kPageLong : kPageShort));
        style->setPropertyValue("Height", Any(setup.landscape ? kPageShort : kPageLong));
        for (const char* margin : {"LeftMargin", "RightMargin", "TopMargin", "BottomMargin"})
            style->setPropertyValue(Ascii(margin), Any(kMargin));
        style->setPropertyValue("FirstPageNumber", Any(sal_Int16(0))); // the one after the sheet before
        style->setPropertyValue("CenterHorizontally", Any(setup.centered));
        style->setPropertyValue("CenterVertically", Any(setup.centered));
        style->setPropertyValue("PrintGrid", Any(setup.gridLines));
        if (setup.fitToPagesWide > 0) {
            style->setPropertyValue("ScaleToPagesX", Any(static_cast<sal_Int16>(setup.fitToPagesWide)));
            style->setPropertyValue("ScaleToPagesY", Any(sal_Int16(0)));
        }
        SetLine(model, style, "HeaderIsOn", "RightPageHeaderContent", setup.header);
        SetLine(model, style, "FooterIsOn", "RightPageFooterContent", setup.footer);
        const auto areas = Need<com::sun::star::sheet::XPrintAreas>(Document::SheetOf(model, number_));
        const auto sheet = static_cast<sal_Int16>(number_ - 1);
        areas->setPrintTitleRows(setup.titleRows > 0);
        if (setup.titleRows > 0) areas->setTitleRows({sheet, 0, 0, 0, setup.titleRows - 1});
        areas->setPrintTitleColumns(setup.titleColumns > 0);
        if (setup.titleColumns > 0) areas->setTitleColumns({sheet, 0, 0, setup.titleColumns - 1, 0});
    });
}

} // namespace tessaro::office
