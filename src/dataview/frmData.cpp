#include "dataview/frmData.h"

#include "controls/Captions.h"
#include "controls/SelectionLists.h"
#include "controls/Theme.h"
#include "dataview/BusyText.h"
#include "dataview/DataOptionStrip.h"
#include "dataview/FilterBar.h"
#include "dataview/GridQuery.h"
#include "dataview/GridTable.h"
#include "dataview/RowsText.h"
#include "dataview/SortPanel.h"
#include "dataview/StatisticsTable.h"
#include "dataview/TakeOutPanel.h"
#include "dataview/frmDataFilters.h"
#include "metadata/Details.h"
#include "metadata/frmInformationSheet.h"
#include "metadata/frmShowDetails.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "ui_frmData.h"
#include "view/SelectionGuard.h"

#include <QFocusEvent>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace tessaro {

frmData::frmData(QWidget* parent)
    : StageScreen(parent), ui_(std::make_unique<Ui::frmData>()), rows_(new ViewRows), export_(*rows_, this) {
    ui_->setupUi(this);
    rows_->setParent(this); // behind the controls, which are gone before it then
    ui_->DataGrid->SetRows(*rows_);
    MakePanels();
    ConnectEvents();
    SetFormCaptions();
    ShowThisDataOption(0);
}

frmData::~frmData() {
    hide(); // while what the grid tells of it can still be answered
    ui_->DataGrid->disconnect(this);
}

void frmData::focusInEvent(QFocusEvent* event) {
    QWidget* panel = ui_->picPanels->currentWidget();
    QWidget* first = option_ == DataOptionStrip::View ? ui_->DataGrid : panel;
    first->setFocus(event->reason());
}

void frmData::ConnectEvents() {
    // Painted at once, since no event is let through while the rows are counted.
    rows_->Paging().onCounting = [this](qint64 rows) {
        ui_->lblRows->setText(CountingText(rows));
        ui_->lblRows->repaint();
    };
    connect(rows_, &ViewRows::Changed, this, &frmData::ShowState);
    connect(ui_->PicDataOptions, &DataOptionStrip::Chosen, this, &frmData::ShowThisDataOption);
    connect(ui_->DataGrid, &QWidget::customContextMenuRequested, this, &frmData::DataGrid_PopupMenu);
    connect(ui_->DataGrid, &GridTable::SeenChanged, this, &frmData::ShowRows);
    connect(ui_->DataGrid, &GridTable::Sorted, sortPanel_, &SortPanel::ShowOrder);
    connect(ui_->picFilters, &FilterBar::Ticked, this, &frmData::chkFilters_Click);
    connect(ui_->picFilters, &FilterBar::FiltersWanted, this, &frmData::cmdFilters_Click);
}

void frmData::Enter() {
    ErrorTrap trap("frmData_Activate");
    ui_->DataGrid->ShowPreferences();
    const bool textsChanged = std::exchange(textsChanged_, false);
    if (SelectionChanged) {
        MakeQryForTheGrid();
        SelectionChanged = false;
        ui_->DataGrid->FitColumns();
    } else if (textsChanged) {
        ReadTextsAnew();
        ui_->DataGrid->FitColumns();
    } else {
        rows_->Paging().ResumeTimer();
    }
    ShowThisDataOption(option_);
    ShowRows();
    setFocus();
}

void frmData::Leave() {
    sortPanel_->Leave();
    rows_->Paging().Suspend();
}

bool frmData::MakeQryForTheGrid() {
    ErrorTrap trap("MakeQryForTheGrid");
    if (!selection::IsSelectionComplete()) return false;
    const bool keepsOrder = sortPanel_->IsUsersOrder();
    if (!keepsOrder) ui_->DataGrid->ShowSortMark(0, true);
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->Reset();
    sortPanel_->Reset();
    return rows_->Open(keepsOrder ? ViewRows::Order::Kept : ViewRows::Order::Default);
}

/// The view in another language. Its order may be one of texts, so the rows are queried again.
void frmData::ReadTextsAnew() {
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->ReadTextsAnew();
    bDataChanged = true;
    const bool nothingLeft =
        std::ranges::any_of(takeOutPanels_, [](const TakeOutPanel* panel) { return panel->IsEmpty(); });
    if (grid().MaxRows() == 0 || nothingLeft)
        rows_->Paging().ResumeTimer(); // the grid keeps what it has until something is put back
    else
        rows_->Requery(ViewRows::Removed::StayOut);
}

void frmData::Stop() {
    ui_->DataGrid->StopLoad();
}

void frmData::Refresh() {
    MakeQryForTheGrid();
    SelectionChanged = false;
    ShowThisDataOption(option_);
}

void frmData::SelectAll() {
    if (DataPanel* panel = PanelShown()) return panel->SelectAll();
    TableShown()->selectAll();
}

void frmData::Find() {
    if (DataPanel* panel = PanelShown()) panel->Find();
}

void frmData::Copy() {
    if (DataPanel* panel = PanelShown()) return panel->Copy();
    const WaitPointer wait;
    TableShown()->Copy();
}

void frmData::SortByColumn(int column, bool ascending) {
    ui_->DataGrid->SortByColumn(column, ascending);
}

void frmData::RemoveRowsFromDataGrid() {
    ui_->DataGrid->RemoveHighlightedRows();
}

void frmData::RestoreDeletedRows() {
    ErrorTrap trap("RestoreDeletedRows");
    rows_->RestoreRows();
}

bool frmData::NeedsRows() {
    if (grid().ValueRows() > 0) return true;
    ShowMessage(QStringLiteral("041"));
    return false;
}

