#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanGroups.h"
#include "jet/columns/ScanPlan.h"
#include "jet/columns/WorkWatch.h"

#include <memory>

/// Goes through the rows of an image and computes figures for groups of them.
namespace jet {

/// How many threads go through the rows.
enum class ScanThreads { One, Two, AsPays };

/// Throws Error: ColumnsUnfit when there would be more groups than memory is given to, or too many to be worth it;
/// Interrupted when the watch stops it, which all threads notice within a few milliseconds.
[[nodiscard]] std::shared_ptr<const ScanGroups> ScanRows(const ColumnImage& image, const ScanPlan& plan,
                                                         const ScanInput& input, WorkWatch& watch,
                                                         ScanThreads threads = ScanThreads::AsPays);

} // namespace jet
