#include "office/Formulas.h"

#include "office/Convert.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <iterator>
#include <optional>

namespace tessaro::office {

namespace {

using com::sun::star::sheet::XFormulaParser;
using com::sun::star::uno::Any;
using com::sun::star::uno::Reference;

constexpr sal_Int16 kOwnGrammar = 0;   ///< FormulaConvention: the program's own
constexpr sal_Int16 kUsualGrammar = 3; ///< FormulaConvention: as spreadsheet programs write it, with commas

Reference<XFormulaParser> ParserOf(const Document::Model& model, sal_Int16 convention) {
    const auto parser = Need<XFormulaParser>(model.Factory()->createInstance("com.sun.star.sheet.FormulaParser"));
    const auto properties = Need<com::sun::star::beans::XPropertySet>(parser);
    properties->setPropertyValue("CompileEnglish", Any(true));
    properties->setPropertyValue("FormulaConvention", Any(convention));
    return parser;
}

/// The position behind the "!" of a quoted sheet name that begins at `from`; -1 when there is no such reference, or it
/// names another file.
qsizetype EndOfSheet(const QString& formula, qsizetype from) {
    qsizetype end = from + 1;
    while (end < formula.size() && (formula[end] != u'\'' || formula.mid(end, 2) == QLatin1String("''")))
        end += formula[end] == u'\'' ? 2 : 1;
    const bool isSheet = formula.mid(end, 2) == QLatin1String("'!") && !formula.mid(from, end - from).contains(u'[');
    return isSheet ? end + 2 : -1;
}

/// A formula in the other grammar where no parser is needed, as for most formulas of a block: one without lists and
/// texts, in which "," stands between the arguments of functions alone. `ours` and `theirs` are the marks between
/// arguments in both.
std::optional<QString> Respelt(const QString& formula, char16_t ours, char16_t theirs) {
    constexpr QStringView kAlike = u"=+-*/^():<>%$ ";
    QString result;
    QString open; // an "f" for each parenthesis of a function that is open, a "(" for any other
    for (qsizetype at = 0; at < formula.size(); ++at) {
        const QChar letter = formula[at];
        const bool isName = letter.unicode() < 128 && letter.isLetterOrNumber();
        if (letter == u'(') {
            open += at > 0 && formula[at - 1].isLetterOrNumber() ? u'f' : u'(';
        } else if (letter == u')') {
            open.chop(1);
        } else if (letter == ours && open.endsWith(u'f')) {
            result += theirs;
            continue;
        } else if (letter == u'\'' && ours == u',') {
            const qsizetype end = EndOfSheet(formula, at);
            if (end < 0) return std::nullopt;
            result += u'$' + formula.mid(at, end - at - 1) + u'.';
            at = end - 1;
            continue;
        } else if (!isName && !kAlike.contains(letter)) {
            return std::nullopt;
        }
        result += letter;
    }
    return result;
}

rtl::OUString Translated(const rtl::OUString& formula, const FormulaTranslator::Address& cell,
                         const Reference<XFormulaParser>& from, const Reference<XFormulaParser>& to) {
    return Ascii("=") + to->printFormula(from->parseFormula(formula.copy(1), cell), cell);
}

} // namespace

const FormulaTranslator::Parser& FormulaTranslator::Own() const {
    if (!own_.is()) own_ = ParserOf(model_, kOwnGrammar);
    return own_;
}

const FormulaTranslator::Parser& FormulaTranslator::Usual() const {
    if (!usual_.is()) usual_ = ParserOf(model_, kUsualGrammar);
    return usual_;
}

rtl::OUString FormulaTranslator::ToCell(const QString& formula, const Address& cell) const {
    if (!formula.startsWith(QLatin1Char('='))) return ToUno(formula);
    if (const auto respelt = Respelt(formula, u',', u';')) return ToUno(*respelt);
    return Translated(ToUno(formula), cell, Usual(), Own());
}

// A formula over a block of cells stands in braces.
QString FormulaTranslator::FromCell(const rtl::OUString& formula, const Address& cell) const {
    QString text = FromUno(formula);
    if (text.startsWith(QLatin1String("{=")) && text.endsWith(QLatin1Char('}'))) text = text.mid(1, text.size() - 2);
    if (!text.startsWith(QLatin1Char('='))) return text;
    if (const auto respelt = Respelt(text, u';', u',')) return *respelt;
    return FromUno(Translated(ToUno(text), cell, Own(), Usual()));
}

bool IsBrokenFormula(sal_Int32 error) {
    // Character, parameters, pairs, operator, variable, length, syntax, name.
    constexpr sal_Int32 kBroken[] = {501, 504, 507, 508, 509, 510, 511, 512, 513, 520, 525};
    return std::find(std::begin(kBroken), std::end(kBroken), error) != std::end(kBroken);
}

} // namespace tessaro::office
