#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"
#include "jet/functions/Functions.h"
#include "jet/values/Collation.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <array>

namespace jet {

using namespace tree;

namespace {

constexpr std::array kWholeResults = {
    "asc",   "ascw",     "cbyte", "cint", "clng",   "count", "datediff", "datepart", "day",     "fix",     "hour",
    "instr", "instrrev", "int",   "len",  "minute", "month", "second",   "sgn",      "strcomp", "weekday", "year"};

constexpr std::array kDateResults = {"cdate",     "cvdate", "date", "dateadd",    "dateserial",
                                     "datevalue", "now",    "time", "timeserial", "timevalue"};

/// Functions that take a date for its number of days.
constexpr std::array kOfNumbers = {"abs", "avg",   "cbyte", "ccur",  "cdbl",   "cint", "clng", "csng", "fix",
                                   "int", "round", "sgn",   "stdev", "stdevp", "sum",  "var",  "varp"};

template <std::size_t count> bool IsOneOf(const std::array<const char*, count>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

ColumnType TypeOfResult(const FunctionInfo& info, const std::vector<Typed>& arguments) {
    switch (info.result) {
    case FunctionResult::Text:
        return IsOneOf(kDateResults, std::string(info.name)) ? ColumnType::DateTime : ColumnType::Text;
    case FunctionResult::YesNo:
        return ColumnType::YesNo;
    case FunctionResult::ArgumentKind:
        return arguments.empty() ? ColumnType::Unknown : arguments.front().type;
    case FunctionResult::Number:
        break;
    }
    return std::ranges::find(kWholeResults, info.name) != kWholeResults.end() ? ColumnType::Long : ColumnType::Double;
}

std::string Listed(const std::vector<Typed>& arguments) {
    std::string list;
    for (const Typed& argument : arguments)
        list += (list.empty() ? "" : ", ") + AsValue(argument);
    return list;
}

/// Whether the result of the function is still a text without letters, or an identifier.
void KeepPlainness(Typed& result, const std::string& function, const std::vector<Typed>& arguments) {
    constexpr std::array kKeeping = {"mid",   "left",  "right", "trim",  "ltrim",
                                     "rtrim", "ucase", "lcase", "first", "last"};
    if (arguments.empty()) return;
    const Typed& argument = arguments.front();
    const bool digits = function == "cstr" && !IsText(argument);
    const bool keeps = std::ranges::find(kKeeping, function) != kKeeping.end();
    result.caseless = digits || (keeps && argument.caseless);
    const bool plain = argument.kind == CompareKind::Identifier || (argument.literal && IsAscii(argument.text));
    if (digits || (keeps && plain)) result.kind = CompareKind::Identifier;
}

/// The kind of a value that is one of several.
Typed Merged(std::string sql, const Typed& a, const Typed& b) {
    const Typed& known = a.type == ColumnType::Unknown ? b : a;
    const Typed& other = a.type == ColumnType::Unknown ? a : b;
    Typed merged{std::move(sql), known.kind, known.type};
    if (other.type == ColumnType::Unknown) return merged;
    if (known.kind != other.kind) {
        const bool value = known.kind == CompareKind::ValueText || other.kind == CompareKind::ValueText;
        merged.kind = value || !IsText(known) || !IsText(other) ? CompareKind::ValueText : CompareKind::Text;
        merged.type = IsText(merged) ? ColumnType::Text : ColumnType::Double;
    } else if (known.type != other.type && !IsText(merged)) {
        merged.type = ColumnType::Double;
    }
    return merged;
}

/// A whole number written in the statement, 1 or more; 0 for anything else.
long Positive(const Typed& value) {
    return value.literal && value.type == ColumnType::Long ? std::atol(value.text.c_str()) : 0;
}

/// The Format of CDbl(Format(number, mask)), whose text is made and read in one go; nullptr for any other call.
const Call* FormatToNumber(const Call& node) {
    const auto* const inner = node.name == "cdbl" ? std::get_if<Call>(&node.arguments.front()->node) : nullptr;
    return inner && inner->name == "format" && inner->arguments.size() == 2 ? inner : nullptr;
}

} // namespace

std::vector<Typed> Emitter::emitAll(const std::vector<ExpressionPtr>& expressions, const Scope& scope) {
    std::vector<Typed> all;
    all.reserve(expressions.size());
    for (const ExpressionPtr& each : expressions)
        all.push_back(emit(*each, scope));
    return all;
}

Typed Emitter::emitNode(const Call& node, const Scope& scope, Position at) {
    const FunctionInfo& info = *FindFunction(node.name);
    if (node.star) return {Counted("*"), CompareKind::Number, ColumnType::Long};
    if (const Call* const format = FormatToNumber(node))
        return {"jet_formatnumber(" + Listed(emitAll(format->arguments, scope)) + ")", CompareKind::Number,
                ColumnType::Double};
    std::vector<Typed> arguments = emitAll(node.arguments, scope);
    const bool date = !arguments.empty() && IsDate(arguments[0]);
    if (date && IsOneOf(kOfNumbers, node.name))
        arguments[0] = {AsNumber(arguments[0]), CompareKind::Number, ColumnType::Double};
    if (const auto row = rowOfFirst(node, scope)) {
        const Typed& value = arguments.front();
        const ColumnType type = value.type == ColumnType::Counter ? ColumnType::Long : value.type;
        return {"jet_firstof(" + AsValue(value) + ", " + *row + ")", value.kind, type};
    }
    if (info.aggregate) return emitAggregate(node, std::move(arguments));
    if (node.name == "switch" && arguments.size() % 2 != 0) FailAt(at, "Switch takes pairs of a condition and a value");
    if (auto written = emitInline(node, arguments)) {
        if (IsText(*written)) KeepPlainness(*written, node.name, arguments);
        return *written;
    }
    Typed result{"jet_" + node.name + "(" + Listed(arguments) + ")", CompareKind::Number,
                 TypeOfResult(info, arguments)};
    if (info.result == FunctionResult::Text)
        result.kind = result.type == ColumnType::DateTime ? CompareKind::Identifier : CompareKind::Text;
    if (info.result == FunctionResult::ArgumentKind) result.kind = arguments.front().kind;
    if (date && (node.name == "int" || node.name == "fix"))
        return {"jet_cdate(" + result.sql + ")", CompareKind::Identifier, ColumnType::DateTime};
    KeepPlainness(result, node.name, arguments);
    return result;
}

// A cell of a crosstab that no row belongs to is empty, not 0.
std::string Emitter::Counted(const std::string& operand) const {
    const std::string count = "COUNT(" + operand + ")" + aggregateFilter_;
    if (aggregateFilter_.empty()) return count;
    return "(CASE WHEN COUNT(*)" + aggregateFilter_ + " > 0 THEN " + count + " END)";
}

Typed Emitter::emitAggregate(const Call& node, std::vector<Typed> arguments) {
    const Typed& argument = arguments.front();
    const bool extreme = node.name == "min" || node.name == "max";
    const bool ofValues = extreme && argument.column && argument.kind == CompareKind::ValueText;
    const bool native = (extreme && !ofValues) || node.name == "count" ||
                        (!IsText(argument) && (node.name == "sum" || node.name == "avg"));
    std::string operand = (node.distinct ? "DISTINCT " : "") + AsValue(argument);
    if ((extreme && !ofValues) || node.distinct) operand += Collate(argument.kind);
    std::string sql = node.name == "count" ? Counted(operand)
                                           : (native ? UpperCased(node.name) : "jet_" + node.name) + "(" + operand +
                                                 ")" + aggregateFilter_;
    if (extreme || node.name == "first" || node.name == "last")
        return {std::move(sql), argument.kind, argument.type == ColumnType::Counter ? ColumnType::Long : argument.type};
    const bool whole =
        node.name == "count" || (node.name == "sum" && !IsText(argument) && argument.type != ColumnType::Double);
    return {std::move(sql), CompareKind::Number, whole ? ColumnType::Long : ColumnType::Double};
}

// What SQLite can express itself is written so: it saves the call of a function of ours for each row.
std::optional<Typed> Emitter::emitInline(const Call& node, const std::vector<Typed>& arguments) {
    if (node.name == "iif")
        return Merged("(CASE WHEN " + AsCondition(arguments[0]) + " THEN " + AsValue(arguments[1]) + " ELSE " +
                          AsValue(arguments[2]) + " END)",
                      arguments[1], arguments[2]);
    if (node.name == "isnull")
        return Typed{"(" + AsValue(arguments[0]) + " IS NULL)", CompareKind::Number, ColumnType::YesNo, true};
    if (node.name == "nz" && arguments.size() == 2)
        return Merged("ifnull(" + AsValue(arguments[0]) + ", " + AsValue(arguments[1]) + ")", arguments[0],
                      arguments[1]);
    if (node.name == "nz")
        return Merged("ifnull(" + AsValue(arguments[0]) + (IsText(arguments[0]) ? ", '')" : ", 0)"), arguments[0],
                      arguments[0]);
    if (node.name == "switch" || node.name == "choose") {
        const bool choose = node.name == "choose";
        std::string cases = choose ? "(CASE jet_clng(" + AsValue(arguments[0]) + ")" : "(CASE";
        Typed merged = arguments[1];
        for (std::size_t i = 1; i < arguments.size(); i += choose ? 1 : 2) {
            cases += " WHEN " + (choose ? std::to_string(i) : AsCondition(arguments[i - 1]));
            cases += " THEN " + AsValue(arguments[i]);
            merged = Merged({}, merged, arguments[i]);
        }
        merged.sql = cases + " END)";
        return merged;
    }
    const bool plainText = !arguments.empty() && IsText(arguments[0]);
    if (node.name == "len" && plainText)
        return Typed{"length(" + arguments[0].sql + ")", CompareKind::Number, ColumnType::Long};
    if (node.name == "left" && plainText && Positive(arguments[1]) > 0)
        return Typed{"substr(" + arguments[0].sql + ",1," + arguments[1].text + ")", CompareKind::Text,
                     ColumnType::Text};
    if (node.name == "mid" && plainText && Positive(arguments[1]) > 0 &&
        (arguments.size() == 2 || Positive(arguments[2]) > 0)) {
        std::string call = "substr(" + arguments[0].sql + "," + arguments[1].text;
        if (arguments.size() == 3) call += "," + arguments[2].text;
        return Typed{call + ")", CompareKind::Text, ColumnType::Text};
    }
    return std::nullopt;
}

} // namespace jet
