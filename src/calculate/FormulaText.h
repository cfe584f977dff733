#pragma once

#include "calculate/CalculationDraft.h"

#include <QString>

#include <optional>
#include <vector>

/// The text of a formula: its references to indicators, its check with results, and what is wrong in it.
namespace tessaro {

/// How a formula refers to an indicator: "{Literacy  ~  Female}".
[[nodiscard]] QString FormulaReference(const QString& indicator, const QString& subpop);

/// An area of the data with what a formula gives for it.
struct FormulaArea {
    QString id;
    QString name;
    QString result; ///< with a decimal point; empty when there is none
    QString reason; ///< why there is none
};

/// What formulas can refer to: the indicators with their subgroups, and the areas, of `_Data`.
struct FormulaSubject {
    std::vector<CalculationItem> items;
    std::vector<FormulaArea> areas;
};
[[nodiscard]] FormulaSubject ReadFormulaSubject();

/// Whether a formula can be calculated.
struct FormulaCheck {
    QString key;                    ///< of the message: "108" it is good, "109" it is not
    QString reason;                 ///< why it is not, in the language of the program
    int position = -1;              ///< where in the formula; -1 when the fault lies in a value
    int length = 0;                 ///< of the text at fault
    std::vector<FormulaArea> areas; ///< the results; empty ones for areas without a value
};

/// Checks brackets, references and operators, and calculates each area by the first of its values. Braces that stand
/// for brackets are passed over here, so "{ a + 1 } * 2" is checked as a + 1 * 2. A result of exactly 0 is left empty.
[[nodiscard]] FormulaCheck Validate(const QString& formula, const FormulaSubject& subject);
/// The results of the first areas as the calculation will give them: with brackets, by each area's one record. For a
/// formula that is being typed.
[[nodiscard]] FormulaCheck PreviewFormula(const QString& formula, const FormulaSubject& subject, int areas);

} // namespace tessaro
