#include "map/MapAreas.h"

#include "map/classes/ClassBreaks.h"
#include "session/DisplayValue.h"
#include "session/Messages.h"
#include "session/Query.h"

namespace tessaro {

MapAreas::MapAreas(std::vector<MapArea> rows) : rows_(std::move(rows)) {
    for (std::size_t row = 0; row < rows_.size(); ++row)
        places_.insert(rows_[row].id.trimmed().toUpper(), static_cast<int>(row));
}

int MapAreas::RowOf(const QString& areaId) const {
    return places_.value(areaId.trimmed().toUpper(), -1);
}

bool MapAreas::PeriodsDiffer() const {
    for (const MapArea& row : rows_)
        if (row.period != rows_.front().period) return true;
    return false;
}

std::vector<double> MapAreas::Values() const {
    std::vector<double> values;
    for (const MapArea& row : rows_)
        if (row.number) values.push_back(*row.number);
    return SortedValues(std::move(values));
}

MapAreas AreasOfMapData() {
    std::vector<MapArea> areas;
    for (Records rows = Select(QStringLiteral("SELECT AreaID, AreaName, DataValue, SubPop, Unit, TimePeriod FROM "
                                              "_MapData"),
                               jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext()) {
        const auto text = [&rows](std::size_t field) { return rows.Text(field); };
        areas.push_back({text(0), text(1), text(2), text(3), text(4), text(5), NumberOf(text(2))});
    }
    return MapAreas(std::move(areas));
}

QString YearNote() {
    const Records ends = Select(QStringLiteral("SELECT Min(TimePeriod), Max(TimePeriod) FROM _MapData"));
    if (ends.atEnd()) return {};
    const QString first = ends.Text(std::size_t{0});
    const QString last = ends.Text(std::size_t{1});
    return first == last ? QString() : FilledText(QStringLiteral("TS_MapYears"), {first, last});
}

} // namespace tessaro
