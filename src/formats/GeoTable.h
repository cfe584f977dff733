#pragma once

#include "formats/ValueCube.h"

#include <QStringList>

#include <vector>

namespace tessaro {

/// Values as layers of maps have them: one row an area, one column for each combination of indicator, unit, subgroup,
/// source and period that has values.
struct GeoTable {
    struct Area {
        QString id;
        QString name;
        AreaRings rings;                    ///< empty for an area without an outline
        std::vector<const QString*> values; ///< by column; nullptr for none
    };

    ValueCube cube;
    std::vector<QStringList> columns; ///< indicator, unit, subgroup, source and period of each
    std::vector<Area> areas;
    ValueLosses losses;
};
/// Reads a table, with the outlines of its areas.
[[nodiscard]] GeoTable GeoTableOf(const ValueTable& table);

/// The polygons that rings make up: each the number of a ring around land, then those of the holes in it. A hole that
/// lies in none is land.
[[nodiscard]] std::vector<std::vector<std::size_t>> PolygonsOf(const AreaRings& rings);

} // namespace tessaro
