#pragma once

#include "office/Chart.h"
#include "presentation/PivotTable.h"

#include <QString>

namespace tessaro {

/// How a table becomes a chart: which side runs along the axis, what names its points and series, what it is called,
/// and whether it could still be read. Knows no workbook. The table must outlive it.
class GraphPlan final {
  public:
    GraphPlan(const PivotTable& table, office::ChartKind kind);

    /// Each row is a series, and the heads stand along the axis.
    [[nodiscard]] bool SeriesInRows() const { return seriesInRows_; }
    /// A scatter chart that sets the further columns of values against the first one.
    [[nodiscard]] bool ComparesColumns() const;
    /// A scatter chart along the time, whose periods stand on its axis as numbers.
    [[nodiscard]] bool NeedsNumbersAlong() const;
    /// A pie has one series, the first.
    [[nodiscard]] int SeriesCount() const;
    [[nodiscard]] int PointCount() const;
    /// So many series or points that nobody could tell them apart.
    [[nodiscard]] bool IsCrowded() const;

    /// A column of texts is needed that name the rows: several fields stand there, or a name is too long.
    [[nodiscard]] bool NeedsLabels() const { return needsLabels_; }
    /// The name of a row in the chart: its fields joined, long ones without their middle.
    [[nodiscard]] QString LabelOf(int row) const;
    /// Names of series so long that a legend beside the plot would leave it no room.
    [[nodiscard]] bool HasLongNames() const;
    /// Values that are read more easily with separators.
    [[nodiscard]] bool HasLongNumbers() const;
    /// A column's head in one line.
    [[nodiscard]] QString HeadOf(int column) const;
    /// What the chart is about: its only column and what the whole selection has just one value of.
    [[nodiscard]] QString Title() const;

  private:
    [[nodiscard]] bool FindSeriesInRows() const;
    [[nodiscard]] bool FindNeedsLabels() const;

    const PivotTable& table_;
    const office::ChartKind kind_;
    const bool seriesInRows_;
    const bool needsLabels_;
};

} // namespace tessaro
