#pragma once

#include "presentation/PivotQuery.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

/// A table of values with its heads, sorted, as it will be written.
namespace tessaro {

/// A value of the sheet and the id of its footnote (0: none).
struct PivotCell {
    QString value; ///< as the data has it; empty for no value
    qint64 footnote = 0;

    bool operator==(const PivotCell&) const = default;
};

/// Takes "12.5{{}}3" apart.
[[nodiscard]] PivotCell SplitFootnote(const QString& value);

/// What a column of values shows.
struct PivotColumn {
    QString head;      ///< lines parted by line feeds
    QString indicator; ///< the name on it, when the indicator is on the columns
};

/// The rows of a crosstab, with heads as texts.
struct PivotTable {
    std::vector<PivotField> rowFields;
    std::vector<PivotField> columnFields;
    std::vector<PivotColumn> columns;
    std::vector<QStringList> rowTexts; ///< one text for each row field
    std::vector<std::vector<PivotCell>> cells;

    [[nodiscard]] int RowCount() const { return static_cast<int>(rowTexts.size()); }
    [[nodiscard]] int FieldCount() const { return static_cast<int>(rowFields.size()); }
    [[nodiscard]] int ColumnCount() const { return static_cast<int>(columns.size()); }
    /// The indicator's name for a cell; empty when it is neither on the rows nor on the columns.
    [[nodiscard]] QString IndicatorOf(int row, int column) const;
    [[nodiscard]] bool HasFootnotes() const;
    /// Cells that hold a value.
    [[nodiscard]] int ValueCount() const;

    /// Puts the columns into the order of their heads.
    void SortColumns();
    /// Sorts the rows by a column of values: numbers, then texts, empty ones last either way. Equal ones keep their
    /// order. A column that isn't there changes nothing.
    void SortRows(int column, bool ascending);
};

/// Runs the crosstab. Empty when it fails or gives no rows; `progress` gets 0 to 100.
[[nodiscard]] PivotTable ReadPivot(const PivotQuery& query, const std::function<void(int)>& progress = {});

} // namespace tessaro
