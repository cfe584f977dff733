#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"
#include "jet/columns/WorkWatch.h"

#include <cstdint>
#include <vector>

namespace jet {

/// Puts rows of an image into the order of a plan; those that are equal in it keep their order. Takes 4 bytes a
/// row while it sorts, up to 20 where most values are nearly the same. Throws Error: ColumnsUnfit when a field can't be
/// ordered; Interrupted when the watch stops it.
void SortRows(std::vector<std::uint32_t>& rows, const ColumnImage& image, const ScanPlan& plan, const ScanInput& input,
              WorkWatch& watch);

} // namespace jet
