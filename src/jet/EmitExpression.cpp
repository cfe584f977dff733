#include "jet/Collation.h"
#include "jet/Emitter.h"
#include "jet/Error.h"
#include "jet/Value.h"

#include <cstdlib>

namespace jet {

using namespace tree;

namespace {

bool IsText(const Typed& value) {
    return value.kind != CompareKind::Number && value.type != ColumnType::Unknown;
}

/// The number that a text literal holds, in SQLite's spelling; empty when it holds none.
std::string NumberIn(const std::string& text) {
    if (text.empty()) return {};
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    while (end && *end == ' ')
        ++end;
    const bool plain = text.find_first_not_of(" +-.0123456789eE") == std::string::npos;
    return plain && end && *end == '\0' && end != text.c_str() ? text : std::string();
}

Typed Condition(std::string sql) {
    return {"(" + std::move(sql) + ")", CompareKind::Number, ColumnType::YesNo, true};
}

/// Both as text, for a comparison of a number with a text that may hold one.
std::string AsText(const Typed& value) {
    if (value.literal) return QuotedText(value.text);
    return IsText(value) ? value.sql : "(" + AsValue(value) + " || '')";
}

CompareKind CommonKind(const Typed& left, const Typed& right) {
    if (left.kind == CompareKind::ValueText || right.kind == CompareKind::ValueText) return CompareKind::ValueText;
    if (left.kind == right.kind) return left.kind;
    // A constant of plain letters takes the kind of what it is held against, so that indexes on identifiers serve.
    if (left.kind == CompareKind::Identifier && right.literal && IsAscii(right.text)) return left.kind;
    if (right.kind == CompareKind::Identifier && left.literal && IsAscii(left.text)) return right.kind;
    return CompareKind::Text;
}

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

ColumnType ArithmeticType(const Typed& left, const Typed& right) {
    return IsWhole(left.type) && IsWhole(right.type) ? ColumnType::Long : ColumnType::Double;
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

std::string AsNumber(const Typed& value) {
    if (!IsText(value)) return AsValue(value);
    const std::string number = value.literal ? NumberIn(value.text) : std::string();
    return number.empty() ? "jet_number(" + value.sql + ")" : "(" + number + ")";
}

std::string AsStored(const Typed& value, ColumnType type) {
    switch (type) {
    case ColumnType::YesNo:
        return "jet_bool(" + AsValue(value) + ")";
    case ColumnType::Text:
    case ColumnType::Memo:
    case ColumnType::Guid:
    case ColumnType::DateTime:
        if (value.type == ColumnType::Unknown || IsText(value)) return value.sql;
        if (value.literal) return QuotedText(value.text);
        return "(CASE WHEN " + AsValue(value) + " IS NOT NULL THEN jet_cstr(" + AsValue(value) + ") END)";
    case ColumnType::Long:
    case ColumnType::Integer:
    case ColumnType::Counter: {
        const std::string number = AsNumber(value);
        if (IsWhole(value.type) || value.type == ColumnType::Unknown) return number;
        return "(CASE WHEN " + AsValue(value) + " IS NOT NULL THEN jet_clng(" + number + ") END)";
    }
    case ColumnType::Double:
        return AsNumber(value);
    case ColumnType::Binary:
    case ColumnType::Unknown:
        break;
    }
    return AsValue(value);
}

std::string Compared(const Typed& left, const char* op, const Typed& right) {
    const std::string sign = std::string(" ") + op + " ";
    if (IsText(left) && IsText(right)) return left.sql + sign + right.sql + Collate(CommonKind(left, right));
    if (!IsText(left) && !IsText(right)) return AsValue(left) + sign + AsValue(right);
    const Typed& text = IsText(left) ? left : right;
    if (text.literal && !NumberIn(text.text).empty()) return AsNumber(left) + sign + AsNumber(right);
    return AsText(left) + sign + AsText(right) + Collate(CompareKind::ValueText);
}

Typed Emitter::emit(const Expression& expression, const Scope& scope) {
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
    const double number = std::strtod(node.text.c_str(), nullptr);
    return {node.text, CompareKind::Number, whole ? ColumnType::Long : ColumnType::Double, false,
            true,      ShortestText(number)};
}

Typed Emitter::emitNode(const TextLiteral& node, const Scope&, Position) {
    return {QuotedText(node.text), CompareKind::Text, ColumnType::Text, false, true, node.text};
}

Typed Emitter::emitNode(const DateLiteral& node, const Scope&, Position) {
    return {QuotedText(node.text), CompareKind::Identifier, ColumnType::DateTime, false, true, node.text};
}

Typed Emitter::emitNode(const BooleanLiteral& node, const Scope&, Position) {
    return {node.value ? "-1" : "0", CompareKind::Number, ColumnType::YesNo, false, true, node.value ? "-1" : "0"};
}

Typed Emitter::emitNode(const ColumnName& node, const Scope& scope, Position at) {
    const Scope::Found found = scope.resolve(node, at);
    const OutputColumn& column = found.source->columns[found.column];
    return {found.source->columnSql(found.column), column.kind, column.type};
}

Typed Emitter::emitNode(const Arithmetic& node, const Scope& scope, Position) {
    const Typed left = emit(*node.left, scope);
    const Typed right = emit(*node.right, scope);
    const auto called = [&](const char* name, ColumnType type) {
        return Typed{std::string(name) + "(" + AsNumber(left) + ", " + AsNumber(right) + ")", CompareKind::Number,
                     type};
    };
    const auto written = [&](const char* sign) {
        return Typed{"(" + AsNumber(left) + sign + AsNumber(right) + ")", CompareKind::Number,
                     ArithmeticType(left, right)};
    };
    switch (node.op) {
    case ArithmeticOperator::Concatenate:
        return {"jet_concat(" + AsValue(left) + ", " + AsValue(right) + ")", CompareKind::Text, ColumnType::Text};
    case ArithmeticOperator::Add:
        if (!IsText(left) && !IsText(right)) return written(" + ");
        if (IsText(left) && IsText(right))
            return {"(" + left.sql + " || " + right.sql + ")", CompareKind::Text, ColumnType::Text};
        return {"jet_add(" + AsValue(left) + ", " + AsValue(right) + ")", CompareKind::Number, ColumnType::Double};
    case ArithmeticOperator::Subtract:
        return written(" - ");
    case ArithmeticOperator::Multiply:
        return written(" * ");
    case ArithmeticOperator::Divide:
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
    Typed negated{
        "(-" + AsNumber(operand) + ")", CompareKind::Number, operand.type, false, operand.literal, "-" + operand.text};
    if (IsText(operand)) negated.type = ColumnType::Double;
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
        return Condition(left.sql + (wantsTrue ? " <> 0" : " = 0"));
    }
    return Condition(Compared(left, SqlOf(node.op), right));
}

Typed Emitter::emitNode(const Logical& node, const Scope& scope, Position) {
    if (node.op == LogicalOperator::And || node.op == LogicalOperator::Or) {
        std::string chain;
        for (const ExpressionPtr& operand : node.operands) {
            if (!chain.empty()) chain += node.op == LogicalOperator::And ? " AND " : " OR ";
            chain += condition(*operand, scope);
        }
        return Condition(std::move(chain));
    }
    const std::string left = condition(*node.operands[0], scope);
    const std::string right = condition(*node.operands[1], scope);
    if (node.op == LogicalOperator::Xor) return Condition(left + " <> " + right);
    if (node.op == LogicalOperator::Eqv) return Condition(left + " = " + right);
    return Condition("(NOT " + left + ") OR " + right);
}

Typed Emitter::emitNode(const Not& node, const Scope& scope, Position) {
    return Condition("NOT " + condition(*node.operand, scope));
}

Typed Emitter::emitNode(const Between& node, const Scope& scope, Position) {
    const Typed operand = emit(*node.operand, scope);
    const std::string range =
        Compared(operand, ">=", emit(*node.low, scope)) + " AND " + Compared(operand, "<=", emit(*node.high, scope));
    return Condition(node.negated ? "NOT (" + range + ")" : range);
}

Typed Emitter::emitNode(const Like& node, const Scope& scope, Position) {
    const std::string call =
        "jet_like(" + AsValue(emit(*node.operand, scope)) + ", " + AsValue(emit(*node.pattern, scope)) + ")";
    return Condition(call + (node.negated ? " = 0" : " <> 0"));
}

Typed Emitter::emitNode(const IsNull& node, const Scope& scope, Position) {
    return Condition(AsValue(emit(*node.operand, scope)) + (node.negated ? " IS NOT NULL" : " IS NULL"));
}

Typed Emitter::emitNode(const InList& node, const Scope& scope, Position) {
    Typed operand = emit(*node.operand, scope);
    std::vector<Typed> values;
    bool anyText = IsText(operand);
    bool allNumbers = !anyText;
    CompareKind kind = operand.kind;
    for (const ExpressionPtr& each : node.values) {
        values.push_back(emit(*each, scope));
        const Typed& value = values.back();
        anyText = anyText || IsText(value);
        allNumbers = allNumbers && (!IsText(value) || (value.literal && !NumberIn(value.text).empty()));
        if (IsText(operand) && IsText(value)) kind = CommonKind({.sql = {}, .kind = kind, .type = operand.type}, value);
        if (IsText(operand) != IsText(value) && value.type != ColumnType::Unknown) kind = CompareKind::ValueText;
    }
    const bool asText = anyText && !allNumbers;
    std::string list;
    for (const Typed& value : values) {
        if (!list.empty()) list += ",";
        list += value.type == ColumnType::Unknown ? "NULL" : asText ? AsText(value) : AsNumber(value);
    }
    const std::string left = asText ? AsText(operand) + Collate(kind) : AsValue(operand);
    return Condition(left + (node.negated ? " NOT IN (" : " IN (") + list + ")");
}

Typed Emitter::emitNode(const InQuery& node, const Scope& scope, Position at) {
    const Typed operand = emit(*node.operand, scope);
    const SelectText inner = emitQuery(*node.query, &scope);
    if (inner.columns.size() != 1) FailAt(at, "A query behind IN must give one field");
    const Typed given{.sql = {}, .kind = inner.columns[0].kind, .type = inner.columns[0].type};
    const bool text = IsText(operand) && IsText(given);
    const std::string collation = text ? Collate(CommonKind(operand, given)) : std::string();
    return Condition(AsValue(operand) + collation + (node.negated ? " NOT IN (" : " IN (") + inner.sql + ")");
}

Typed Emitter::emitNode(const Exists& node, const Scope& scope, Position) {
    return Condition("EXISTS (" + emitQuery(*node.query, &scope).sql + ")");
}

Typed Emitter::emitNode(const ScalarQuery& node, const Scope& scope, Position at) {
    const SelectText inner = emitQuery(*node.query, &scope);
    if (inner.columns.size() != 1) FailAt(at, "A query within an expression must give one field");
    return {"(" + inner.sql + ")", inner.columns[0].kind, inner.columns[0].type};
}

} // namespace jet
