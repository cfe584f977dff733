#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace jet {
class Connection;
}

namespace tessaro {

/// The row filters of the data view. They work together: value range and most recent data say which values stay, and
/// missing data adds every cell of the selection that has no value.
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

/// What decides, besides the selection and the session's values, which rows the data view shows.
struct RowsInView {
    DataFilters filters;
    QStringList removedCells; ///< CellKey of the cells without a value that were removed one by one
};

/// Names a cell of the selection: "period_area_combination_source".
[[nodiscard]] QString CellKey(qint32 timePeriodNId, qint32 areaNId, qint32 iusNId, qint32 sourceNId);

/// Most cells without a value that are shown. With more, the filter can't be applied and the dialog says so.
constexpr qint64 kMostMissingCells = 2'000'000;

/// Conditions that leave only numbers, or only texts that are no numbers: as values these are greater than every
/// number.
inline constexpr auto kNumbersOnly = " AND D.Datavalue <= 1.7976931348623157e+308";
inline constexpr auto kNoNumbers = " AND D.Datavalue > 1.7976931348623157e+308";

/// The condition of the value range, for the grid and for RowFilter; empty without a range.
[[nodiscard]] QString ValueRangeClause(const DataFilters& filters);
/// The text of RowFilter: rows removed one by one, value range, most recent data.
[[nodiscard]] QString BuildRowFilter(const DataFilters& filters);

/// The grid's statement under these filters, without the rows and cells that were removed one by one (DeletedRowNIds
/// and `removedCells`). Its working tables, and MostRecentClause where missing data goes with the most recent, have to
/// be there.
[[nodiscard]] QString FilteredStatement(const RowsInView& rows, const QString& orderBy);
/// The grid's statement of the most recent data alone.
[[nodiscard]] QString MostRecentStatement();

/// The rows that the data view shows, with TimePeriodNId, IUSNId, AreaNId, SourceNId, FootnoteNId and Datavalue, for a
/// database with the selection tables and Data; with missing data, _DataTemp1 has to be there too.
[[nodiscard]] QString FavouriteStatement(const RowsInView& rows);

/// Makes _DataMRD and _DataMRD1: the latest period (as text) of each combination and area, and the rows of it. False
/// when that failed (reported).
bool MakeMostRecentTables();
/// Sets MostRecentClause from _DataMRD1.
void SetMostRecentClause();
/// Makes _DataTemp1, the cross product of the selection, on Connection or on the one given. False when that failed
/// (reported).
bool MakeMissingDataTable(jet::Connection* on = nullptr);
/// Cells of the selection: each pair of combination and source that is in view, in every area and period.
[[nodiscard]] qint64 SelectedCells();

/// A value as the grid writes it: in full, with the user's separators where the grid has them.
[[nodiscard]] QString ShownValue(double value);
/// A number as the statements write it.
[[nodiscard]] QString NumberText(double number);

} // namespace tessaro
