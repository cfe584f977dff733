#include "jet/sql/CopyExpression.h"

#include "jet/sql/MakeTree.h"

#include <algorithm>
#include <type_traits>

namespace jet {

using namespace tree;

namespace {

bool Copy(const ExpressionPtr& from, ExpressionPtr& into) {
    into = Copied(*from);
    return into != nullptr;
}

bool Copy(const std::vector<ExpressionPtr>& from, std::vector<ExpressionPtr>& into) {
    return std::ranges::all_of(from, [&](const ExpressionPtr& each) { return Copy(each, into.emplace_back()); });
}

template <class Node>
constexpr bool kHasNoOperands =
    std::is_same_v<Node, NullLiteral> || std::is_same_v<Node, NumberLiteral> || std::is_same_v<Node, TextLiteral> ||
    std::is_same_v<Node, DateLiteral> || std::is_same_v<Node, BooleanLiteral> || std::is_same_v<Node, ColumnName> ||
    std::is_same_v<Node, ScannedAggregate>;

template <class Node>
constexpr bool kHoldsQuery = std::is_same_v<Node, InQuery> || std::is_same_v<Node, Exists> ||
                             std::is_same_v<Node, Quantified> || std::is_same_v<Node, ScalarQuery>;

/// Copies the operands of a node into a node of its kind. False when one of them can't be.
template <class Node> bool CopyOperands(const Node& from, Node& into) {
    if constexpr (std::is_same_v<Node, Arithmetic> || std::is_same_v<Node, Comparison>) {
        into.op = from.op;
        return Copy(from.left, into.left) && Copy(from.right, into.right);
    } else if constexpr (std::is_same_v<Node, Logical>) {
        into.op = from.op;
        return Copy(from.operands, into.operands);
    } else if constexpr (std::is_same_v<Node, Negation> || std::is_same_v<Node, Not>) {
        return Copy(from.operand, into.operand);
    } else if constexpr (std::is_same_v<Node, Call>) {
        into = Call{from.name, from.star, from.distinct, {}};
        return Copy(from.arguments, into.arguments);
    } else {
        into.negated = from.negated;
        if (!Copy(from.operand, into.operand)) return false;
        if constexpr (std::is_same_v<Node, Between>) return Copy(from.low, into.low) && Copy(from.high, into.high);
        if constexpr (std::is_same_v<Node, Like>) return Copy(from.pattern, into.pattern);
        if constexpr (std::is_same_v<Node, InList>) {
            into.numbers = from.numbers;
            return Copy(from.values, into.values);
        }
        return true;
    }
}

} // namespace

ExpressionPtr Copied(const Expression& expression) {
    return std::visit(
        [&]<class Node>(const Node& node) -> ExpressionPtr {
            if constexpr (kHoldsQuery<Node>) {
                return nullptr;
            } else if constexpr (kHasNoOperands<Node>) {
                return MakeExpression(expression.at, Node(node));
            } else {
                Node copy;
                return CopyOperands(node, copy) ? MakeExpression(expression.at, std::move(copy)) : nullptr;
            }
        },
        expression.node);
}

} // namespace jet
