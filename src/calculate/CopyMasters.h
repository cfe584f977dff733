#pragma once

#include "database/TargetDatabase.h"

namespace tessaro {

/// Copies what the rows of _Data refer to, without those rows: classifications, units, subgroups, combinations,
/// sources, periods and areas. Throws, also
/// BuildingStopped.
void CopyMasters(TargetDatabase& target);

} // namespace tessaro
