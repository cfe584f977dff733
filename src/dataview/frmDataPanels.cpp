#include "controls/Captions.h"
#include "dataview/ActionPanels.h"
#include "dataview/DataOptionStrip.h"
#include "dataview/FilterBar.h"
#include "dataview/GridTable.h"
#include "dataview/NoteBar.h"
#include "dataview/SortOrder.h"
#include "dataview/SortPanel.h"
#include "dataview/StatisticsTable.h"
#include "dataview/TakeOutPanel.h"
#include "dataview/frmData.h"
#include "metadata/frmInformationSheet.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "ui_frmData.h"

// The options of the data view: their panels, and the way from one to another.

namespace tessaro {

// The pages stand in the order of the options.
void frmData::MakePanels() {
    note_ = new NoteBar(this);
    ui_->layView->insertWidget(1, note_);
    connect(note_, &NoteBar::Pressed, this, &frmData::PutSourcesBack);
    DataStats_ = new StatisticsTable(this);
    ui_->picPanels->addWidget(DataStats_);
    MakeTakeOutPanels();
    sortPanel_ = new SortPanel(this);
    connect(sortPanel_, &DataPanel::Changed, this, &frmData::GenerateDataTable);
    connect(sortPanel_, &DataPanel::PrintWanted, this, &frmData::Print);
    ui_->picPanels->addWidget(sortPanel_);
    calculatePanel_ = new ActionPanel(ActionPanel::Kind::Calculate, this);
    presentPanel_ = new ActionPanel(ActionPanel::Kind::Present, this);
    connect(calculatePanel_, &ActionPanel::Chosen, this, &frmData::lstCalculate_DblClick);
    connect(presentPanel_, &ActionPanel::Chosen, this, &frmData::picPresentationOptions_Click);
    ui_->picPanels->addWidget(calculatePanel_);
    ui_->picPanels->addWidget(presentPanel_);
}

void frmData::MakeTakeOutPanels() {
    for (const OptionList kind : {OptionList::Sources, OptionList::Units, OptionList::Subpops}) {
        auto* panel = new TakeOutPanel(kind, rows_->TakenOut(), this);
        // While the panel's list is empty, the panel can't be left, and the view keeps its rows.
        connect(panel, &DataPanel::Changed, this, [this, panel] {
            if (!panel->IsEmpty()) rows_->Requery();
        });
        connect(panel, &DataPanel::InformationWanted, this, [this](const QString& sourceNId) {
            ShowInformationInBROW(sourceNId, QStringLiteral("SOURCES"), FormName(), false, this);
        });
        ui_->picPanels->addWidget(panel);
        takeOutPanels_.push_back(panel);
    }
}

DataPanel* frmData::PanelShown() const {
    return qobject_cast<DataPanel*>(ui_->picPanels->currentWidget());
}

/// The statistics while they are shown, otherwise the grid.
DataTable* frmData::TableShown() const {
    return option_ == DataOptionStrip::Stats ? static_cast<DataTable*>(DataStats_) : ui_->DataGrid;
}

// While there are rows, a panel can't be left as long as it would leave nothing in view; what stands in the grid then
// is not the view and isn't given away either.
bool frmData::MayLeaveOption() {
    DataPanel* panel = PanelShown();
    return panel == nullptr || grid().MaxRows() == 0 || panel->MayLeave();
}

void frmData::ShowThisDataOption(int option) {
    ErrorTrap trap("ShowThisDataOption");
    if (option != option_) {
        if (!MayLeaveOption()) return ui_->PicDataOptions->SetCurrent(option_);
        if (PanelShown() != nullptr) PanelShown()->Leave();
        TheFrame().SetStatusText({}); // the item of the list that was shown
    }
    option_ = option;
    ui_->PicDataOptions->SetCurrent(option);
    SetCaption(ui_->lblDataOptions, DataOptionStrip::CaptionKey(option));
    rows_->WriteRowFilter();
    EnterOption(option);
    ui_->picPanels->setCurrentIndex(option);
    ShowState();
}

void frmData::EnterOption(int option) {
    switch (option) {
    case DataOptionStrip::Stats:
        return DataStats_->Draw(*rows_);
    case DataOptionStrip::Sources:
    case DataOptionStrip::Units:
    case DataOptionStrip::Subpops:
        return takeOutPanels_.at(static_cast<std::size_t>(option - DataOptionStrip::Sources))->Enter();
    case DataOptionStrip::Sort:
        return sortPanel_->Enter();
    case DataOptionStrip::Calculate:
        return calculatePanel_->Fill();
    case DataOptionStrip::Present:
        return presentPanel_->Fill();
    default:
        return;
    }
}

void frmData::GenerateDataTable() {
    ErrorTrap trap("GenerateDataTable");
    ui_->DataGrid->ShowSortMark(0, true);
    rows_->SetOrder(OrderByColumns(sortPanel_->Columns()));
}

/// What the rows or figures in view leave out, and why.
void frmData::ShowNote() {
    QStringList lines;
    const bool showsValues = option_ == DataOptionStrip::View || option_ == DataOptionStrip::Stats;
    const HiddenByRecent& hidden = rows_->Hidden();
    const bool hides = showsValues && hidden.pairs > 0;
    if (hides) lines << TextOf(hidden);
    if (option_ == DataOptionStrip::Stats && DataStats_->Unreadable().count > 0)
        lines << TextOf(DataStats_->Unreadable());
    note_->Say(lines.join(QLatin1Char('\n')),
               hides && !hidden.takenOutKeys.isEmpty() ? QStringLiteral("TS_PutSourcesBack") : QString());
}

void frmData::PutSourcesBack() {
    const QStringList keys = rows_->Hidden().takenOutKeys; // are others once something is put back
    takeOutPanels_.front()->PutBack(keys);
    if (option_ == DataOptionStrip::Stats) DataStats_->Draw(*rows_);
    ShowNote();
}

void frmData::lstCalculate_DblClick(const QString& key) {
    if (NeedsRows()) TheFrame().StartCalculation(key.mid(1).toInt());
}

void frmData::picPresentationOptions_Click(const QString& key) {
    if (NeedsRows()) TheFrame().StartPresentation(key.at(0));
}

} // namespace tessaro
