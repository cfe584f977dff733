#include "controls/SelectionLists.h"
#include "dataview/GridQuery.h"
#include "dataview/SortOrder.h"
#include "dataview/SortPanel.h"
#include "dataview/TakeOutPanel.h"
#include "dataview/frmData.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmData.h"
#include "view/InView.h"
#include "view/SelectionGuard.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>

// Which rows the grid shows: its query, their order, the filters, and rows removed one by one.

namespace tessaro {

namespace {

/// Wait state of the frame for as long as the scope lasts, with the text of work in hand.
class Busy final {
  public:
    Busy() { TheFrame().SetStatusText(GetText(QStringLiteral("COMM_PROCESSING"))); }
    ~Busy() { TheFrame().SetStatusText({}); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

  private:
    WaitPointer wait_;
};

} // namespace

bool frmData::MakeQryForTheGrid() {
    ErrorTrap trap("MakeQryForTheGrid");
    if (!selection::IsSelectionComplete()) return false;
    const Busy busy;
    TheFrame().StartProgress();
    InitializeDataViewVariables();
    const bool ok = StartPaging(IdentifierStatement(sortPanel_->IsUsersOrder() ? dataOrderBy_ : QString()));
    if (ok) {
        for (const int percent : {20, 50, 60, 100})
            TheFrame().SetProgress(percent);
    }
    TheFrame().EndProgress();
    return ok;
}

void frmData::InitializeDataViewVariables() {
    // The query of before goes first: it stands on the table that is written to now.
    paging_.Close();
    ResetGrid();
    if (!sortPanel_->IsUsersOrder()) {
        dataOrderBy_ = DefaultDataOrderBy();
        ShowSortMark(0, true);
    }
    DeletedRowNIds.clear();
    RowFilter.clear();
    MostRecentClause.clear();
    filters_ = {};
    removedCells_.clear();
    hidden_ = {};
    takenOut_.Reset();
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->Reset();
    sortPanel_->Reset();
    Execute(QStringLiteral("UPDATE _SelIUSNId Set Deleted = False"));
    bDataChanged = true;
}

void frmData::ResetGrid() {
    model_.Clear();
    ui_->DataGrid->scrollToTop();
}

void frmData::ShowSortMark(int column, bool ascending) {
    sortedColumn_ = column;
    sortedAscending_ = ascending;
    ui_->DataGrid->horizontalHeader()->setSortIndicator(column - 1,
                                                        ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

// The first page goes into the grid at once, so that the screen opens with rows on it; the timer brings the rest.
bool frmData::StartPaging(const QString& sql) {
    const bool ok = paging_.StartPaging(sql);
    if (ok) paging_.PageTick();
    ShowFilterState();
    ShowRows();
    return ok;
}

bool frmData::StartAnew() {
    RowFilter = BuildRowFilter(filters_);
    paging_.EndPaging(true);
    ResetGrid();
    return StartPaging(FilteredStatement(ShownRows(), dataOrderBy_));
}

bool frmData::Requery(Removed removed) {
    ErrorTrap trap("Requery");
    const Busy busy;
    // The query of before stands on tables that are made anew now.
    paging_.Close();
    MostRecentClause.clear();
    if (removed == Removed::ComeBack) {
        DeletedRowNIds.clear();
        removedCells_.clear();
    }
    const bool ok = filters_.MissingDataOn  ? GenerateMissingData_Change()
                    : filters_.MostRecentOn ? GenerateMostRecentData()
                                            : GenerateDataValueRange_Change();
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = false;
    hidden_ = filters_.MostRecentOn ? FindHiddenByRecent() : HiddenByRecent();
    ShowNote();
    return ok;
}

bool frmData::GenerateMissingData_Change() {
    ErrorTrap trap("GenerateMissingData_Change");
    if (filters_.MostRecentOn && MakeMostRecentTables()) SetMostRecentClause();
    return MakeMissingDataTable() && StartAnew();
}

// Without a range it is the plain query of the view.
bool frmData::GenerateDataValueRange_Change() {
    ErrorTrap trap("GenerateDataValueRange_Change");
    return StartAnew();
}

bool frmData::GenerateMostRecentData() {
    ErrorTrap trap("GenerateMostRecentData");
    if (!MakeMostRecentTables()) return false;
    SetMostRecentClause();
    return StartAnew();
}

void frmData::GenerateDataTable() {
    ErrorTrap trap("GenerateDataTable");
    dataOrderBy_ = OrderByColumns(sortPanel_->Columns());
    ShowSortMark(0, true);
    Requery();
}

void frmData::SortByColumn(int column, bool ascending) {
    ErrorTrap trap("DataGrid_HeadClick");
    if (column < 1 || column > VisibleCols || model_.MaxRows() == 0) return;
    const Busy busy;
    paging_.EndPaging(false);
    dataOrderBy_ = DataOrderByColumn(column, ascending);
    // Texts of values would sort "10" before "9", so the Datavalue column always goes through the database.
    if (column != ColDatavalue && paging_.PagingComplete() && model_.MaxRows() < GridModel::kInGridSortLimit) {
        ui_->DataGrid->clearSelection();
        model_.SortInGrid(column, ascending);
    } else if (filters_.MissingDataOn || filters_.MostRecentOn) {
        Requery();
    } else {
        StartAnew(); // rows removed one by one stay out
    }
    ShowSortMark(column, ascending);
    sortPanel_->ShowOrder(column, ascending);
    ui_->DataGrid->scrollToTop();
}

/// The view in another language. Its order may be one of texts, so the rows are queried again.
void frmData::ReadTextsAnew() {
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->ReadTextsAnew();
    bDataChanged = true;
    const bool nothingLeft =
        std::ranges::any_of(takeOutPanels_, [](const TakeOutPanel* panel) { return panel->IsEmpty(); });
    if (model_.MaxRows() == 0 || nothingLeft)
        paging_.ResumeTimer(); // the grid keeps what it has until something is put back
    else
        Requery(Removed::StayOut);
}

std::vector<int> frmData::HighlightedRows() const {
    std::vector<int> rows;
    const QItemSelection chosen = ui_->DataGrid->selectionModel()->selection();
    for (const QItemSelectionRange& range : chosen) {
        const int last = std::min(range.bottom(), model_.ValueRows() - 1);
        for (int row = range.top(); row <= last; ++row)
            rows.push_back(row);
    }
    std::ranges::sort(rows, std::greater());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void frmData::RemoveRowsFromDataGrid() {
    ErrorTrap trap("RemoveRowFromDataGrid");
    const std::vector<int> rows = HighlightedRows();
    if (rows.empty()) return;
    const Busy busy;
    const int column = std::max(ui_->DataGrid->currentIndex().column(), 0);
    ui_->DataGrid->clearSelection();
    ui_->DataGrid->setUpdatesEnabled(false);
    RemoveRows(rows);
    ui_->DataGrid->setUpdatesEnabled(true);
    const int next = std::min(rows.back(), model_.ValueRows() - 1);
    if (next >= 0) ui_->DataGrid->setCurrentIndex(model_.index(next, column));
    ShowFilterState();
    ShowRows();
}

// A cell without a value has no RowNId and is remembered by its place.
void frmData::RemoveRows(const std::vector<int>& rows) {
    QString list;
    for (const int row : rows) {
        const qint64 queryRow = model_.QueryRowOf(row);
        if (const auto cell = paging_.CellWithoutValue(queryRow)) removedCells_ << *cell;
        const auto rowNId = paging_.RowNIdOf(queryRow);
        if (!rowNId) continue;
        if (!list.isEmpty()) list += QLatin1Char(',');
        list += QString::number(*rowNId);
    }
    if (!list.isEmpty()) DeletedRowNIds += DeletedRowNIds.trimmed().isEmpty() ? list : QLatin1Char(',') + list;
    model_.RemoveRows(rows);
    // With nothing left to deliver the grid is empty, not loading.
    if (model_.ValueRows() == 0 && paging_.TotalKnown()) paging_.FinishAtOnce();
    RowFilter = BuildRowFilter(filters_);
}

RowsInView frmData::ShownRows() const {
    return {filters_, removedCells_};
}

// Only the lists say what is hidden: rows that were put back stand at the grid's end, and their old places stay empty.
bool frmData::HasHiddenRows() const {
    return !DeletedRowNIds.trimmed().isEmpty() || !removedCells_.isEmpty();
}

void frmData::RestoreDeletedRows() {
    ErrorTrap trap("RestoreDeletedRows");
    if (!HasHiddenRows()) return;
    const Busy busy;
    if (filters_.MissingDataOn) {
        Requery();
        return;
    }
    std::vector<qint64> rowNIds;
    Records rows = Select(RestoreStatement(DeletedRowNIds), jet::CursorType::ForwardOnly);
    if (!rows.isOpen()) return; // they stay hidden
    for (; !rows.atEnd(); rows.MoveNext())
        rowNIds.push_back(rows.Number(RestoredRowNId));
    rows = Records();
    DeletedRowNIds.clear();
    RowFilter = BuildRowFilter(filters_);
    paging_.AppendRows(rowNIds);
    ShowFilterState();
    ShowRows();
}

void frmData::ShowCount() {
    {
        const Busy busy;
        paging_.CountRows();
        ShowRows();
    }
    ShowMessage(QLocale::system().toString(RowsInGrid()), MessageType::Ok, MessageIcon::Note, {}, false);
}

void frmData::DataGrid_PopupMenu(const QPoint& place) {
    const int column = ui_->DataGrid->currentIndex().column() + 1;
    const bool any = model_.ValueRows() > 0;
    const bool highlighted = any && ui_->DataGrid->selectionModel()->hasSelection();
    const bool onRow = any && ui_->DataGrid->currentIndex().isValid();
    ShowPopup(
        this, QStringLiteral("mnu_popup_Data_View_Options"), ui_->DataGrid->viewport()->mapToGlobal(place),
        {{0, "mnu_DataView_Delete", [this] { RemoveRowsFromDataGrid(); }, highlighted, "TS_WhyNoneHighlighted"},
         {1, "mnu_DataView_UndeleteAll", [this] { RestoreDeletedRows(); }, HasHiddenRows(), "TS_WhyNoneHidden"},
         {2, nullptr, {}},
         {3, "TS_ShowCount", [this] { ShowCount(); }, any, "TS_WhyNoRows"},
         {5, "mnu_DataView_ViewDetails", [this] { ViewDetails(); }, onRow, "TS_WhyNoneHighlighted"},
         {10, "TS_CopyRows", [this] { Copy(); }, highlighted, "TS_WhyNoneHighlighted"},
         {11, "mnu_Edit_SelectAll", [this] { SelectAll(); }, any, "TS_WhyNoRows"},
         {4, nullptr, {}},
         {12, "TS_SortAscending", [this, column] { SortByColumn(column, true); }, onRow, "TS_WhyNoneHighlighted"},
         {13, "TS_SortDescending", [this, column] { SortByColumn(column, false); }, onRow, "TS_WhyNoneHighlighted"},
         {14, "TS_FiltersButton", [this] { cmdFilters_Click(); }},
         {7, nullptr, {}},
         {15, "mnu_File_SaveAs", [this] { SaveAs(); }, any, "TS_WhyNoRows"},
         {6, "PRINT BUTTON", [this] { Print(); }, any, "TS_WhyNoRows"},
         {16, nullptr, {}},
         {8, "mnu_DataView_Indicator", [this] { ShowInformation(true); }, onRow, "TS_WhyNoneHighlighted"},
         {9, "mnu_DataView_Source", [this] { ShowInformation(false); }, onRow, "TS_WhyNoneHighlighted"}});
}

} // namespace tessaro
