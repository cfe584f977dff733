#pragma once

#include "office/Chart.h"
#include "presentation/GraphSubject.h"
#include "presentation/PeriodPlaces.h"

#include <QString>

namespace tessaro {

/// How a table becomes a chart: what runs along the axis, what names its points and series, what it is called, and
/// whether it could be read. Knows no workbook. Table and subject must outlive it.
class GraphPlan final {
  public:
    /// What the chart is drawn from.
    enum class Layout {
        RowSeries,      ///< each row is a series, the heads stand along the axis
        AlongTime,      ///< the same, with the periods of the heads measured
        ColumnSeries,   ///< each column is a series, the rows stand along the axis (a pie of the rows)
        CompareColumns, ///< the first column's values along the axis, the others' against them
        CompareRows,    ///< the same with rows
        Nothing         ///< a scatter chart of a table that holds nothing to measure along the axis
    };

    GraphPlan(const PivotTable& table, const GraphSubject& subject, office::ChartKind kind);

    [[nodiscard]] Layout layout() const { return layout_; }
    [[nodiscard]] bool SeriesInRows() const;
    [[nodiscard]] bool Compares() const { return layout_ == Layout::CompareColumns || layout_ == Layout::CompareRows; }
    /// Where the heads stand along the axis of a chart AlongTime.
    [[nodiscard]] const PeriodPlaces& Periods() const { return periods_; }
    /// A pie has one series.
    [[nodiscard]] int SeriesCount() const;
    /// Points of one series.
    [[nodiscard]] int PointsAlong() const;
    /// Names that a legend would hold.
    [[nodiscard]] int LegendNames() const;
    /// The series, counted from 1, with a value between missing ones, which a line alone doesn't show.
    [[nodiscard]] std::vector<int> SeriesWithLonePoints() const;
    /// The series, counted from 1, that get an axis of values of their own on the other side: those in the second of
    /// two units, where lines show them.
    [[nodiscard]] std::vector<int> SecondAxisSeries() const;
    /// The unit of the axis of values, and of the one on the other side. Several units that share an axis are all
    /// named.
    [[nodiscard]] QString ValueAxisTitle() const;
    [[nodiscard]] QString SecondAxisTitle() const;

    /// Why the chart couldn't be read or would mislead.
    enum class Doubt { ManySeries, ManyBars, ManyNames, ManyPoints, PieShowsOne, SeveralUnits };
    [[nodiscard]] std::vector<Doubt> Doubts() const;
    /// The doubts as a question for the user, in the user's language; empty for none.
    [[nodiscard]] QString Question() const;

    /// A column of texts is needed that name the rows: several fields stand there, or a name is too long.
    [[nodiscard]] bool NeedsLabels() const { return needsLabels_; }
    /// The name of a row in the chart: what tells it from the other rows; long names lose their middle.
    [[nodiscard]] QString LabelOf(int row) const;
    /// Names of series so long that a legend beside the plot would leave it no room.
    [[nodiscard]] bool HasLongNames() const;
    /// Values that are read more easily with separators.
    [[nodiscard]] bool HasLongNumbers() const;
    /// A row of texts is needed that name the columns: heads are too long to stand along an axis.
    [[nodiscard]] bool NeedsHeadLabels() const;
    /// The name of a column in the chart.
    [[nodiscard]] QString HeadLabelOf(int column) const;
    /// The name of the column (or row) that is compared, with its unit.
    [[nodiscard]] QString VariableOf(int number) const;
    /// What the chart is about: its indicators and what the whole selection has just one value of.
    [[nodiscard]] QString Title() const;
    /// The sources and the notes, as they stand below the chart.
    [[nodiscard]] QString SourceLines() const;

  private:
    [[nodiscard]] Layout FindLayout();
    [[nodiscard]] Layout FindScatterLayout();
    [[nodiscard]] bool MeasuresTime();
    [[nodiscard]] std::vector<int> FindLabelFields() const;
    [[nodiscard]] bool FindNeedsLabels() const;
    [[nodiscard]] QStringList Parts(int row, const std::vector<int>& fields) const;
    [[nodiscard]] QString HeadOf(int column) const;
    [[nodiscard]] QString HeadPart(int column, PivotField field) const;
    [[nodiscard]] QStringList UnitsOfCell(int row, int column) const;
    [[nodiscard]] QStringList UnitsOfSeries(int series) const;
    [[nodiscard]] QStringList UnitsShown() const;
    [[nodiscard]] std::optional<Doubt> FindCrowd() const;
    [[nodiscard]] QString TextOf(Doubt doubt) const;
    [[nodiscard]] bool NamesIndicator() const;

    const PivotTable& table_;
    const GraphSubject& subject_;
    const office::ChartKind kind_;
    PeriodPlaces periods_;
    const Layout layout_;
    const std::vector<int> labelFields_; ///< places of the row fields that tell the rows apart
    const bool needsLabels_;
};

} // namespace tessaro
