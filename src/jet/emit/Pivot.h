#pragma once

#include "jet/emit/Translation.h"
#include "jet/values/Value.h"

#include <cstddef>
#include <string>
#include <vector>

/// Puts the SQLite text of a crosstab together, once its values are known.
namespace jet {

/// Throws TooManyColumns for a crosstab of more than 255 columns, row heads included.
void CheckPivotWidth(std::size_t columns);
/// The name of a value's column: its shortest text, "<>" for Null.
[[nodiscard]] std::string PivotName(const Value& value);
/// The SQLite text of a crosstab with a column for each value.
[[nodiscard]] std::string PivotText(const PivotPlan& plan, const std::vector<Value>& values);

} // namespace jet
