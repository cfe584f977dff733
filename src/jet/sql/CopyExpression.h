#pragma once

#include "jet/sql/Tree.h"

namespace jet {

/// A copy of an expression; nullptr for one that holds an inner query.
[[nodiscard]] tree::ExpressionPtr Copied(const tree::Expression& expression);

} // namespace jet
