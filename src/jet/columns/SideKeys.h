#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"

#include <array>
#include <cstdint>

namespace jet {

/// Where the rows of a block stand in what a side gives: by combination of the codes of its columns.
using SideKeys = std::array<std::uint32_t, kBlockRows>;
void FindSideKeys(const ColumnImage& image, const ScanSide& side, const SideClasses& classes, const ScanBlock& block,
                  SideKeys& keys);

} // namespace jet
