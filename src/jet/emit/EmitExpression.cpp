#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"
#include "jet/values/Collation.h"
#include "jet/values/Dates.h"
#include "jet/values/Error.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace jet {

using namespace tree;

namespace {

const char* SqlOf(ComparisonOperator op) {
    switch (op) {
    case ComparisonOperator::Equal:
        return "=";
    case ComparisonOperator::NotEqual:
        return "<>";
    case ComparisonOperator::Less:
        return "<";
    case ComparisonOperator::LessOrEqual:
        return "<=";
    case ComparisonOperator::Greater:
        return ">";
    case ComparisonOperator::GreaterOrEqual:
        return ">=";
    }
    return "=";
}

bool IsWhole(ColumnType type) {
    return type == ColumnType::Long || type == ColumnType::Integer || type == ColumnType::Counter ||
           type == ColumnType::YesNo;
}

bool HasNoLetters(const std::string& text) {
    return IsAscii(text) &&
           std::ranges::none_of(text, [](char c) { return LowerAscii(c) >= 'a' && LowerAscii(c) <= 'z'; });
}

/// The result of joining two texts: free of letters, or plain, as far as both are.
Typed JoinedText(std::string sql, const Typed& left, const Typed& right) {
    const auto caseless = [](const Typed& each) { return each.caseless || IsWhole(each.type); };
    const auto plain = [&](const Typed& each) {
        return caseless(each) || each.kind == CompareKind::Identifier || (each.literal && IsAscii(each.text));
    };
    Typed joined{std::move(sql), CompareKind::Text, ColumnType::Text};
    joined.caseless = caseless(left) && caseless(right);
    if (plain(left) && plain(right)) joined.kind = CompareKind::Identifier;
    return joined;
}

/// Writes (left sign right), without brackets around a left operand of the same operator, since SQLite bounds the depth
/// of brackets.
void Chain(Typed& chained, const std::string& left, const Typed& leftValue, char op, const std::string& right) {
    const std::string sign = op == '&' ? " || " : std::string(" ") + op + " ";
    chained.chain = op;
    chained.terms = (leftValue.chain == op ? leftValue.terms : left) + sign + right;
    chained.sql = "(" + chained.terms + ")";
}

// SQLite joins texts and whole numbers as the dialect does. Two Nulls stay Null, which one operand that can't be Null
// rules out.
Typed Concatenated(const Typed& left, const Typed& right) {
    const auto neverNull = [](const Typed& each) { return each.literal || each.chain == '&'; };
    if (!neverNull(left) && !neverNull(right))
        return JoinedText("jet_concat(" + AsValue(left) + ", " + AsValue(right) + ")", left, right);
    const auto operand = [](const Typed& each) {
        if (each.literal) return QuotedText(IsText(each) ? each.text : DecimalText(ReadNumber(each.text).value_or(0)));
        if (each.chain == '&') return each.sql;
        if (IsText(each) || IsWhole(each.type)) return "ifnull(" + AsValue(each) + ", '')";
        return "jet_concat(" + AsValue(each) + ", '')";
    };
    Typed joined = JoinedText({}, left, right);
    Chain(joined, operand(left), left, '&', operand(right));
    return joined;
}

/// A literal that isn't zero, as a double. Empty for anything else: dividing by it needs the function that checks for
/// zero.
std::string SafeDivisor(const Typed& value) {
    if (!value.literal || IsText(value) || value.text.find_first_not_of(".0123456789") != std::string::npos) return {};
    if (value.text.find_first_of("123456789") == std::string::npos) return {};
    return value.text.find('.') == std::string::npos ? value.text + ".0" : value.text;
}

bool IsTruth(const Typed& value) {
    return value.type == ColumnType::YesNo || value.type == ColumnType::Unknown;
}

/// The value as a whole number whose bits And, Or and Not work on; a truth value has all of them set, or none.
std::string AsBits(const Typed& value) {
    if (IsTruth(value) && !value.literal) return "(-" + AsCondition(value) + ")";
    return "CAST(" + AsNumber(value) + " AS INTEGER)";
}

/// Calls a function of SQLite with all values, from left to right; a further call takes the result of the one before
/// where there are more than a call may have.
std::string CalledFromLeft(const std::string& function, const std::vector<std::string>& values) {
    constexpr std::size_t kMostArguments = 100;
    std::string call = values.front();
    for (std::size_t i = 1; i < values.size(); ++i) {
        const bool first = i % (kMostArguments - 1) == 1;
        call = first ? function + "(" + call : std::move(call);
        call += ", " + values[i];
        if (i % (kMostArguments - 1) == 0 || i + 1 == values.size()) call += ")";
    }
    return call;
}

/// Xor, Eqv and Imp of numbers or truth values. Each operand stands in the text once.
Typed ByFunction(const char* function, const std::vector<Typed>& operands) {
    std::vector<std::string> values;
    for (const Typed& each : operands)
        values.push_back(IsTruth(each) ? AsBits(each) : AsNumber(each));
    const bool truth = std::ranges::all_of(operands, IsTruth);
    return {CalledFromLeft(function, values), CompareKind::Number, truth ? ColumnType::YesNo : ColumnType::Long};
}

/// A date plus or less a number of days is a date, and two dates are a number of days apart; nothing for all else.
std::optional<Typed> DateArithmetic(ArithmeticOperator op, const Typed& left, const Typed& right) {
    const bool both = IsDate(left) && IsDate(right);
    const bool one = (IsDate(left) && !IsText(right)) || (IsDate(right) && !IsText(left));
    if ((!both && !one) || (op != ArithmeticOperator::Add && op != ArithmeticOperator::Subtract)) return std::nullopt;
    const std::string days =
        "(" + AsNumber(left) + (op == ArithmeticOperator::Add ? " + " : " - ") + AsNumber(right) + ")";
    if (both && op == ArithmeticOperator::Subtract) return Typed{days, CompareKind::Number, ColumnType::Double};
    return Typed{"jet_cdate(" + days + ")", CompareKind::Identifier, ColumnType::DateTime};
}

ColumnType ArithmeticType(const Typed& left, const Typed& right) {
    return IsWhole(left.type) && IsWhole(right.type) ? ColumnType::Long : ColumnType::Double;
}

/// True when the value is whole and within the range of the field for certain: a field of that type, a truth value.
bool Fits(const Typed& value, ColumnType type) {
    if (value.type == ColumnType::Unknown || value.type == ColumnType::YesNo) return true;
    if (value.literal && value.type == ColumnType::Long)
        return std::fabs(ReadNumber(value.text).value_or(HUGE_VAL)) <=
               (type == ColumnType::Integer ? INT16_MAX : INT32_MAX);
    return value.column &&
           (value.type == type || value.type == ColumnType::Integer || value.type == ColumnType::Counter ||
            (type == ColumnType::Counter && value.type == ColumnType::Long));
}

/// The value of a constant, computed while the statement is translated: a default value is written into the file, whose
/// schema must not call functions of ours.
std::string StoredDate(const Typed& value) {
    if (value.type == ColumnType::Unknown || IsDate(value)) return value.sql;
    const auto moment = value.literal ? ReadDate(value.text) : std::nullopt;
    return moment ? QuotedText(DateText(*moment)) : "jet_cdate(" + AsValue(value) + ")";
}

} // namespace

