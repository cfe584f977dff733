#include "office/Looks.h"

#include "office/Convert.h"

#include <com/sun/star/awt/FontSlant.hpp>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/CellVertJustify2.hpp>
#include <com/sun/star/text/WritingMode2.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

namespace tessaro::office {

namespace {

using com::sun::star::table::CellHoriJustify;
using com::sun::star::uno::Any;
using com::sun::star::uno::Sequence;

/// The same for texts in western, complex and East Asian scripts: a cell doesn't know which it will hold.
void ForAllScripts(SortedProperties& list, const std::string& name, const Any& value) {
    for (const char* script : {"", "Asian", "Complex"})
        list[name + script] = value;
}

void AddFont(SortedProperties& list, const CellStyle& style, const std::function<int(int)>& colour) {
    if (style.fontName) ForAllScripts(list, "CharFontName", Any(ToUno(*style.fontName)));
    if (style.latinFontName) list["CharFontName"] = Any(ToUno(*style.latinFontName));
    if (style.fontSize) ForAllScripts(list, "CharHeight", Any(static_cast<float>(*style.fontSize)));
    if (style.bold)
        ForAllScripts(
            list, "CharWeight",
            Any(*style.bold ? com::sun::star::awt::FontWeight::BOLD : com::sun::star::awt::FontWeight::NORMAL));
    if (style.italic)
        ForAllScripts(list, "CharPosture",
                      Any(*style.italic ? com::sun::star::awt::FontSlant_ITALIC : com::sun::star::awt::FontSlant_NONE));
    if (style.underline)
        list["CharUnderline"] = Any(static_cast<sal_Int16>(
            *style.underline ? com::sun::star::awt::FontUnderline::SINGLE : com::sun::star::awt::FontUnderline::NONE));
    if (style.fontColorIndex) list["CharColor"] = Any(static_cast<sal_Int32>(colour(*style.fontColorIndex)));
}

CellHoriJustify JustifyOf(Align align) {
    switch (align) {
    case Align::Left:
        return com::sun::star::table::CellHoriJustify_LEFT;
    case Align::Center:
        return com::sun::star::table::CellHoriJustify_CENTER;
    case Align::Right:
        return com::sun::star::table::CellHoriJustify_RIGHT;
    case Align::General:
        break;
    }
    return com::sun::star::table::CellHoriJustify_STANDARD;
}

sal_Int32 VerticalOf(VerticalAlign align) {
    namespace justify = com::sun::star::table::CellVertJustify2;
    return align == VerticalAlign::Top      ? justify::TOP
           : align == VerticalAlign::Center ? justify::CENTER
                                            : justify::BOTTOM;
}

} // namespace

PropertyList ListOf(const SortedProperties& sorted) {
    PropertyList list{Sequence<rtl::OUString>(static_cast<sal_Int32>(sorted.size())),
                      Sequence<Any>(static_cast<sal_Int32>(sorted.size()))};
    sal_Int32 place = 0;
    for (const auto& [name, value] : sorted) {
        list.names.getArray()[place] = Ascii(name.c_str());
        list.values.getArray()[place++] = value;
    }
    return list;
}

// Codes are in English. They are converted to the empty locale, which is that of the process: read directly in it,
// "0.0" could mean thousands, and a key of a fixed locale would write that locale's mark into the file.
sal_Int32 NumberFormatKey(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
                          const QString& code) {
    const auto formats = Need<com::sun::star::util::XNumberFormatsSupplier>(model)->getNumberFormats();
    const com::sun::star::lang::Locale own;
    if (code == QLatin1String("General"))
        return Need<com::sun::star::util::XNumberFormatTypes>(formats)->getStandardIndex(own);
    return formats->addNewConverted(ToUno(code), {"en", "US", ""}, own);
}

PropertyList LookProperties(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
                            const CellStyle& style, const std::function<int(int)>& colour) {
    SortedProperties list;
    AddFont(list, style, colour);
    if (style.interiorColorIndex)
        list["CellBackColor"] =
            Any(static_cast<sal_Int32>(*style.interiorColorIndex > 0 ? colour(*style.interiorColorIndex) : -1));
    if (style.horizontal) list["HoriJustify"] = Any(JustifyOf(*style.horizontal));
    if (style.vertical) list["VertJustify"] = Any(VerticalOf(*style.vertical));
    if (style.wrapText) list["IsTextWrapped"] = Any(*style.wrapText);
    if (style.rightToLeft)
        list["WritingMode"] = Any(*style.rightToLeft ? com::sun::star::text::WritingMode2::RL_TB
                                                     : com::sun::star::text::WritingMode2::LR_TB);
    if (style.orientation) list["RotateAngle"] = Any(static_cast<sal_Int32>(*style.orientation * 100));
    if (style.numberFormat) list["NumberFormat"] = Any(NumberFormatKey(model, *style.numberFormat));
    return ListOf(list);
}

SortedProperties FontProperties(const CellStyle& style, const std::function<int(int)>& colour) {
    SortedProperties list;
    AddFont(list, style, colour);
    return list;
}

} // namespace tessaro::office