bool frmData::MayGiveAway() {
    if (!NeedsRows() || !MayLeaveOption()) return false;
    if (PanelShown() != nullptr) PanelShown()->Leave();
    return NeedsRows();
}

void frmData::SaveAs() {
    if (MayGiveAway()) export_.AskAndSave();
}

void frmData::Print() {
    if (MayGiveAway()) export_.Print();
}

void frmData::SetFilters(const DataFilters& filters) {
    rows_->SetFilters(filters);
    if (option_ == DataOptionStrip::Stats) DataStats_->Draw(*rows_);
    ShowState();
}

void frmData::chkFilters_Click(bool on) {
    if (!Filters().AnyOn() && !NeedsRows()) return ShowState();
    DataFilters filters;
    filters.DataValueFrom = Filters().DataValueFrom;
    filters.DataValueTo = Filters().DataValueTo;
    filters.MostRecentOn = on;
    SetFilters(filters);
}

void frmData::cmdFilters_Click() {
    const auto showsValues = [this] { return option_ == DataOptionStrip::View || option_ == DataOptionStrip::Stats; };
    if (!Filters().AnyOn() && !NeedsRows()) return;
    if (!showsValues()) ShowThisDataOption(DataOptionStrip::View);
    if (!showsValues()) return; // a panel with nothing left, which has said so
    // The working tables may be made anew for the count, so the grid lets go of them.
    rows_->Paging().Suspend();
    frmDataFilters dialog(Filters(), rows_->HiddenRows(), this);
    if (dialog.exec() == QDialog::Accepted && dialog.Filters() != Filters())
        SetFilters(dialog.Filters());
    else
        rows_->Paging().ResumeTimer();
}

void frmData::SetFormCaptions() {
    SetFormFonts(this);
    ui_->PicDataOptions->SetFormCaptions();
    ui_->picFilters->SetFormCaptions();
    QFont head = LanguageFont();
    head.setBold(true);
    ui_->lblDataOptions->setFont(head);
    // So that what lies below stays where it is on panels without filters.
    ui_->lblDataOptions->setMinimumHeight(ui_->picFilters->sizeHint().height());
    QPalette muted = ui_->lblRows->palette();
    muted.setColor(QPalette::WindowText, theme::MutedText());
    ui_->lblRows->setPalette(muted);
    ui_->DataGrid->setAccessibleName(PlainText(QStringLiteral("TS_DataGrid")));
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->SetFormCaptions();
    sortPanel_->SetFormCaptions();
    DataStats_->SetFormCaptions();
    ShowThisDataOption(option_);
    ui_->DataGrid->ShowPreferences();
}

/// The filters that are on, what the rows leave out, and what the grid says while it is empty.
void frmData::ShowState() {
    ui_->picFilters->ShowFilters(Filters());
    ui_->picFilters->setVisible(option_ == DataOptionStrip::View || option_ == DataOptionStrip::Stats);
    ui_->DataGrid->SetHint(
        GetText(rows_->IsNarrowed() ? QStringLiteral("TS_NoRowsInView") : QStringLiteral("TS_NoDataRows")));
    ShowNote();
    ShowRows();
}

void frmData::ShowRows() {
    if (option_ == DataOptionStrip::View) {
        const int last = std::min(ui_->DataGrid->LastVisibleRow() + 1, grid().ValueRows());
        ui_->lblRows->setText(SeenText(*rows_, ui_->DataGrid->FirstVisibleRow() + 1, last));
    } else {
        ui_->lblRows->setText(UnseenText(*rows_));
    }
    Q_EMIT SelectionSummaryChanged();
}

QString frmData::SelectionSummary() const {
    return CountText(*rows_);
}

void frmData::ShowCount() {
    {
        const BusyText busy;
        rows_->Paging().CountRows();
        ShowRows();
    }
    ShowMessage(QLocale::system().toString(rows_->Count()), MessageType::Ok, MessageIcon::Note, {}, false);
}

void frmData::ShowInformation(bool ofIndicator) {
    const GridRow* row = ui_->DataGrid->CurrentRow();
    if (!row) return;
    if (ofIndicator)
        ShowInformationInBROW(row->indicatorGId, QStringLiteral("IND"), FormName(), true, this);
    else
        ShowInformationInBROW(QString::number(row->sourceNId), QStringLiteral("SOURCES"), FormName(), false, this);
}

// Where the area lies from its columns, where the indicator is classified from the others.
void frmData::ViewDetails() {
    ErrorTrap trap("mnu_DataView_ViewDetails");
    const GridRow* row = ui_->DataGrid->CurrentRow();
    if (!row) return;
    frmShowDetails form(this);
    const int column = ui_->DataGrid->CurrentColumn();
    if (column == ColAreaID || column == ColAreaName)
        form.ShowAreaDetails(row->areaId);
    else
        form.DisplayINDDetails(metadata::DetailsOfIndicator(row->indicatorGId));
    form.exec();
}

void frmData::DataGrid_PopupMenu(const QPoint& place) {
    const int column = ui_->DataGrid->CurrentColumn();
    const bool any = grid().ValueRows() > 0;
    const bool highlighted = any && ui_->DataGrid->selectionModel()->hasSelection();
    const bool onRow = any && column > 0;
    ShowPopup(
        this, QStringLiteral("mnu_popup_Data_View_Options"), ui_->DataGrid->viewport()->mapToGlobal(place),
        {{0, "mnu_DataView_Delete", [this] { RemoveRowsFromDataGrid(); }, highlighted, "TS_WhyNoneHighlighted"},
         {1, "mnu_DataView_UndeleteAll", [this] { RestoreDeletedRows(); }, rows_->HasRemovedRows(), "TS_WhyNoneHidden"},
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
