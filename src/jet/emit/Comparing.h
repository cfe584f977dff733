#pragma once

#include "jet/emit/Emitter.h"

#include <string>
#include <vector>

namespace jet {

/// The type coercion of a comparison: the collation that is written after the left operand, and the form in which all
/// operands are written.
struct Coercion {
    std::string collation;          ///< " COLLATE …", or nothing
    bool numbersAsText = false;     ///< numbers among texts compare by the collation, in their shortest form
    bool literalsAsNumbers = false; ///< quoted numbers among numbers lose their quotes, so that indexes can be used

    [[nodiscard]] std::string shape(const Typed& operand) const;
};

/// The coercion of a comparison of `left` with all of `others`. `ordered`: for <, > and BETWEEN; an equality can often
/// do without a collation.
[[nodiscard]] Coercion CoercionFor(const Typed& left, const std::vector<const Typed*>& others, bool ordered);

/// The value as text: a number in its shortest form, Null stays Null.
[[nodiscard]] std::string AsText(const Typed& value);
/// True for text, as far as is known; not for Null.
[[nodiscard]] bool IsText(const Typed& value);
/// True for a date; it is a text, and AsNumber gives the days since the end of 1899.
[[nodiscard]] bool IsDate(const Typed& value);
/// Joins terms so that the depth of the expression grows with the logarithm of their number only.
[[nodiscard]] std::string Joined(const std::vector<std::string>& terms, const std::string& separator);

} // namespace jet