std::string AsValue(const Typed& value) {
    return value.condition ? "(-" + value.sql + ")" : value.sql;
}

std::string AsCondition(const Typed& value) {
    if (value.condition) return value.sql;
    if (IsText(value)) return "(jet_bool(" + value.sql + ") <> 0)";
    return "(" + value.sql + " <> 0)";
}

std::string AsStored(const Typed& value, ColumnType type) {
    switch (type) {
    case ColumnType::YesNo:
        if (value.literal && value.type == ColumnType::YesNo) return value.sql;
        return "jet_bool(" + AsValue(value) + ")";
    case ColumnType::Text:
    case ColumnType::Memo:
    case ColumnType::Guid:
        if (value.type == ColumnType::Unknown || IsText(value)) return value.sql;
        if (value.literal) return QuotedText(DecimalText(ReadNumber(value.text).value_or(0)));
        if (IsWhole(value.type)) return AsText(value);
        return "NULLIF(jet_concat(" + AsValue(value) + ", ''), '')";
    case ColumnType::DateTime:
        return StoredDate(value);
    case ColumnType::Integer:
        return Fits(value, type) ? AsNumber(value) : "jet_short(" + AsNumber(value) + ")";
    case ColumnType::Long:
    case ColumnType::Counter:
        return Fits(value, type) ? AsNumber(value) : "jet_long(" + AsNumber(value) + ")";
    case ColumnType::Double:
        return AsNumber(value);
    case ColumnType::Binary:
    case ColumnType::Unknown:
        break;
    }
    return AsValue(value);
}

