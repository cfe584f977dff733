#pragma once

#include "jet/sql/Tree.h"

#include <string_view>

/// Reads a statement into a syntax tree.
namespace jet {

/// The tree of one statement; a final ";" is allowed. Throws SyntaxError with line and column. Nesting deeper than a
/// few hundred levels is refused, so that no text can exhaust the stack.
[[nodiscard]] tree::Statement Parse(std::string_view sql);

} // namespace jet
