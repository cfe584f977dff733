#pragma once

#include "jet/sql/Tree.h"

#include <algorithm>
#include <type_traits>

/// Walks through the operands of an expression.
namespace jet {

/// Calls `visit` for each operand of an expression, as long as it gives true. False when it gave false, and for
/// subqueries, which are no operands.
template <class Visit> bool VisitOperands(const tree::Expression& expression, const Visit& visit) {
    using namespace tree;
    const auto all = [&](const std::vector<ExpressionPtr>& operands) {
        return std::ranges::all_of(operands, [&](const ExpressionPtr& operand) { return visit(*operand); });
    };
    return std::visit(
        [&]<class Node>(const Node& node) {
            if constexpr (std::is_same_v<Node, Arithmetic> || std::is_same_v<Node, Comparison>)
                return visit(*node.left) && visit(*node.right);
            else if constexpr (std::is_same_v<Node, Negation> || std::is_same_v<Node, Not> ||
                               std::is_same_v<Node, IsNull>)
                return visit(*node.operand);
            else if constexpr (std::is_same_v<Node, Logical>)
                return all(node.operands);
            else if constexpr (std::is_same_v<Node, Between>)
                return visit(*node.operand) && visit(*node.low) && visit(*node.high);
            else if constexpr (std::is_same_v<Node, Like>)
                return visit(*node.operand) && visit(*node.pattern);
            else if constexpr (std::is_same_v<Node, InList>)
                return visit(*node.operand) && all(node.values);
            else if constexpr (std::is_same_v<Node, Call>)
                return all(node.arguments);
            else
                return !std::is_same_v<Node, InQuery> && !std::is_same_v<Node, Exists> &&
                       !std::is_same_v<Node, Quantified> && !std::is_same_v<Node, ScalarQuery>;
        },
        expression.node);
}

} // namespace jet
