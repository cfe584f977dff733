#pragma once

#include "jet/values/Catalogue.h"
#include "jet/values/Value.h"

#include <string>
#include <string_view>

/// The condition that Recordset::Find searches by.
namespace jet {

/// "Column = 'text'", as Recordset::Find takes it.
struct Criterion {
    enum class Operator { Equal, Unequal, Less, Greater, LessOrEqual, GreaterOrEqual, Like };
    std::string column;
    Operator comparison = Operator::Equal;
    Value value;
};

/// Throws SyntaxError.
[[nodiscard]] Criterion ParseCriterion(std::string_view text);
/// Null meets none. Numbers compare as numbers when both sides are, texts ignoring case.
[[nodiscard]] bool Meets(const Value& value, CompareKind kind, const Criterion& criterion);

} // namespace jet
