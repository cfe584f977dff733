#pragma once

#include "jet/sql/Tree.h"

namespace jet {

/// Compares expressions by what they say, wherever they stand in the statement. Names and functions ignore case, texts
/// do not. Inner queries are the same when they are spelt the same.
class SameExpression {
  public:
    virtual ~SameExpression() = default;

    [[nodiscard]] bool operator()(const tree::Expression& a, const tree::Expression& b) const;

  protected:
    /// What the expression stands for: itself, unless it is a name given to another one.
    [[nodiscard]] virtual const tree::Expression& meaning(const tree::Expression& expression) const = 0;
    [[nodiscard]] virtual bool sameField(const tree::ColumnName& a, const tree::ColumnName& b) const = 0;
};

} // namespace jet
