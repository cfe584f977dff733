#include "office/Convert.h"
#include "office/Document.h"
#include "office/Looks.h"
#include "office/SheetAccess.h"
#include "office/Worksheet.h"

#include <algorithm>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XHeaderFooterContent.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/text/XTextCursor.hpp>
#include <utility>

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

using StyleNames = Reference<com::sun::star::container::XNameContainer>;

rtl::OUString StyleNameOf(const Model& model, int sheet) {
    rtl::OUString name;
    Need<XPropertySet>(SheetOf(model, sheet))->getPropertyValue("PageStyle") >>= name;
    return name;
}

/// True when no other sheet has it, nor a new one would get it.
bool IsOwn(const Model& model, int sheet, const rtl::OUString& name) {
    if (name == "Default") return false;
    const int count = model.Sheets()->getCount();
    for (int other = 1; other <= count; ++other)
        if (other != sheet && StyleNameOf(model, other) == name) return false;
    return true;
}

Reference<XPropertySet> StyleNamed(const StyleNames& styles, const rtl::OUString& name) {
    Reference<XPropertySet> style;
    styles->getByName(name) >>= style;
    return style;
}

/// The page style that a sheet has for itself. A new document's sheets share one: then it gets a new one.
Reference<XPropertySet> PageStyleOf(const Model& model, int sheet) {
    const auto families = Need<com::sun::star::style::XStyleFamiliesSupplier>(model)->getStyleFamilies();
    StyleNames styles;
    families->getByName("PageStyles") >>= styles;
    const rtl::OUString name = StyleNameOf(model, sheet);
    if (IsOwn(model, sheet, name)) return StyleNamed(styles, name);
    const rtl::OUString own = ToUno(QStringLiteral("Tessaro page %1").arg(sheet));
    if (!styles->hasByName(own)) {
        styles->insertByName(own, Any(model.Factory()->createInstance("com.sun.star.style.PageStyle")));
        for (const char* line : {"HeaderIsOn", "FooterIsOn"})
            StyleNamed(styles, own)->setPropertyValue(Ascii(line), Any(false));
    }
    Need<XPropertySet>(SheetOf(model, sheet))->setPropertyValue("PageStyle", Any(own));
    return StyleNamed(styles, own);
}

/// The service of the field that a mark of two characters stands for; null for none.
const char* FieldOf(const QString& mark) {
    if (mark == QLatin1String("&P")) return "com.sun.star.text.TextField.PageNumber";
    if (mark == QLatin1String("&N")) return "com.sun.star.text.TextField.PageCount";
    return nullptr;
}

using Text = Reference<com::sun::star::text::XText>;

Reference<com::sun::star::text::XTextRange> EndOf(const Text& target) {
    const auto cursor = target->createTextCursor();
    cursor->gotoEnd(false);
    return Need<com::sun::star::text::XTextRange>(cursor);
}

void FillText(const Model& model, const Text& target, const QString& text) {
    target->setString(rtl::OUString());
    QString plain;
    const auto append = [&] { target->insertString(EndOf(target), ToUno(std::exchange(plain, {})), false); };
    for (qsizetype place = 0; place < text.size(); ++place) {
        const QString mark = text.mid(place, 2);
        const char* field = FieldOf(mark);
        if (field || mark == QLatin1String("&&")) ++place;
        if (!field) {
            plain += text.at(place);
            continue;
        }
        append();
        const auto content = model.Factory()->createInstance(Ascii(field));
        target->insertTextContent(EndOf(target), Need<com::sun::star::text::XTextContent>(content), false);
    }
    append();
}

void FillPart(const Model& model, const Text& target, const PageText& part, const std::function<int(int)>& colour) {
    if (part.text.isEmpty()) return target->setString(rtl::OUString());
    FillText(model, target, part.text);
    const auto cursor = target->createTextCursor();
    cursor->gotoStart(false);
    cursor->gotoEnd(true);
    const PropertyList looks = ListOf(FontProperties(part.font, colour));
    Need<com::sun::star::beans::XMultiPropertySet>(cursor)->setPropertyValues(looks.names, looks.values);
}

