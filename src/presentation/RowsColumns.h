#pragma once

#include "presentation/PivotFields.h"

#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <vector>

/// Which fields are on the rows and which on the columns of a table or graph.
namespace tessaro {

/// The two wizards that arrange fields.
enum class WizardKind { Table, Graph };

/// Where a field stands.
enum class Placement : char { Unused = 'U', Row = 'R', Column = 'C' };

/// The arrangement of a table or graph: which fields stand on the rows, which on the columns (of a graph: on the Y and
/// on the X axis), in which order, and which are left aside. Both wizards share it.
class RowsColumns final {
  public:
    using FieldList = std::vector<PivotField>;

    [[nodiscard]] const FieldList& Rows() const { return rows_; }
    [[nodiscard]] const FieldList& Columns() const { return columns_; }
    /// The fields left aside, in the order of the fields.
    [[nodiscard]] FieldList Available() const;
    [[nodiscard]] Placement PlacementOf(PivotField field) const;

    /// Adds a field after those on that side; one that is there already keeps its place.
    void Place(PivotField field, Placement placement);
    /// Puts a field before the one at `position` on that side.
    void PlaceAt(PivotField field, Placement placement, int position);
    /// ResetRowsColumns: all fields aside.
    void Reset();

    /// The first arrangement, by how many different values the selection has of each field.
    void SetDefaultRowsColumns();
    /// The first arrangement of a graph: times, where there are several, run along the X axis, else areas, else
    /// whatever there are several of. The Y axis gets the other fields that tell series apart; sources and units stay
    /// aside as long as nothing needs them.
    void SetDefaultAxes();
    /// When the rows are empty, puts areas on them, or else the first field that is aside.
    void FillEmptyRows();
    /// Moves every field that can't stay aside to the rows, because some cell would then hold more than one value.
    /// Gives what was moved. `progress` is told 20 + 15 x n at the field n. A failed statement counts as "one value".
    FieldList Build_Records(const std::function<void(int)>& progress = {});

    bool operator==(const RowsColumns&) const = default;

  private:
    FieldList rows_;
    FieldList columns_;
};

/// True when some cell of the arrangement would hold values that differ in this field.
[[nodiscard]] bool MultipleExists(PivotField field, const RowsColumns& arrangement);
/// The one value of a field in the selection; empty when there are none or several.
[[nodiscard]] QString GetDistinctVal(PivotField field);
/// The first values, at most `most`, of indicator, area, time, unit and subpopulation that the whole selection has just
/// one of. What a table or graph is about.
[[nodiscard]] QStringList SingleValues(int most);
[[nodiscard]] int GetDistinctCount(PivotField field);
/// The different values of a field in the selection, sorted, at most `most` of them.
[[nodiscard]] QStringList DistinctValues(PivotField field, int most);

} // namespace tessaro
