#include "jet/engine/Criterion.h"

#include "jet/values/Collation.h"
#include "jet/values/Error.h"
#include "jet/values/Like.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace jet {

namespace {

[[noreturn]] void Fail(std::string_view text) {
    throw Error(ErrorNumber::SyntaxError, "'" + std::string(text) + "' is no condition to search by.");
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::string TakeColumn(std::string_view& rest, std::string_view whole) {
    const bool bracketed = rest.starts_with('[');
    const std::size_t end = bracketed ? rest.find(']') : rest.find_first_of(" =<>");
    if (end == std::string_view::npos || end == 0) Fail(whole);
    std::string name(bracketed ? rest.substr(1, end - 1) : rest.substr(0, end));
    rest = Trimmed(rest.substr(end + (bracketed ? 1 : 0)));
    return name;
}

Criterion::Operator TakeOperator(std::string_view& rest, std::string_view whole) {
    using enum Criterion::Operator;
    static constexpr std::array<std::pair<std::string_view, Criterion::Operator>, 7> operators = {
        {{"<>", Unequal},
         {"<=", LessOrEqual},
         {">=", GreaterOrEqual},
         {"=", Equal},
         {"<", Less},
         {">", Greater},
         {"Like", Like}}};
    for (const auto& [sign, meaning] : operators) {
        if (!SameName(rest.substr(0, sign.size()), sign)) continue;
        rest = Trimmed(rest.substr(sign.size()));
        return meaning;
    }
    Fail(whole);
}

Value ReadLiteral(std::string_view text, std::string_view whole) {
    if (text.size() < 2 || (text.front() != '\'' && text.front() != '"')) {
        if (const auto number = ReadNumber(text)) return *number;
        if (SameName(text, "True")) return -1;
        if (SameName(text, "False")) return 0;
        Fail(whole);
    }
    const char mark = text.front();
    std::string value;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != mark) {
            value += text[i];
        } else if (i + 1 < text.size() && text[i + 1] == mark) {
            value += text[i++];
        } else if (i + 1 == text.size()) {
            return value;
        } else {
            break;
        }
    }
    Fail(whole);
}

std::optional<double> NumberIn(const Value& value) {
    if (value.type() == Value::Type::Text) return ReadNumber(value.toText());
    return value.toDouble();
}

int Order(const Value& a, const Value& b, CompareKind kind) {
    const bool texts = a.type() == Value::Type::Text && b.type() == Value::Type::Text;
    if (texts && kind != CompareKind::ValueText) return CompareText(a.toText(), b.toText());
    const auto left = NumberIn(a);
    const auto right = NumberIn(b);
    if (left && right) return static_cast<int>(*left > *right) - static_cast<int>(*left < *right);
    return CompareText(a.toText(), b.toText());
}

} // namespace

Criterion ParseCriterion(std::string_view text) {
    std::string_view rest = Trimmed(text);
    Criterion criterion;
    criterion.column = TakeColumn(rest, text);
    criterion.comparison = TakeOperator(rest, text);
    criterion.value = ReadLiteral(rest, text);
    return criterion;
}

bool Meets(const Value& value, CompareKind kind, const Criterion& criterion) {
    if (value.isNull()) return false;
    if (criterion.comparison == Criterion::Operator::Like) return IsLike(value.toText(), criterion.value.toText());
    const int order = Order(value, criterion.value, kind);
    switch (criterion.comparison) {
    case Criterion::Operator::Equal:
        return order == 0;
    case Criterion::Operator::Unequal:
        return order != 0;
    case Criterion::Operator::Less:
        return order < 0;
    case Criterion::Operator::Greater:
        return order > 0;
    case Criterion::Operator::LessOrEqual:
        return order <= 0;
    default:
        return order >= 0;
    }
}

} // namespace jet