void FillLine(const Model& model, const Reference<XPropertySet>& style, const char* kind, const PageLine& line,
              const std::function<int(int)>& colour) {
    // The content is a copy: kept in a variable, changed, and given back.
    const rtl::OUString name = Ascii("RightPage") + Ascii(kind) + Ascii("Content");
    Reference<XHeaderFooterContent> content;
    style->getPropertyValue(name) >>= content;
    if (!content.is()) return;
    const Text left = content->getLeftText();
    const Text center = content->getCenterText();
    const Text right = content->getRightText();
    FillPart(model, left, line.left, colour);
    FillPart(model, center, line.center, colour);
    FillPart(model, right, line.right, colour);
    style->setPropertyValue(name, Any(content));
}

void AddPaper(SortedProperties& list) {
    list["Width"] = Any(kPageShort);
    list["Height"] = Any(kPageLong);
    for (const char* margin : {"LeftMargin", "RightMargin", "TopMargin", "BottomMargin"})
        list[margin] = Any(kMargin);
    list["FirstPageNumber"] = Any(sal_Int16(0)); // the one after the sheet before
}

void AddLandscape(SortedProperties& list, const Reference<XPropertySet>& style, bool landscape) {
    sal_Int32 width = kPageShort;
    sal_Int32 height = kPageLong;
    if (!list.contains("Width")) {
        style->getPropertyValue("Width") >>= width;
        style->getPropertyValue("Height") >>= height;
    }
    const auto [shorter, longer] = std::minmax(width, height);
    list["IsLandscape"] = Any(landscape);
    list["Width"] = Any(sal_Int32(landscape ? longer : shorter));
    list["Height"] = Any(sal_Int32(landscape ? shorter : longer));
}

/// All but the texts and the titles, in one call.
PropertyList PageProperties(const Reference<XPropertySet>& style, const PageSetup& setup) {
    SortedProperties list;
    if (setup.paper == Paper::A4) AddPaper(list);
    if (setup.landscape) AddLandscape(list, style, *setup.landscape);
    if (setup.centered) list["CenterHorizontally"] = list["CenterVertically"] = Any(*setup.centered);
    if (setup.gridLines) list["PrintGrid"] = Any(*setup.gridLines);
    if (setup.fitToPagesWide > 0) {
        list["ScaleToPagesX"] = Any(static_cast<sal_Int16>(setup.fitToPagesWide));
        list["ScaleToPagesY"] = Any(static_cast<sal_Int16>(setup.fitToPagesTall));
    }
    if (setup.header) list["HeaderIsOn"] = Any(!setup.header->IsEmpty());
    if (setup.footer) list["FooterIsOn"] = Any(!setup.footer->IsEmpty());
    return ListOf(list);
}

void SetTitles(const Reference<com::sun::star::sheet::XPrintAreas>& areas, sal_Int16 sheet, const PageSetup& setup) {
    if (setup.titleRows) {
        areas->setPrintTitleRows(*setup.titleRows > 0);
        if (*setup.titleRows > 0) areas->setTitleRows({sheet, 0, setup.firstTitleRow - 1, 0, *setup.titleRows - 1});
    }
    if (setup.titleColumns) {
        areas->setPrintTitleColumns(*setup.titleColumns > 0);
        if (*setup.titleColumns > 0) areas->setTitleColumns({sheet, 0, 0, *setup.titleColumns - 1, 0});
    }
    if (setup.printed) {
        const com::sun::star::table::CellRangeAddress cells(sheet, 0, 0, setup.printed->columns - 1,
                                                            setup.printed->rows - 1);
        areas->setPrintAreas(com::sun::star::uno::Sequence<com::sun::star::table::CellRangeAddress>(&cells, 1));
    }
}

} // namespace

void Worksheet::SetPageSetup(const PageSetup& setup) {
    document_->Run([&](const Model& model) {
        const auto style = PageStyleOf(model, number_);
        const auto colour = [this](int slot) { return document_->ColorNumber(slot); };
        const PropertyList list = PageProperties(style, setup);
        Need<com::sun::star::beans::XMultiPropertySet>(style)->setPropertyValues(list.names, list.values);
        if (setup.header && !setup.header->IsEmpty()) FillLine(model, style, "Header", *setup.header, colour);
        if (setup.footer && !setup.footer->IsEmpty()) FillLine(model, style, "Footer", *setup.footer, colour);
        SetTitles(Need<com::sun::star::sheet::XPrintAreas>(SheetOf(model, number_)),
                  static_cast<sal_Int16>(number_ - 1), setup);
    });
}

} // namespace tessaro::office
