#include "jet/emit/Comparing.h"

#include "jet/values/Collation.h"
#include "jet/values/Error.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <span>

namespace jet {

namespace {

bool IsNull(const Typed& value) {
    return value.type == ColumnType::Unknown;
}

/// The number that a text literal holds, in SQLite's spelling; empty when it holds none.
std::string NumberIn(const std::string& text) {
    if (text.find_first_not_of("+-.0123456789eE") != std::string::npos || text.empty()) return {};
    return ReadNumber(text) ? text : std::string();
}

bool IsPlainLiteral(const Typed& value) {
    return value.literal && IsText(value) && IsAscii(value.text);
}

// SQLite bounds the depth of an expression; a chain of terms is as deep as it is long unless halved.
std::string Halved(std::span<const std::string> terms, const std::string& separator) {
    if (terms.size() == 1) return terms.front();
    const std::size_t half = terms.size() / 2;
    return "(" + Halved(terms.first(half), separator) + separator + Halved(terms.subspan(half), separator) + ")";
}

} // namespace

bool IsText(const Typed& value) {
    return value.kind != CompareKind::Number && !IsNull(value);
}

bool IsDate(const Typed& value) {
    return value.type == ColumnType::DateTime && IsText(value);
}

std::string AsText(const Typed& value) {
    if (IsText(value) || IsNull(value)) return value.sql;
    if (value.literal) return QuotedText(value.text);
    return "jet_text(" + AsValue(value) + ")";
}

std::string AsNumber(const Typed& value) {
    if (!IsText(value)) return AsValue(value);
    if (IsDate(value)) return "jet_days(" + value.sql + ")";
    const std::string number = value.literal ? NumberIn(value.text) : std::string();
    return number.empty() ? "jet_number(" + value.sql + ")" : "(" + number + ")";
}

std::string Joined(const std::vector<std::string>& terms, const std::string& separator) {
    constexpr std::size_t kMostFlat = 50;
    if (terms.size() > kMostFlat) return Halved(terms, separator);
    std::string joined;
    for (const std::string& term : terms)
        joined += (joined.empty() ? "" : separator) + term;
    return joined;
}

std::string Coercion::shape(const Typed& operand) const {
    if (numbersAsText) return AsText(operand);
    if (literalsAsNumbers) return AsNumber(operand);
    return AsValue(operand);
}

Coercion CoercionFor(const Typed& left, const std::vector<const Typed*>& others, bool ordered) {
    std::vector<const Typed*> all = others;
    all.push_back(&left);
    std::erase_if(all, [](const Typed* each) { return IsNull(*each); });
    const auto any = [&](auto holds) {
        return std::ranges::any_of(all, [&](const Typed* each) { return holds(*each); });
    };
    const auto every = [&](auto holds) {
        return std::ranges::all_of(all, [&](const Typed* each) { return holds(*each); });
    };
    const auto isNumber = [](const Typed& each) { return !IsText(each); };
    const auto isValue = [](const Typed& each) { return each.kind == CompareKind::ValueText; };

    const bool numeric =
        every([&](const Typed& each) { return isNumber(each) || (each.literal && !NumberIn(each.text).empty()); });
    if (numeric && any(isNumber)) return {{}, false, true};
    if (any(isNumber) || any(isValue)) return {Collate(CompareKind::ValueText), true, false};
    // Text without letters on one side: case can't matter. A bare field keeps the collation that its index has.
    if (!ordered && any([](const Typed& each) { return each.caseless; }) &&
        every([](const Typed& each) { return !each.column; }))
        return {};
    if (every([](const Typed& each) { return each.kind == CompareKind::Identifier || IsPlainLiteral(each); }))
        return {Collate(CompareKind::Identifier), false, false};
    // Equality with a literal of ASCII letters gives the same under NOCASE, the collation of the indexes on text.
    const bool literals =
        std::ranges::all_of(others, [](const Typed* each) { return IsNull(*each) || IsPlainLiteral(*each); });
    const bool nocase = !ordered && (literals || IsPlainLiteral(left));
    return {Collate(nocase ? CompareKind::Identifier : CompareKind::Text), false, false};
}

std::string Compared(const Typed& left, const char* op, const Typed& right) {
    if (IsDate(left) != IsDate(right) && !IsText(IsDate(left) ? right : left) && !IsNull(left) && !IsNull(right))
        return AsNumber(left) + " " + op + " " + AsNumber(right); // days against a number of days
    const auto unreadable = [](const Typed& each) {
        return each.literal && each.type == ColumnType::Text && NumberIn(each.text).empty();
    };
    if ((left.column && !IsText(left) && unreadable(right)) || (right.column && !IsText(right) && unreadable(left)))
        throw Error(ErrorNumber::TypeMismatch, "Type mismatch: a number is compared with a text that holds none.");
    const bool ordered = op[0] == '<' ? op[1] != '>' : op[0] == '>';
    const Coercion coercion = CoercionFor(left, {&right}, ordered);
    return coercion.shape(left) + coercion.collation + " " + op + " " + coercion.shape(right);
}

} // namespace jet
