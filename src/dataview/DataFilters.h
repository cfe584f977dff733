#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>
#include <utility>

namespace tessaro {

/// The row filters of the data view. Missing data shows every cell of the selection's cross product, so it goes without
/// the other two.
struct DataFilters {
    bool MostRecentOn = false;
    bool MostRecentChanged = false;
    bool MissingDataOn = false;
    bool MissingDataChanged = false;
    bool ValueRangeOn = false;
    bool ValueRangeChanged = false;
    double DataValueFrom = 0;
    double DataValueTo = 0;

    [[nodiscard]] bool AnyOn() const { return MostRecentOn || MissingDataOn || ValueRangeOn; }
    bool operator==(const DataFilters&) const = default;
};

/// RowFilter as the later readers of the view get it: rows taken out one by one, value range, most recent data.
[[nodiscard]] QString BuildRowFilter(const DataFilters& filters);

/// The grid's statement under these filters. For most recent data its working tables have to be there.
[[nodiscard]] QString FilteredStatement(const DataFilters& filters, const QString& orderBy);

/// Makes _DataMRD and _DataMRD1, the latest period of each combination and area, and sets MostRecentClause. False when
/// that failed (reported).
bool MakeMostRecentTables();
/// Makes _DataTemp1, the cross product of the selection.
bool MakeMissingDataTable();

/// Rows that stay under these filters; nothing when they can't be counted (a value that is no number). Makes the
/// working tables it needs, but leaves MostRecentClause as it is.
[[nodiscard]] std::optional<qint64> CountFilteredRows(const DataFilters& filters);

/// The least and the greatest value in view; nothing when there are none.
[[nodiscard]] std::optional<std::pair<double, double>> ValueBounds();

/// A number as the statements write it.
[[nodiscard]] QString NumberText(double number);

} // namespace tessaro
