#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tessaro {

/// A row of `_MapData`: the value of one area.
struct MapArea {
    QString id;
    QString name;
    QString value; ///< as it is stored; `number` is what it reads as
    QString subpop;
    QString unit;
    QString period;
    std::optional<double> number;
};

/// The rows of `_MapData` in memory, in the order of the table, found by the ids of areas in any case.
class MapAreas final {
  public:
    MapAreas() = default;
    explicit MapAreas(std::vector<MapArea> rows);

    [[nodiscard]] const std::vector<MapArea>& Rows() const { return rows_; }
    /// The number of an area's row; -1 for one without a value.
    [[nodiscard]] int RowOf(const QString& areaId) const;
    /// True when the values are of more than one period.
    [[nodiscard]] bool PeriodsDiffer() const;
    /// The values in ascending order.
    [[nodiscard]] std::vector<double> Values() const;

  private:
    std::vector<MapArea> rows_;
    QHash<QString, int> places_;
};

[[nodiscard]] MapAreas AreasOfMapData();

/// A note for the legend and beside the sources of a map whose values are of different periods: from which to which.
/// Empty when all are of one.
[[nodiscard]] QString YearNote();

} // namespace tessaro