Typed Condition(std::string sql) {
    return {"(" + std::move(sql) + ")", CompareKind::Number, ColumnType::YesNo, true};
}

Typed Emitter::emit(const Expression& expression, const Scope& scope) {
    if (++work_ > mostWork_) FailAt(expression.at, "The statement is too complex");
    return std::visit([&](const auto& node) { return emitNode(node, scope, expression.at); }, expression.node);
}

std::string Emitter::condition(const Expression& expression, const Scope& scope) {
    return AsCondition(emit(expression, scope));
}

Typed Emitter::emitNode(const NullLiteral&, const Scope&, Position) {
    return {"NULL", CompareKind::Number, ColumnType::Unknown};
}

Typed Emitter::emitNode(const NumberLiteral& node, const Scope&, Position) {
    const bool whole = node.text.find_first_not_of("0123456789") == std::string::npos && node.text.size() < 19;
    const auto number = ReadNumber(node.text);
    if (!number) FailOverflow();
    return {node.text, CompareKind::Number,  whole ? ColumnType::Long : ColumnType::Double, false,
            true,      ShortestText(*number)};
}

Typed Emitter::emitNode(const TextLiteral& node, const Scope&, Position) {
    return {QuotedText(node.text),  CompareKind::Text, ColumnType::Text, false, true, node.text, false,
            HasNoLetters(node.text)};
}

Typed Emitter::emitNode(const DateLiteral& node, const Scope&, Position) {
    return {QuotedText(node.text), CompareKind::Identifier, ColumnType::DateTime, false, true, node.text};
}

Typed Emitter::emitNode(const BooleanLiteral& node, const Scope&, Position) {
    return {node.value ? "-1" : "0", CompareKind::Number, ColumnType::YesNo, false, true, node.value ? "-1" : "0"};
}

Typed Emitter::emitNode(const ColumnName& node, const Scope& scope, Position at) {
    // A bare name that no table has may be the alias of another item; it stands for that item's expression.
    constexpr int kDeepestAlias = 20;
    constexpr std::size_t kMostAliasText = 1'000'000;
    if (const SelectItem* item = scope.aliased(node); item && !scope.lookUp(node, at).source) {
        if (++aliasDepth_ > kDeepestAlias) FailAt(at, "The name '" + node.name + "' is defined by itself");
        Typed value = emit(*item->expression, scope);
        --aliasDepth_;
        // Aliases that use other aliases twice double the text at each level.
        aliasText_ += value.sql.size();
        if (aliasText_ > kMostAliasText) FailAt(at, "The names of the statement stand for too long an expression");
        return value;
    }
    const Scope::Found found = scope.resolve(node, at);
    read_.push_back(found.source->number);
    Typed field = Field(*found.level, *found.source, found.column);
    if (node.unindexed) field.sql = "(+" + field.sql + ")"; // changes nothing but that
    return field;
}

Typed Emitter::emitNode(const Arithmetic& node, const Scope& scope, Position) {
    const Typed left = emit(*node.left, scope);
    const Typed right = emit(*node.right, scope);
    if (auto moved = DateArithmetic(node.op, left, right)) return *moved;
    const auto called = [&](const char* name, ColumnType type) {
        return Typed{std::string(name) + "(" + AsNumber(left) + ", " + AsNumber(right) + ")", CompareKind::Number,
                     type};
    };
    const auto written = [&](char sign) {
        Typed made{{}, CompareKind::Number, ArithmeticType(left, right)};
        Chain(made, AsNumber(left), left, sign, AsNumber(right));
        return made;
    };
    switch (node.op) {
    case ArithmeticOperator::Concatenate:
        return Concatenated(left, right);
    case ArithmeticOperator::Add:
        if (!IsText(left) && !IsText(right)) return written('+');
        if (IsText(left) && IsText(right)) return JoinedText("(" + left.sql + " || " + right.sql + ")", left, right);
        return {"jet_add(" + AsValue(left) + ", " + AsValue(right) + ")", CompareKind::Number, ColumnType::Double};
    case ArithmeticOperator::Subtract:
        return written('-');
    case ArithmeticOperator::Multiply:
        return written('*');
    case ArithmeticOperator::Divide:
        if (const std::string divisor = SafeDivisor(right); !divisor.empty())
            return {"(" + AsNumber(left) + " / " + divisor + ")", CompareKind::Number, ColumnType::Double};
        return called("jet_divide", ColumnType::Double);
    case ArithmeticOperator::WholeDivide:
        return called("jet_intdiv", ColumnType::Long);
    case ArithmeticOperator::Modulo:
        return called("jet_mod", ColumnType::Long);
    case ArithmeticOperator::Power:
        return called("jet_power", ColumnType::Double);
    }
    return left;
}

