#pragma once

#include "calculate/FormulaParser.h"

/// Cuts the text of a formula into numbers, references, operators and brackets.
namespace tessaro {

/// A piece of a formula's text.
struct FormulaToken {
    enum class Kind { Number, Reference, Operator, Open, Close, Word, End };
    Kind kind = Kind::End;
    int from = 0;
    int to = 0;
    QChar sign; ///< of operators and brackets
    double number = 0;
    int item = -1; ///< of a reference: its place among the known items
    QString text;  ///< of a number, with a point; of a word, in small letters
};

/// Takes a formula apart; the last piece is the End. Empty with a fault when a piece can't be read or braces that are
/// no references don't pair. A brace opens a reference when a known item and a closing brace follow it, or, for the
/// sake of a good message, when a joiner follows before any other brace.
[[nodiscard]] std::vector<FormulaToken> FormulaTokens(const QString& text, const std::vector<CalculationItem>& known,
                                                      FormulaFault& fault);

} // namespace tessaro
