#include "dataview/ViewRows.h"

#include "dataview/BusyText.h"
#include "dataview/GridQuery.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/StatementWatch.h"
#include "view/InView.h"

#include <utility>

namespace tessaro {

ViewRows::ViewRows() : paging_(grid_), dataOrderBy_(DefaultDataOrderBy()) {}

bool ViewRows::Open(Order order) {
    const BusyText busy;
    TheFrame().StartProgress();
    // The query of before goes first: it stands on the table that is written to now.
    paging_.Close();
    Clear();
    if (order == Order::Default) dataOrderBy_ = DefaultDataOrderBy();
    DeletedRowNIds.clear();
    RowFilter.clear();
    MostRecentClause.clear();
    filters_ = {};
    removedCells_.clear();
    hidden_ = {};
    takenOut_.Reset();
    Execute(QStringLiteral("UPDATE _SelIUSNId Set Deleted = False"));
    bDataChanged = true;
    const bool ok = StartPaging(IdentifierStatement(order == Order::Kept ? dataOrderBy_ : QString()));
    if (ok) {
        for (const int percent : {20, 50, 60, 100})
            TheFrame().SetProgress(percent);
    }
    TheFrame().EndProgress();
    return ok;
}

void ViewRows::Clear() {
    grid_.Clear();
    Q_EMIT Cleared();
}

// The first page goes into the grid at once, so that the screen opens with rows on it; the timer brings the rest.
bool ViewRows::StartPaging(const QString& sql) {
    const bool ok = paging_.StartPaging(sql);
    if (ok) paging_.PageTick();
    Q_EMIT Changed();
    return ok;
}

bool ViewRows::StartAnew() {
    WriteRowFilter();
    paging_.EndPaging(true);
    Clear();
    return StartPaging(FilteredStatement(Shown(), dataOrderBy_));
}

bool ViewRows::Requery(Removed removed) {
    ErrorTrap trap("Requery");
    const BusyText busy;
    BeginRequery(removed);
    const bool ok = Generate();
    EndRequery();
    return ok;
}

void ViewRows::BeginRequery(Removed removed) {
    // The query of before stands on tables that are made anew now.
    paging_.Close();
    MostRecentClause.clear();
    if (removed == Removed::StayOut) return;
    DeletedRowNIds.clear();
    removedCells_.clear();
}

bool ViewRows::Generate() {
    return filters_.MissingDataOn  ? GenerateMissingData_Change()
           : filters_.MostRecentOn ? GenerateMostRecentData()
                                   : GenerateDataValueRange_Change();
}

void ViewRows::EndRequery() {
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = false;
    hidden_ = filters_.MostRecentOn ? FindHiddenByRecent() : HiddenByRecent();
    Q_EMIT Changed();
}

bool ViewRows::GenerateMissingData_Change() {
    ErrorTrap trap("GenerateMissingData_Change");
    if (filters_.MostRecentOn && MakeMostRecentTables()) SetMostRecentClause();
    return MakeMissingDataTable() && StartAnew();
}

// Without a range it is the plain query of the view.
bool ViewRows::GenerateDataValueRange_Change() {
    ErrorTrap trap("GenerateDataValueRange_Change");
    return StartAnew();
}

bool ViewRows::GenerateMostRecentData() {
    ErrorTrap trap("GenerateMostRecentData");
    if (!MakeMostRecentTables()) return false;
    SetMostRecentClause();
    return StartAnew();
}

void ViewRows::SetFilters(const DataFilters& filters) {
    ErrorTrap trap("Requery");
    const BusyText busy;
    const DataFilters before = std::exchange(filters_, filters);
    const QString deletedBefore = DeletedRowNIds;
    const QStringList cellsBefore = removedCells_;
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = true;
    BeginRequery(Removed::ComeBack);
    if (!GenerateIsStopped()) return EndRequery();
    filters_ = before;
    DeletedRowNIds = deletedBefore;
    removedCells_ = cellsBefore;
    Requery(Removed::StayOut);
}

bool ViewRows::GenerateIsStopped() {
    const StatementWatch watch;
    Generate();
    return watch.Stopped();
}

void ViewRows::SetOrder(const QString& orderBy) {
    dataOrderBy_ = orderBy;
    Requery();
}

void ViewRows::SortByColumn(int column, bool ascending) {
    const BusyText busy;
    paging_.EndPaging(false);
    dataOrderBy_ = DataOrderByColumn(column, ascending);
    // Texts of values would sort "10" before "9", so the Datavalue column always goes through the database.
    if (column != ColDatavalue && paging_.PagingComplete() && grid_.MaxRows() < GridModel::kInGridSortLimit)
        grid_.SortInGrid(column, ascending);
    else if (filters_.MissingDataOn || filters_.MostRecentOn)
        Requery();
    else
        StartAnew(); // rows removed one by one stay out
}

void ViewRows::WriteRowFilter() const {
    RowFilter = BuildRowFilter(filters_);
}

// A cell without a value has no RowNId and is remembered by its place.
void ViewRows::RemoveRows(const std::vector<int>& rows) {
    QStringList numbers;
    for (const int row : rows) {
        const qint64 queryRow = grid_.QueryRowOf(row);
        if (const auto cell = paging_.CellWithoutValue(queryRow)) removedCells_ << *cell;
        if (const auto rowNId = paging_.RowNIdOf(queryRow)) numbers << QString::number(*rowNId);
    }
    if (!DeletedRowNIds.trimmed().isEmpty()) numbers.prepend(DeletedRowNIds);
    DeletedRowNIds = numbers.join(QLatin1Char(','));
    grid_.RemoveRows(rows);
    // With nothing left to deliver the grid is empty, not loading.
    if (grid_.ValueRows() == 0 && paging_.TotalKnown()) paging_.FinishAtOnce();
    WriteRowFilter();
    Q_EMIT Changed();
}

// Only the lists say what is hidden: rows that were put back stand at the grid's end, and their old places stay empty.
qint64 ViewRows::HiddenRows() const {
    return DeletedRowNIds.split(QLatin1Char(','), Qt::SkipEmptyParts).size();
}

bool ViewRows::HasRemovedRows() const {
    return !DeletedRowNIds.trimmed().isEmpty() || !removedCells_.isEmpty();
}

void ViewRows::RestoreRows() {
    if (!HasRemovedRows()) return;
    const BusyText busy;
    if (filters_.MissingDataOn) {
        Requery();
        return;
    }
    std::vector<qint64> rowNIds;
    Records rows = Select(RestoreStatement(DeletedRowNIds), jet::CursorType::ForwardOnly);
    if (!rows.isOpen()) return; // they stay hidden
    for (; !rows.atEnd(); rows.MoveNext())
        rowNIds.push_back(rows.Number(kRestoredRowNId));
    rows = Records();
    DeletedRowNIds.clear();
    WriteRowFilter();
    paging_.AppendRows(rowNIds);
    Q_EMIT Changed();
}

bool ViewRows::IsNarrowed() const {
    return filters_.AnyOn() || HasRemovedRows() || takenOut_.AnythingTakenOut();
}

// Missing data adds cells that the row filter knows nothing of.
bool ViewRows::HasFootnotes() const {
    return AnyFootnotes(filters_.MissingDataOn ? QString() : RowFilter);
}

qint64 ViewRows::Count() const {
    const bool known = paging_.PagingComplete() || paging_.TotalKnown();
    return (known ? paging_.TotalRows() : paging_.RowsLoaded()) - grid_.RemovedRows();
}

} // namespace tessaro
