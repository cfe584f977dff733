#pragma once

#include "jet/sql/Tree.h"

#include <memory>
#include <utility>
#include <vector>

/// Makes nodes of the syntax tree, and takes conditions apart.
namespace jet {

template <class Node> tree::ExpressionPtr MakeExpression(Position at, Node&& node) {
    auto made = std::make_unique<tree::Expression>();
    made->at = at;
    made->node = std::forward<Node>(node);
    return made;
}

/// The conditions joined by And; empty without any.
inline tree::ExpressionPtr AllOf(Position at, std::vector<tree::ExpressionPtr> conditions) {
    if (conditions.empty()) return nullptr;
    if (conditions.size() == 1) return std::move(conditions.front());
    return MakeExpression(at, tree::Logical{tree::LogicalOperator::And, std::move(conditions)});
}

/// Takes a condition apart at its Ands.
inline void TakeApart(tree::ExpressionPtr condition, std::vector<tree::ExpressionPtr>& parts) {
    auto* logical = std::get_if<tree::Logical>(&condition->node);
    if (logical == nullptr || logical->op != tree::LogicalOperator::And) return parts.push_back(std::move(condition));
    for (tree::ExpressionPtr& operand : logical->operands)
        TakeApart(std::move(operand), parts);
}

} // namespace jet
