#pragma once

#include "presentation/GraphPlan.h"
#include "presentation/TableWorkbook.h"

/// Writes the workbook of a graph: its chart and its tables.
namespace tessaro {

/// What the options page of the graph wizard says.
struct GraphOptions {
    office::ChartKind kind = office::ChartKind::Column;
    bool formatTable = true; ///< chkFormatTable
    bool sort = false;       ///< chkSort: by the column of values sortColumn, counted from 0
    int sortColumn = 0;
    bool sortAscending = true;

    bool operator==(const GraphOptions&) const = default;
};

/// Columns, or lines when time stands on the axis that the graph runs along.
[[nodiscard]] office::ChartKind DefaultKind(const RowsColumns& arrangement);

/// Writes a chart and its table into a copy of the template: the chart's sheet "Graph", the table, the list of values,
/// the sources. The chart is live on the table.
class GraphWorkbook final {
  public:
    static constexpr int kChartSheet = 1;
    static constexpr int kTableSheet = 2;
    /// Rows of the table's sheet.
    static constexpr int HeaderRow = 7;

    /// `table` is in its final order.
    GraphWorkbook(office::Workbook book, const PivotTable& table, const GraphSubject& subject,
                  const GraphOptions& options, const WizardProgress& progress);

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
    /// Sources and notes below the table, in full.
    void WriteLines();
    void AddChart();
    [[nodiscard]] office::Chart DrawSeries(office::Worksheet& sheet) const;
    void NameAxes(office::Chart& chart) const;
    void DressChart(office::Chart& chart) const;
    [[nodiscard]] std::vector<QString> Heads() const;
    [[nodiscard]] std::vector<QString> RowHeads(int row) const;
    /// The row of heads as the chart reads it: periods as numbers where it measures them, long names shortened.
    [[nodiscard]] std::vector<office::Cell> ChartHeads() const;
    [[nodiscard]] int FirstValueColumn() const { return table_.FieldCount() + (plan_.NeedsLabels() ? 2 : 1); }
    [[nodiscard]] int LastColumn() const { return FirstValueColumn() + table_.ColumnCount() - 1; }
    /// The heads that the chart reads stand in a row of their own where the table's are too long.
    [[nodiscard]] int ChartHeadRow() const { return plan_.NeedsHeadLabels() ? HeaderRow + 1 : HeaderRow; }
    [[nodiscard]] int FirstDataRow() const { return ChartHeadRow() + 1; }
    [[nodiscard]] int LastRow() const { return ChartHeadRow() + table_.RowCount(); }

    office::Workbook book_;
    office::Worksheet sheet_;
    const PivotTable& table_;
    const GraphSubject& subject_;
    const GraphOptions& options_;
    const WizardProgress& progress_;
    const GraphPlan plan_;
    ColumnWidths widths_;
};

/// Asked before a graph is drawn that couldn't be read or would mislead, with the question for the user; False gives it
/// up.
using MayDraw = std::function<bool(const QString& question)>;
/// ShowXLS of the graph wizard; like that of the table wizard.
[[nodiscard]] ShowOutcome ShowGraphXLS(RowsColumns& arrangement, const GraphOptions& options,
                                       const WizardProgress& progress = {}, const MayDraw& mayDraw = {});

} // namespace tessaro
