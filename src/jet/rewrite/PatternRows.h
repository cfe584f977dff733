#pragma once

#include "jet/sql/Tree.h"

namespace jet {

/// In an UPDATE over several tables, a Like whose pattern comes from a row is an equality wherever the pattern holds no
/// wildcard, and only for an equality an index can serve. The first such Like is set apart from the other conditions,
/// so that the rows of the two cases are gathered one after the other. True when there was one.
bool SetPatternApart(tree::Update& update);

} // namespace jet
