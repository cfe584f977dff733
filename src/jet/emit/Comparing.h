#pragma once

#include "jet/emit/Emitter.h"

#include <string>
#include <vector>

namespace jet {

/// How the operands of a comparison are brought together: what stands behind the left one, and in which shape all are.
struct Footing {
    std::string collation;          ///< " COLLATE …", or nothing
    bool numbersAsText = false;     ///< numbers among texts compare by the collation, in their shortest form
    bool literalsAsNumbers = false; ///< quoted numbers among numbers lose their quotes, so that indexes serve

    [[nodiscard]] std::string shape(const Typed& operand) const;
};

/// The footing on which `left` meets all of `others`. `ordered` for <, > and BETWEEN; equality has cheaper ways.
[[nodiscard]] Footing FootingOf(const Typed& left, const std::vector<const Typed*>& others, bool ordered);

/// The value as text: a number in its shortest form, Null stays Null.
[[nodiscard]] std::string AsText(const Typed& value);
/// True for text, as far as is known; not for Null.
[[nodiscard]] bool IsText(const Typed& value);
/// True for a date; it is a text, and AsNumber gives the days since the end of 1899.
[[nodiscard]] bool IsDate(const Typed& value);
/// Joins terms so that the depth of the expression grows with the logarithm of their number only.
[[nodiscard]] std::string Joined(const std::vector<std::string>& terms, const std::string& separator);

} // namespace jet
