#pragma once

#include "calculate/CalculationDraft.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// Reads the user's formula into a tree.
namespace tessaro {

/// What stands between the indicator and the subgroup of a reference.
inline constexpr auto kReferenceJoiner = "  ~  ";

/// Why a text is no formula, and where.
struct FormulaFault {
    QString reason; ///< in the language of the program
    int position = 0;
    int length = 0;
};

/// What a formula gives for the values of one area.
struct FormulaValue {
    std::optional<double> number;
    const char* reasonKey = nullptr; ///< why there is none, as a key of the string table
    int missing = -1;                ///< the reference without a value
};

/// A node of a formula. Operands come before what uses them, so that a walk from the first node to the last computes
/// it.
struct FormulaNode {
    enum class Kind { Number, Reference, Negation, Binary, Function };
    Kind kind = Kind::Number;
    char op = 0;   ///< of a Binary: + - * / ^
    int left = -1; ///< nodes
    int right = -1;
    double number = 0;
    int index = 0; ///< of the reference or function
    int from = 0;  ///< the part of the text that it stands for
    int to = 0;
};

/// An arithmetic formula over indicators: + - * / ^ with the precedence of the database engine (a sign binds weaker
/// than a power; powers are taken from the left), brackets ( ) and { }, numbers with a point or the mark of the user's
/// system, references {indicator  ~  subgroup}, and the functions Abs, Exp, Int, Log (natural) and Sqr.
class ParsedFormula final {
  public:
    /// Whether { } count as brackets.
    enum class Braces { AreBrackets, ArePassedOver };

    /// A formula that refers to some of the items in `known`; nothing for any other text, with `fault` saying why.
    [[nodiscard]] static std::optional<ParsedFormula>
    Parse(const QString& text, const std::vector<CalculationItem>& known, Braces braces, FormulaFault& fault);

    /// What it refers to, each once, in the order in which the text does.
    [[nodiscard]] const std::vector<CalculationItem>& References() const { return references_; }
    /// The result for one value of each reference. A missing value gives none, whatever the formula.
    [[nodiscard]] FormulaValue Evaluate(const std::vector<std::optional<double>>& values) const;
    /// The same as a formula of a sheet, behind "= ", with an address for each reference. Braces become brackets; a
    /// power behind a sign is put in brackets, since sheets would take the sign first.
    [[nodiscard]] QString SheetFormula(const QStringList& addresses) const;

  private:
    friend class FormulaParser;
    /// A part of the text that reads differently in a sheet.
    struct Substitute {
        int from = 0;
        int to = 0;
        QString text;
        int reference = -1; ///< or its address
    };

    QString text_;
    std::vector<CalculationItem> references_;
    std::vector<FormulaNode> nodes_;
    std::vector<Substitute> substitutes_;
};

} // namespace tessaro