Typed Emitter::emitNode(const Negation& node, const Scope& scope, Position) {
    const Typed operand = emit(*node.operand, scope);
    const bool negative = operand.text.starts_with('-');
    // With a blank, since two signs in a row begin a comment.
    Typed negated{"(- " + AsNumber(operand) + ")",
                  CompareKind::Number,
                  operand.type,
                  false,
                  operand.literal,
                  negative ? operand.text.substr(1) : "-" + operand.text};
    if (IsText(operand)) negated.type = ColumnType::Double;
    if (operand.type == ColumnType::YesNo) negated.type = ColumnType::Long;
    return negated;
}

Typed Emitter::emitNode(const Comparison& node, const Scope& scope, Position) {
    const Typed left = emit(*node.left, scope);
    const Typed right = emit(*node.right, scope);
    // A yes/no field is true when it holds anything but 0, whatever wrote it.
    const auto* constant = std::get_if<BooleanLiteral>(&node.right->node);
    const bool equality = node.op == ComparisonOperator::Equal || node.op == ComparisonOperator::NotEqual;
    if (constant && equality && !IsText(left)) {
        const bool wantsTrue = constant->value == (node.op == ComparisonOperator::Equal);
        if (left.condition) return wantsTrue ? left : Condition("NOT " + left.sql);
        if (wantsTrue) return Condition(left.sql + " <> 0");
        // SQLite's planner takes an equality to pick few rows, and would begin the join at this table.
        return Condition(left.type == ColumnType::YesNo ? "NOT " + left.sql : left.sql + " = 0");
    }
    return Condition(Compared(left, SqlOf(node.op), right));
}

Typed Emitter::emitNode(const Logical& node, const Scope& scope, Position) {
    const std::vector<Typed> operands = emitAll(node.operands, scope);
    if (node.op == LogicalOperator::Xor) return ByFunction("jet_xor", operands);
    if (node.op == LogicalOperator::Eqv) return ByFunction("jet_eqv", operands);
    if (node.op == LogicalOperator::Imp) return ByFunction("jet_imp", operands);
    const bool truth = std::ranges::all_of(operands, IsTruth);
    const bool conjunction = node.op == LogicalOperator::And;
    std::vector<std::string> terms;
    for (const Typed& operand : operands)
        terms.push_back(truth ? AsCondition(operand) : AsBits(operand));
    if (truth) return Condition(Joined(terms, conjunction ? " AND " : " OR "));
    return {"(" + Joined(terms, conjunction ? " & " : " | ") + ")", CompareKind::Number, ColumnType::Long};
}

Typed Emitter::emitNode(const Not& node, const Scope& scope, Position) {
    const Typed operand = emit(*node.operand, scope);
    if (!IsTruth(operand)) return {"(~" + AsBits(operand) + ")", CompareKind::Number, ColumnType::Long};
    return Condition("NOT " + AsCondition(operand));
}

Typed Emitter::emitNode(const Between& node, const Scope& scope, Position) {
    const Typed operand = emit(*node.operand, scope);
    const Typed low = emit(*node.low, scope);
    const Typed high = emit(*node.high, scope);
    const Coercion coercion = CoercionFor(operand, {&low, &high}, true);
    // Either bound may be the lower one. Computed operands go to a function, so that each is computed once; no index
    // could be used for them anyway.
    const auto simple = [](const Typed& bound) { return bound.literal || bound.column; };
    if (!simple(low) || !simple(high))
        return Condition("jet_between('" + coercion.collation + "', " + coercion.shape(operand) + ", " +
                         coercion.shape(low) + ", " + coercion.shape(high) + ")" + (node.negated ? " = 0" : " <> 0"));
    const std::string bounds = coercion.shape(low) + coercion.collation + ", " + coercion.shape(high) + ")";
    return Condition(coercion.shape(operand) + coercion.collation + (node.negated ? " NOT BETWEEN " : " BETWEEN ") +
                     "min(" + bounds + " AND max(" + bounds);
}

