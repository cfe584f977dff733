#pragma once

#include "formats/ValueTable.h"

#include <QHash>
#include <QStringList>

#include <array>
#include <vector>

namespace tessaro {

/// The dimensions of a table of values, and the place of each value in them.
struct ValueCube {
    static constexpr std::size_t kDimensions = 6; // area, indicator, unit, subgroup, source, period
    static constexpr std::size_t kPeriod = 5;

    struct Dimension {
        QStringList codes;
        QStringList labels; ///< all different
        QHash<QString, int> places;
    };
    struct Cell {
        std::array<int, kDimensions> at{};
        QString value;
        QString footnote;
    };

    std::array<Dimension, kDimensions> dimensions; ///< codes in the order in which they came, periods sorted
    std::vector<Cell> cells; ///< in the order of the dimensions; of several for one place the last
    ValueLosses losses;      ///< doubles, and values that are no numbers
};

/// What the first five dimensions tell of a row of periods.
using CubeRow = std::array<int, ValueCube::kPeriod>;
[[nodiscard]] CubeRow RowOf(const ValueCube::Cell& cell);

/// Tells the losses when there are any: see ValueTable.
void TellLosses(const ValueTable& table, const ValueLosses& losses);

/// Reads a table once.
[[nodiscard]] ValueCube CubeOf(const ValueTable& table);

} // namespace tessaro
