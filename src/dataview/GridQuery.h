#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>

/// The columns of the data grid and the orders of its query.
namespace tessaro {

/// Columns of the data grid, counted from 1. The first eight show, the others are working columns.
enum GridColumnNumber {
    ColTimePeriod = 1,
    ColAreaID,
    ColAreaName,
    ColIndicator,
    ColDatavalue,
    ColUnit,
    ColSubpop,
    ColSource,
    ColIndicatorGID,
    ColSourceNID,
    ColRowNID,
    ColFootNID,
};
constexpr int MaxCols = 12;
constexpr int VisibleCols = 8;

struct GridColumn {
    const char* field;          ///< page field: "TimePeriod" …
    const char* headerKey;      ///< key of the head's text; empty for working columns
    const char* sortExpression; ///< what a requery sorts by; empty for working columns
};

/// The columns in order; column c stands at c - 1.
[[nodiscard]] const std::array<GridColumn, MaxCols>& GridColumns();

/// The order of a requery until the user sorts.
[[nodiscard]] QString DefaultDataOrderBy();
/// " ORDER BY " and the expression of a visible column with its direction; empty for any other column.
[[nodiscard]] QString DataOrderByColumn(int column, bool ascending);

/// Rows of Data by their numbers with the texts that the grid shows, as far as they are selected; RowNId is field
/// RestoredRowNId.
[[nodiscard]] QString RestoreStatement(const QString& rowNIds);
constexpr std::size_t kRestoredRowNId = 10;
/// The longest texts that a visible column can show of the selection, read from the selection itself; none for values.
[[nodiscard]] QStringList LongestTextsOf(int column);

} // namespace tessaro
