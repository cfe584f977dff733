#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

/// Characters of a list that stands in the statement itself, where SQLite can look up each number in an index. Some
/// thousands of keys, as statements delete them at a time, are shorter.
constexpr std::size_t kLongestWritten = 64 * 1024;

/// A table this many times as long as the list is searched by the list's numbers; a shorter one is read row by row.
constexpr std::size_t kManyTimes = 20;

/// x IN (a, b, …) under the rules of all their kinds.
Typed Membership(const Typed& operand, const std::vector<Typed>& values, bool negated) {
    std::vector<const Typed*> others;
    others.reserve(values.size());
    for (const Typed& value : values)
        others.push_back(&value);
    const Coercion coercion = CoercionFor(operand, others, false);
    std::string list;
    for (const Typed& value : values) {
        if (!list.empty()) list += ",";
        list += coercion.shape(value);
    }
    return Condition(coercion.shape(operand) + coercion.collation + (negated ? " NOT IN (" : " IN (") + list + ")");
}

std::vector<Typed> LiteralsOf(const std::string& numbers) {
    std::vector<Typed> literals;
    std::size_t at = 0;
    while (at < numbers.size()) {
        const std::size_t start = numbers.find_first_of("-0123456789", at);
        if (start == std::string::npos) break;
        at = std::min(numbers.find_first_not_of("-0123456789", start), numbers.size());
        const std::string number = numbers.substr(start, at - start);
        literals.push_back({.sql = number, .type = ColumnType::Long, .literal = true, .text = number});
    }
    return literals;
}

} // namespace

Typed Emitter::emitNode(const InList& node, const Scope& scope, Position) {
    if (!node.numbers.empty()) return emitNumberList(node, scope);
    const Typed operand = emit(*node.operand, scope);
    return Membership(operand, emitAll(node.values, scope), node.negated);
}

// A list of numbers compared with a number needs no coercion and is written as it came.
Typed Emitter::emitNumberList(const InList& node, const Scope& scope) {
    const Typed operand = emit(*node.operand, scope);
    if (IsText(operand)) return Membership(operand, LiteralsOf(node.numbers), node.negated);
    const std::string tested = AsValue(operand);
    const char* const in = node.negated ? " NOT IN (" : " IN (";
    if (node.numbers.size() <= kLongestWritten) return Condition(tested + in + node.numbers + ")");

    ListParameter list{std::make_shared<NumberList>(node.numbers), {}};
    const auto* const column = std::get_if<ColumnName>(&node.operand->node);
    const Source* const source = column ? scope.lookUp(*column, {}).source : nullptr;
    const std::int64_t rows = source && source->table ? catalogue_.rowsOnRecord(*source->table) : 0;
    const bool searched =
        !node.negated && rows / static_cast<std::int64_t>(kManyTimes) > static_cast<std::int64_t>(list.numbers->size());
    if (searched) list = {nullptr, "[" + node.numbers + "]"};
    const std::string parameter = parameterFor(node, std::move(list));
    if (searched) return Condition(tested + in + "SELECT value FROM json_each(" + parameter + "))");
    return Condition((node.negated ? "NOT jet_listed(" : "jet_listed(") + tested + ", " + parameter + ")");
}

std::string Emitter::parameterFor(const InList& node, ListParameter list) {
    const auto [place, isNew] = listNumbers_.try_emplace(&node, lists_.size() + 1);
    if (isNew) lists_.push_back(std::move(list));
    return "?" + std::to_string(place->second);
}

} // namespace jet
