#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/ScanPlan.h"
#include "jet/values/NumberList.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <memory>
#include <vector>

/// Goes through the rows of an image and computes figures for groups of them.
namespace jet {

/// Which codes of a column pass, and the rank of each.
struct PassingCodes {
    std::vector<std::uint8_t> passes;
    std::vector<std::int32_t> ranks; ///< -1: Null, which has none; empty when nothing is ranked
    std::vector<Value> ranked;       ///< what each rank stands for

    bool operator==(const PassingCodes&) const = default;
};

/// The sum of a group, compensated after Neumaier.
struct SumState {
    std::int64_t count = 0;
    double sum = 0;
    double lost = 0;
};

/// The spread of a group around its mean, after Welford.
struct SpreadState {
    std::int64_t count = 0;
    double mean = 0;
    double squares = 0;
};

/// Row of the image that stands for a group: none.
inline constexpr std::uint32_t kNoRow = 0xFFFFFFFF;

/// The figures of all groups, one element a place; only those that the plan asks for are there. A place has one number
/// for each column of codes, and is empty when no row belongs to it.
struct ScanGroups {
    std::vector<std::uint32_t> filled; ///< places with rows, ascending: the order of their codes
    std::vector<std::int64_t> rows;
    std::vector<std::int64_t> values;
    std::vector<std::uint32_t> least;      ///< rows of the image
    std::vector<std::uint32_t> greatest;   ///< rows of the image
    std::vector<std::uint32_t> unreadable; ///< the first row of the group that is no number
    std::vector<SumState> sums;
    std::vector<SpreadState> spreads;
    std::vector<std::vector<std::int32_t>> ranks;  ///< one list a figure of the plan, empty for those not ranked
    std::vector<std::vector<std::uint32_t>> codes; ///< per column of the plan: the codes that its places stand for

    /// The code of a place in a column of the plan.
    [[nodiscard]] std::uint32_t code(std::uint32_t place, std::size_t column) const;
};

/// Thrown as Error (ColumnsUnfit) when there would be more groups than memory is given to.
/// `keys` has one entry for each of the plan's.
[[nodiscard]] std::shared_ptr<const ScanGroups> ScanRows(const ColumnImage& image, const ScanPlan& plan,
                                                         const std::vector<PassingCodes>& keys);

} // namespace jet
