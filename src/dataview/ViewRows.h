#pragma once

#include "dataview/DataOptions.h"
#include "dataview/DataPaging.h"
#include "dataview/GridModel.h"
#include "dataview/HiddenByRecent.h"
#include "view/DataFilters.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace tessaro {

/// The rows of the data view: which ones it shows, in which order, and the query that loads them into the grid. It
/// writes what later readers of the view go by: RowFilter, DeletedRowNIds, MostRecentClause and bDataChanged.
class ViewRows final : public QObject {
    Q_OBJECT

  public:
    ViewRows();

    [[nodiscard]] GridModel& Grid() { return grid_; }
    [[nodiscard]] const GridModel& Grid() const { return grid_; }
    [[nodiscard]] DataPaging& Paging() { return paging_; }
    [[nodiscard]] const DataPaging& Paging() const { return paging_; }

    enum class Order { Default, Kept };
    /// The query of a new selection, without filters and with nothing taken out. False when it has no rows or failed;
    /// the message has been shown then.
    bool Open(Order order);
    enum class Removed { ComeBack, StayOut };
    /// Reads the rows again, under the filters and in the order that are set. Rows removed one by one come back, as
    /// with every change of what the view shows, unless told otherwise. False as Open.
    bool Requery(Removed removed = Removed::ComeBack);

    [[nodiscard]] const DataFilters& Filters() const { return filters_; }
    /// Takes other row filters into use. When the user stops what that takes, those of before stay.
    void SetFilters(const DataFilters& filters);
    /// Takes an ORDER BY clause into use; empty for none.
    void SetOrder(const QString& orderBy);
    /// Sorts by a visible column: in the grid when it is complete and short enough, otherwise by a new query.
    void SortByColumn(int column, bool ascending);
    /// Sets RowFilter for those who read the view from now on.
    void WriteRowFilter() const;

    /// What the panels have taken out of the view.
    [[nodiscard]] DataOptions& TakenOut() { return takenOut_; }
    [[nodiscard]] const DataOptions& TakenOut() const { return takenOut_; }
    /// Removes grid rows (from 0, in descending order) one by one; they stay out of the view until RestoreRows.
    void RemoveRows(const std::vector<int>& rows);
    /// Puts the rows removed one by one back, at the grid's end.
    void RestoreRows();
    /// Rows were removed one by one and can be put back.
    [[nodiscard]] bool HasRemovedRows() const;
    /// Rows of Data that were removed one by one.
    [[nodiscard]] qint64 HiddenRows() const;

    /// What the most recent data hide because its source is not in view.
    [[nodiscard]] const HiddenByRecent& Hidden() const { return hidden_; }
    /// The filters and the cells removed one by one, for those who keep the rows.
    [[nodiscard]] RowsInView Shown() const { return {filters_, removedCells_}; }
    /// The view shows less than the selection has.
    [[nodiscard]] bool IsNarrowed() const;
    /// A row in view has a footnote.
    [[nodiscard]] bool HasFootnotes() const;
    /// Rows of the query less those removed one by one; only what has been loaded while it isn't counted.
    [[nodiscard]] qint64 Count() const;

  Q_SIGNALS:
    void Cleared(); ///< the grid was emptied for another query
    void Changed(); ///< rows, filters or what is hidden are others now

  private:
    void Clear();
    bool StartPaging(const QString& sql);
    bool StartAnew();
    void BeginRequery(Removed removed);
    bool Generate();
    /// Generates the rows; true when the user has stopped it.
    [[nodiscard]] bool GenerateIsStopped();
    void EndRequery();
    bool GenerateMissingData_Change();
    bool GenerateDataValueRange_Change();
    bool GenerateMostRecentData();

    GridModel grid_;
    DataPaging paging_;
    QString dataOrderBy_;
    DataFilters filters_;
    DataOptions takenOut_;
    QStringList removedCells_; ///< CellKey of the cells without a value that were removed one by one
    HiddenByRecent hidden_;
};

} // namespace tessaro
