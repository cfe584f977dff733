#pragma once

#include "presentation/GraphPlan.h"
#include "presentation/TableWorkbook.h"

namespace tessaro {

/// What the options page of the graph wizard says.
struct GraphOptions {
    office::ChartKind kind = office::ChartKind::Column;
    bool formatTable = true; ///< chkFormatTable
    bool sort = false;       ///< chkSort: by the column of values sortColumn, counted from 0
    int sortColumn = 0;
    bool sortAscending = true;
};

/// Columns, or lines when time stands on the axis that the graph runs along.
[[nodiscard]] office::ChartKind DefaultKind(const RowsColumns& arrangement);

/// Writes a chart and its table into a copy of the template: the chart's sheet "Graph", the table, the list of values,
/// the sources. The chart is live on the table.
class GraphWorkbook final {
  public:
    static constexpr int ChartSheet = 1;
    static constexpr int TableSheet = 2;
    /// Rows of the table's sheet.
    static constexpr int HeaderRow = 7;

    /// `table` is in its final order.
    GraphWorkbook(office::Workbook book, const PivotTable& table, const GraphOptions& options,
                  const WizardProgress& progress);

    /// Fills all sheets and saves. Throws office::Error.
    void Write();

    /// The data block, from the head of the first column to the last value: "$A$7", "$D$20".
    [[nodiscard]] QString FirstCellAddress() const;
    [[nodiscard]] QString LastCellAddress() const;

  private:
    void MeasureColumns();
    void WriteTitle();
    void WriteTable();
    void DressTable();
    void WriteComments();
    void Format();
    void AddChart();
    [[nodiscard]] std::vector<QString> Heads() const;
    [[nodiscard]] std::vector<QString> RowHeads(int row) const;
    /// What stands along the axis: a text, or a number where the chart measures it.
    [[nodiscard]] office::Cell HeadCell(const QString& text) const;
    [[nodiscard]] int FirstValueColumn() const { return table_.FieldCount() + (plan_.NeedsLabels() ? 2 : 1); }
    [[nodiscard]] int LastColumn() const { return FirstValueColumn() + table_.ColumnCount() - 1; }
    [[nodiscard]] int LastRow() const { return HeaderRow + table_.RowCount(); }

    office::Workbook book_;
    office::Worksheet sheet_;
    const PivotTable& table_;
    const GraphOptions& options_;
    const WizardProgress& progress_;
    const GraphPlan plan_;
    ColumnWidths widths_;
};

/// Asked before a crowded graph is drawn, with its numbers of points and series; False gives it up.
using MayDraw = std::function<bool(int points, int series)>;
/// ShowXLS of the graph wizard; like that of the table wizard.
[[nodiscard]] ShowOutcome ShowGraphXLS(RowsColumns& arrangement, const GraphOptions& options,
                                       const WizardProgress& progress = {}, const MayDraw& mayDraw = {});

} // namespace tessaro
