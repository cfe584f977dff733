#pragma once

#include "jet/columns/KeyTable.h"
#include "jet/columns/ScanPlan.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <optional>
#include <vector>

/// What goes into a scan, and what it gives.
namespace jet {

/// Which codes of a column pass, and the rank of each.
struct PassingCodes {
    std::vector<std::uint8_t> passes;
    std::vector<std::int32_t> ranks; ///< -1: Null, which has none; empty when nothing is ranked
    std::vector<Value> ranked;       ///< what each rank stands for

    bool operator==(const PassingCodes&) const = default;
};

/// What the small tables of a side give for each combination of the codes of its columns. A class is one combination of
/// the fields that tell groups apart.
struct SideClasses {
    /// The combinations that the tables give, where there might be very many: each stands at its place among these
    /// then, and behind the last one stand all others.
    std::optional<KeyTable> met;
    std::vector<std::int32_t> classOf;            ///< by combination; -1: the rows don't pass
    std::uint32_t classes = 0;                    ///< how many there are
    std::vector<std::vector<Value>> fields;       ///< per field: its value in each class
    std::vector<std::vector<std::int32_t>> ranks; ///< per ranked field: by combination; -1: Null
    std::vector<std::vector<Value>> ranked;       ///< per ranked field: what each rank stands for

    bool operator==(const SideClasses&) const = default;
};

/// What the queries of a plan gave.
struct ScanInput {
    std::vector<PassingCodes> keys; ///< one for each of the plan's
    std::vector<SideClasses> sides; ///< the same

    bool operator==(const ScanInput&) const = default;
};

/// The sum of a group, compensated after Neumaier.
struct SumState {
    std::int64_t count = 0;
    double sum = 0;
    double lost = 0;

    void Add(double term);
    void Join(const SumState& part);
};

/// The spread of a group around its mean, after Welford.
struct SpreadState {
    std::int64_t count = 0;
    double mean = 0;
    double squares = 0;

    void Add(double value);
    void Join(const SpreadState& part);
};

/// Row of the image that stands for a group: none.
inline constexpr std::uint32_t kNoRow = 0xFFFFFFFF;

/// The figures of all groups, one element a place; only those that the plan asks for are there. A place is empty when
/// no row belongs to it.
struct ScanGroups {
    std::vector<std::uint32_t> filled; ///< places with rows, as they are given; the rows where each is a group
    std::vector<std::uint32_t> rows;
    std::vector<std::uint32_t> values;
    std::vector<std::uint32_t> least;      ///< rows of the image
    std::vector<std::uint32_t> greatest;   ///< rows of the image
    std::vector<std::uint32_t> first;      ///< rows of the image
    std::vector<std::uint32_t> unreadable; ///< the first row of the group that is no number
    std::vector<SumState> sums;
    std::vector<SpreadState> spreads;
    std::vector<std::vector<std::int32_t>> ranks;  ///< one list a figure of the plan: ranks, or counts of them
    std::vector<std::vector<std::uint32_t>> codes; ///< per column of the plan: the codes that its shares stand for
    std::vector<std::uint32_t> sizes;              ///< how many shares each column, then each side, has
    std::vector<std::uint64_t> keys; ///< what each place stands for, the shares as one number; empty: its own number

    /// The code of a place in a column of the plan.
    [[nodiscard]] std::uint32_t code(std::uint32_t place, std::size_t column) const;
    /// The class of a place in a side of the plan.
    [[nodiscard]] std::uint32_t classOf(std::uint32_t place, std::size_t side) const;

  private:
    [[nodiscard]] std::uint32_t share(std::uint32_t place, std::size_t position) const;
};

} // namespace jet