Typed Emitter::emitNode(const Like& node, const Scope& scope, Position) {
    const Typed operand = emit(*node.operand, scope);
    const Typed pattern = emit(*node.pattern, scope);
    // Without a wildcard Like is equality of texts, which an index can serve.
    const bool equality = pattern.literal && pattern.text.find_first_of("*?#[") == std::string::npos &&
                          (operand.kind == CompareKind::Text || operand.kind == CompareKind::Identifier);
    if (equality) return Condition(Compared(operand, node.negated ? "<>" : "=", pattern));
    return Condition("jet_like(" + AsText(operand) + ", " + AsText(pattern) + ")" + (node.negated ? " = 0" : " <> 0"));
}

Typed Emitter::emitNode(const IsNull& node, const Scope& scope, Position) {
    return Condition(AsValue(emit(*node.operand, scope)) + (node.negated ? " IS NOT NULL" : " IS NULL"));
}

Typed Emitter::emitNode(const InQuery& node, const Scope& scope, Position at) {
    std::vector<Typed> operands = {emit(*node.operand, scope)};
    for (const ExpressionPtr& each : node.further)
        operands.push_back(emit(*each, scope));
    SelectText inner = emitQuery(*node.query, &scope);
    if (inner.columns.size() != operands.size()) FailAt(at, "A query behind IN must give one field");
    std::string tested;
    std::string fields;
    bool shaped = false;
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const OutputColumn& column = inner.columns[i];
        const Typed given{.sql = QuotedName(column.name), .kind = column.kind, .type = column.type, .column = true};
        const Coercion coercion = CoercionFor(operands[i], {&given}, false);
        tested += (i == 0 ? "" : ", ") + coercion.shape(operands[i]) + coercion.collation;
        fields += (i == 0 ? "" : ", ") + coercion.shape(given);
        shaped = shaped || coercion.shape(given) != given.sql;
    }
    if (operands.size() > 1) tested = "(" + tested + ")";
    if (shaped) inner.sql = "SELECT " + fields + " FROM (" + inner.sql + ")";
    return Condition(tested + (node.negated ? " NOT IN (" : " IN (") + inner.sql + ")");
}

Typed Emitter::emitNode(const Exists& node, const Scope& scope, Position) {
    return Condition("EXISTS (" + emitQuery(*node.query, &scope).sql + ")");
}

// One row that decides is enough; without one, a comparison with Null leaves the whole unknown.
Typed Emitter::emitNode(const Quantified& node, const Scope& scope, Position at) {
    if (HoldsAggregate(*node.operand)) FailAt(at, "An aggregate can't be compared with all of a query");
    const Typed operand = emit(*node.operand, scope);
    const SelectText inner = emitQuery(*node.query, &scope);
    if (inner.columns.size() != 1) FailAt(at, "A query behind ALL or ANY must give one field");
    const Typed given{.sql = "\"jet$s\"." + QuotedName(inner.columns[0].name),
                      .kind = inner.columns[0].kind,
                      .type = inner.columns[0].type};
    const std::string decides = node.all ? "min(t) = 0 THEN 0" : "max(t) = 1 THEN 1";
    return Condition("SELECT CASE WHEN " + decides + " WHEN count(*) > count(t) THEN NULL ELSE " +
                     (node.all ? "1" : "0") + " END FROM (SELECT (" + Compared(operand, SqlOf(node.op), given) +
                     ") AS t FROM (" + inner.sql + ") AS \"jet$s\")");
}

Typed Emitter::emitNode(const ScalarQuery& node, const Scope& scope, Position at) {
    const SelectText inner = emitQuery(*node.query, &scope);
    if (inner.columns.size() != 1) FailAt(at, "A query within an expression must give one field");
    return {"(" + inner.sql + ")", inner.columns[0].kind, inner.columns[0].type};
}

} // namespace jet
