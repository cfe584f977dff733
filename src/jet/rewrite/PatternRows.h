#pragma once

#include "jet/sql/Tree.h"

namespace jet {

/// In an UPDATE over several tables, a Like whose pattern comes from a field is an equality for those rows whose
/// pattern holds no wildcard, and an index can find equal texts but not patterns. The first such Like is taken out of
/// the other conditions; the emitter then collects the rows of the two cases one after the other. True when there was
/// one.
bool SetPatternApart(tree::Update& update);

} // namespace jet
