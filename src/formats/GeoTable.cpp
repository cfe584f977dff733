#include "formats/GeoTable.h"

#include <QPolygonF>

#include <cmath>
#include <map>

namespace tessaro {

namespace {

using Column = std::array<int, 5>; // places of indicator, unit, subgroup, source and period

Column ColumnOf(const ValueCube::Cell& cell) {
    return {cell.at[1], cell.at[2], cell.at[3], cell.at[4], cell.at[5]};
}

/// Twice the area within a ring; below 0 for one that runs clockwise.
double SignedArea(const std::vector<QPointF>& ring) {
    double area = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const QPointF& next = ring[(i + 1) % ring.size()];
        area += ring[i].x() * next.y() - next.x() * ring[i].y();
    }
    return area;
}

std::map<Column, std::size_t> ColumnsOf(GeoTable& geo) {
    std::map<Column, std::size_t> places;
    for (const ValueCube::Cell& cell : geo.cube.cells)
        places.try_emplace(ColumnOf(cell), 0);
    for (auto& [column, place] : places) {
        place = geo.columns.size();
        QStringList& texts = geo.columns.emplace_back();
        for (std::size_t i = 0; i < column.size(); ++i)
            texts << geo.cube.dimensions[i + 1].labels[column[i]];
    }
    return places;
}

} // namespace

GeoTable GeoTableOf(const ValueTable& table) {
    GeoTable geo;
    QHash<QString, QString> names;
    ValueTable naming = table;
    naming.at = [&names, &table](int number) {
        std::optional<ValueRow> row = table.at(number);
        if (row) names.insert(row->areaId, row->areaName);
        return row;
    };
    geo.cube = CubeOf(naming);
    geo.losses.doubles = geo.cube.losses.doubles;
    const std::map<Column, std::size_t> places = ColumnsOf(geo);
    for (const QString& id : std::as_const(geo.cube.dimensions[0].codes)) {
        GeoTable::Area area{id, names.value(id), table.ringsOf ? table.ringsOf(id) : AreaRings(), {}};
        geo.losses.withoutShape += area.rings.empty() ? 1 : 0;
        area.values.resize(geo.columns.size(), nullptr);
        geo.areas.push_back(std::move(area));
    }
    for (const ValueCube::Cell& cell : geo.cube.cells)
        geo.areas[static_cast<std::size_t>(cell.at[0])].values[places.at(ColumnOf(cell))] = &cell.value;
    return geo;
}

std::vector<std::vector<std::size_t>> PolygonsOf(const AreaRings& rings) {
    std::vector<std::vector<std::size_t>> polygons;
    std::vector<double> sizes;
    std::vector<std::size_t> holes;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (SignedArea(rings[i]) > 0) {
            holes.push_back(i);
            continue;
        }
        polygons.push_back({i});
        sizes.push_back(std::abs(SignedArea(rings[i])));
    }
    for (const std::size_t hole : holes) {
        // The smallest land around it.
        std::size_t best = polygons.size();
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            const std::vector<QPointF>& land = rings[polygons[i].front()];
            const QPolygonF shape(QList<QPointF>(land.begin(), land.end()));
            if ((best == polygons.size() || sizes[i] < sizes[best]) && !rings[hole].empty() &&
                shape.containsPoint(rings[hole].front(), Qt::OddEvenFill))
                best = i;
        }
        if (best == polygons.size())
            polygons.push_back({hole});
        else
            polygons[best].push_back(hole);
        sizes.resize(polygons.size(), 0);
    }
    return polygons;
}

} // namespace tessaro
