#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanBlock.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"

#include <array>
#include <cstdint>
#include <vector>

namespace jet {

/// Where the rows of a block stand in what a side gives: by combination of the codes of its columns.
using SideKeys = std::array<std::uint32_t, kBlockRows>;
void FindSideKeys(const ColumnImage& image, const ScanSide& side, const SideClasses& classes, const ScanBlock& block,
                  SideKeys& keys);

/// The class of one row in a side, which it passes.
[[nodiscard]] std::uint32_t ClassOfRow(const ColumnImage& image, const ScanSide& side, const SideClasses& classes,
                                       std::uint32_t row);
/// Of each column of a side, which codes occur in the combinations that pass.
[[nodiscard]] std::vector<std::vector<std::uint8_t>> CodesThatPass(const ColumnImage& image, const ScanSide& side,
                                                                   const SideClasses& classes);

} // namespace jet
