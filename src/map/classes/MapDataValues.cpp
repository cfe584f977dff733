#include "map/classes/MapDataValues.h"

#include "session/DisplayValue.h"
#include "session/Query.h"
#include "view/DataFilters.h"

namespace tessaro {

namespace {

/// "cdbl('12.5')"
QString AsDouble(double value) {
    return QStringLiteral("cdbl('") + NumberText(value) + QStringLiteral("')");
}

} // namespace

int MapDataValues::Take(double lower, double upper) {
    areas_.clear();
    Records rows = Select(QStringLiteral("Select AreaId from _MapData WHERE cdbl(DataValue) >= ") + AsDouble(lower) +
                              QStringLiteral(" And cDbl(DataValue) <= ") + AsDouble(upper) +
                              QStringLiteral(" order by cdbl(DataValue),AreaID, TimePeriod"),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext())
        areas_ << rows.Text(std::size_t{0});
    return static_cast<int>(areas_.size());
}

double MapDataValues::At(int place) {
    const Records row =
        Select(QStringLiteral("Select  [DataValue] from  [_MapData] where [AreaId] = ") + Quoted(areas_[place]));
    return row.atEnd() ? 0 : NumberOf(row.Text(std::size_t{0})).value_or(0);
}

std::optional<double> MapDataValues::NextAbove(double lower, double upper) {
    const Records least =
        Select(QStringLiteral("Select  min([DataValue]) from  [_MapData] where cdbl([DataValue]) > ") +
               AsDouble(lower) + QStringLiteral(" And cDbl(DataValue) <= ") + AsDouble(upper));
    return least.atEnd() ? std::nullopt : NumberOf(least.Text(std::size_t{0}));
}

int MapDataValues::Count(double lower, double upper) {
    Records rows = Select(QStringLiteral("SELECT AREAID FROM [_MapData] WHERE cdbl([DataValue]) >= ") +
                              AsDouble(lower) + QStringLiteral(" And cdbl(DataValue) <= ") + AsDouble(upper),
                          jet::CursorType::ForwardOnly);
    int count = 0;
    for (; !rows.atEnd(); rows.MoveNext())
        ++count;
    return count;
}

} // namespace tessaro
