#include "office/Formulas.h"

#include "office/Convert.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <iterator>

namespace tessaro::office {

namespace {

using com::sun::star::sheet::XFormulaParser;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;

constexpr sal_Int16 kOwnGrammar = 0;   ///< FormulaConvention: the program's own
constexpr sal_Int16 kUsualGrammar = 3; ///< FormulaConvention: as spreadsheet programs write it, with commas

Reference<XFormulaParser> ParserOf(const Document::Model& model, sal_Int16 convention) {
    const auto factory = Need<com::sun::star::lang::XMultiServiceFactory>(model);
    const auto parser = Need<XFormulaParser>(factory->createInstance("com.sun.star.sheet.FormulaParser"));
    const auto properties = Need<com::sun::star::beans::XPropertySet>(parser);
    properties->setPropertyValue("CompileEnglish", Any(true));
    properties->setPropertyValue("FormulaConvention", Any(convention));
    return parser;
}

/// Both grammars say it in the same way: no lists, other sheets, texts or names. Most formulas of a block are such.
bool ReadsAlike(const QString& formula) {
    constexpr char16_t kTold[] = u"=+-*/^():<>%$ ";
    return std::all_of(formula.begin(), formula.end(), [&](QChar letter) {
        return (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) ||
               (letter >= QLatin1Char('A') && letter <= QLatin1Char('Z')) ||
               std::find(std::begin(kTold), std::end(kTold), letter.unicode()) != std::end(kTold);
    });
}

rtl::OUString Translated(const rtl::OUString& formula, const FormulaTranslator::Address& cell,
                         const Reference<XFormulaParser>& from, const Reference<XFormulaParser>& to) {
    return Ascii("=") + to->printFormula(from->parseFormula(formula.copy(1), cell), cell);
}

} // namespace

FormulaTranslator::FormulaTranslator(const Document::Model& model)
    : own_(ParserOf(model, kOwnGrammar)), usual_(ParserOf(model, kUsualGrammar)) {}

rtl::OUString FormulaTranslator::ToCell(const QString& formula, const Address& cell) const {
    const rtl::OUString text = ToUno(formula);
    if (!formula.startsWith(QLatin1Char('=')) || ReadsAlike(formula)) return text;
    return Translated(text, cell, usual_, own_);
}

// A formula over a block of cells stands in braces.
QString FormulaTranslator::FromCell(const rtl::OUString& formula, const Address& cell) const {
    QString text = FromUno(formula);
    if (text.startsWith(QLatin1String("{=")) && text.endsWith(QLatin1Char('}'))) text = text.mid(1, text.size() - 2);
    if (!text.startsWith(QLatin1Char('=')) || ReadsAlike(text)) return text;
    return FromUno(Translated(ToUno(text), cell, own_, usual_));
}

bool IsBrokenFormula(sal_Int32 error) {
    // Character, parameters, pairs, operator, variable, length, syntax, name.
    constexpr sal_Int32 kBroken[] = {501, 504, 507, 508, 509, 510, 511, 512, 513, 520, 525};
    return std::find(std::begin(kBroken), std::end(kBroken), error) != std::end(kBroken);
}

} // namespace tessaro::office
