#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "controls/Theme.h"
#include "dataview/ActionPanels.h"
#include "dataview/NoteBar.h"
#include "dataview/SortPanel.h"
#include "dataview/StatisticsDelegate.h"
#include "dataview/StatisticsModel.h"
#include "dataview/TakeOutPanel.h"
#include "dataview/frmData.h"
#include "dataview/frmDataFilters.h"
#include "metadata/frmInformationSheet.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_frmData.h"

#include <QHeaderView>
#include <QKeyEvent>

// The options of the data view: panels, filters, rows taken out one by one, statistics.

namespace tessaro {

namespace {

enum Option { View, Stats, Sources, Units, Subpops, Sort, Calculate, Present };

} // namespace

void frmData::MakePanels() {
    note_ = new NoteBar(this);
    ui_->layView->insertWidget(1, note_);
    connect(note_, &NoteBar::Pressed, this, &frmData::PutSourcesBack);
    DataStats_ = new DataTable(this);
    DataStats_->setObjectName(QStringLiteral("DataStats"));
    DataStats_->setModel(&statistics_);
    DataStats_->setItemDelegate(new StatisticsDelegate(DataStats_));
    DataStats_->verticalHeader()->hide();
    DataStats_->setSelectionBehavior(QAbstractItemView::SelectRows);
    DataStats_->installEventFilter(this);
    DataStats_->SetHint(GetText(QStringLiteral("TS_NoStatistics")));
    connect(DataStats_, &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() < StatisticsModel::kNameColumn) statistics_.Toggle(index.row());
    });
    connect(DataStats_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() >= StatisticsModel::kNameColumn) statistics_.Toggle(index.row());
    });
    ui_->picPanels->addWidget(DataStats_);
    for (const OptionList kind : {OptionList::Sources, OptionList::Units, OptionList::Subpops}) {
        auto* panel = new TakeOutPanel(kind, takenOut_, this);
        // With nothing left in its list the view keeps what it has until the panel may be left again.
        connect(panel, &DataPanel::Changed, this, [this, panel] {
            if (!panel->IsEmpty()) Requery();
        });
        connect(panel, &DataPanel::InformationWanted, this, [this](const QString& sourceNId) {
            ShowInformationInBROW(sourceNId, QStringLiteral("SOURCES"), FormName(), false, this);
        });
        ui_->picPanels->addWidget(panel);
        takeOutPanels_.push_back(panel);
    }
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
    connect(ui_->chkFilters, &QCheckBox::clicked, this, &frmData::chkFilters_Click);
    connect(ui_->cmdFilters, &QPushButton::clicked, this, &frmData::cmdFilters_Click);
}

DataPanel* frmData::PanelShown() const {
    return qobject_cast<DataPanel*>(ui_->picPanels->currentWidget());
}

/// What can't do without rows says so.
bool frmData::NeedsRows() {
    if (model_.ValueRows() > 0) return true;
    ShowMessage(QStringLiteral("041"));
    return false;
}

// While there are rows, a panel can't be left as long as it would leave nothing in view; what stands in the grid then
// is not the view and isn't given away either.
bool frmData::MayLeaveOption() {
    DataPanel* panel = PanelShown();
    return panel == nullptr || model_.MaxRows() == 0 || panel->MayLeave();
}

bool frmData::MayGiveAway() {
    if (!NeedsRows() || !MayLeaveOption()) return false;
    if (PanelShown() != nullptr) PanelShown()->Leave();
    return NeedsRows();
}

void frmData::ShowThisDataOption(int option) {
    ErrorTrap trap("ShowThisDataOption");
    if (option != option_ && !MayLeaveOption()) {
        options_.button(option_)->setChecked(true);
        return;
    }
    if (option != option_ && PanelShown() != nullptr) PanelShown()->Leave();
    if (option != option_) TheFrame().SetStatusText({}); // the item of the list that was shown
    option_ = option;
    options_.button(option)->setChecked(true);
    ShowOptionCaption();
    RowFilter = BuildRowFilter(filters_);
    switch (option) {
    case Stats:
        DrawStats();
        break;
    case Sources:
    case Units:
    case Subpops:
        takeOutPanels_.at(static_cast<std::size_t>(option - Sources))->Enter();
        break;
    case Sort:
        sortPanel_->Enter();
        break;
    case Calculate:
        calculatePanel_->Fill();
        break;
    case Present:
        presentPanel_->Fill();
        break;
    default:
        break;
    }
    ui_->picPanels->setCurrentIndex(option);
    setFocusProxy(option == View ? static_cast<QWidget*>(ui_->DataGrid) : ui_->picPanels->currentWidget());
    ShowFilterState();
    ShowNote();
    ShowRows();
}

/// What the rows or figures in view leave out, and why.
void frmData::ShowNote() {
    QStringList lines;
    const bool showsValues = option_ == View || option_ == Stats;
    const bool hides = showsValues && hidden_.pairs > 0;
    if (hides) lines << TextOf(hidden_);
    if (option_ == Stats && unreadable_.count > 0) lines << TextOf(unreadable_);
    note_->Say(lines.join(QLatin1Char('\n')),
               hides && !hidden_.takenOutKeys.isEmpty() ? QStringLiteral("TS_PutSourcesBack") : QString());
}

void frmData::PutSourcesBack() {
    takeOutPanels_.front()->PutBack(hidden_.takenOutKeys);
    if (option_ == Stats) DrawStats();
    ShowNote();
}

void frmData::DrawStats() {
    ErrorTrap trap("DrawStats");
    {
        const WaitState wait;
        TheFrame().SetProgress(20);
        unreadable_ = {};
        statistics_.SetLines(ReadStatistics(RowFilter, &unreadable_));
        TheFrame().SetProgress(100);
    }
    DataStats_->FitToFont();
    FitStatsColumns();
    // Rows in the grid, and none of them counted: the file was damaged or taken away since.
    const bool countable = model_.ValueRows() > 0 && !filters_.MissingDataOn && unreadable_.count == 0;
    if (countable && statistics_.rowCount() == 0)
        ShowMessage(GetText(QStringLiteral("TS_DataUnreadable")), MessageType::Ok, MessageIcon::Note, {}, false);
}

/// The marks are narrow; the figures stand whole and apart where the names leave them room.
void frmData::FitStatsColumns() {
    constexpr int kMarks = StatisticsModel::kNameColumn;
    constexpr int kAmpleFigure = 14;
    const QFontMetrics metrics = DataStats_->fontMetrics();
    std::vector<DataTable::Wish> wishes(kMarks, {theme::IconSize, 1, theme::IconSize});
    wishes.push_back({statistics_.Longest(kMarks).Width(metrics), 3});
    for (int column = kMarks + 1; column < StatisticsModel::MaxCols; ++column) {
        const int figure = statistics_.Longest(column).Width(metrics);
        wishes.push_back({std::max(figure, metrics.averageCharWidth() * kAmpleFigure), 1, figure});
    }
    DataStats_->SetColumnWishes(std::move(wishes));
}

void frmData::SetFilters(const DataFilters& filters) {
    filters_ = filters;
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = true;
    Requery();
    if (option_ == Stats) DrawStats();
    ShowFilterState();
    ShowNote();
}

/// The tick box and what it says, and what the grid says while it is empty.
void frmData::ShowFilterState() {
    QStringList on;
    if (filters_.MostRecentOn) on << PlainText(QStringLiteral("TS_OptionRecent"));
    if (filters_.ValueRangeOn)
        on << PlainText(QStringLiteral("TS_ValuesFromTo"))
                  .replace(QLatin1String("%1"), InOnePiece(ShownValue(filters_.DataValueFrom)))
                  .replace(QLatin1String("%2"), InOnePiece(ShownValue(filters_.DataValueTo)));
    if (filters_.MissingDataOn) on << PlainText(QStringLiteral("TS_WithMissing"));
    const QString text = on.isEmpty() ? PlainText(QStringLiteral("TS_OptionRecent")) : on.join(QStringLiteral(" · "));
    ui_->chkFilters->setText(text);
    ui_->chkFilters->setAccessibleName(text);
    ui_->chkFilters->setChecked(!on.isEmpty());
    const bool shown = option_ == View || option_ == Stats;
    ui_->cmdFilters->setVisible(shown);
    ui_->chkFilters->setVisible(shown && (!on.isEmpty() || SettingOption(QStringLiteral("DATA_RECENTDATA")).offered));
    const bool narrowed = !on.isEmpty() || HasHiddenRows() || takenOut_.AnythingTakenOut();
    ui_->DataGrid->SetHint(GetText(narrowed ? QStringLiteral("TS_NoRowsInView") : QStringLiteral("TS_NoDataRows")));
}

void frmData::chkFilters_Click() {
    if (!filters_.AnyOn() && !NeedsRows()) return ShowFilterState();
    DataFilters filters;
    filters.DataValueFrom = filters_.DataValueFrom;
    filters.DataValueTo = filters_.DataValueTo;
    filters.MostRecentOn = ui_->chkFilters->isChecked();
    SetFilters(filters);
}

void frmData::cmdFilters_Click() {
    if (!filters_.AnyOn() && !NeedsRows()) return;
    if (option_ != View && option_ != Stats) ShowThisDataOption(View);
    if (option_ != View && option_ != Stats) return; // a panel with nothing left, which has said so
    // The working tables may be made anew for the count, so the grid lets go of them.
    paging_.Suspend();
    frmDataFilters dialog(filters_, this);
    if (dialog.exec() == QDialog::Accepted && dialog.Filters() != filters_)
        SetFilters(dialog.Filters());
    else
        paging_.ResumeTimer();
}

// True when the key is done with.
bool frmData::DataStats_KeyDown(const QKeyEvent& event) {
    const int row = DataStats_->currentIndex().row();
    if (row < 0) return false;
    const bool opens = event.key() == Qt::Key_Plus ||
                       event.key() == (layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right);
    const bool closes = event.key() == Qt::Key_Minus ||
                        event.key() == (layoutDirection() == Qt::RightToLeft ? Qt::Key_Right : Qt::Key_Left);
    if (event.key() == Qt::Key_Space || event.key() == Qt::Key_Return) {
        statistics_.Toggle(row);
        return true;
    }
    if (event.modifiers() & Qt::ControlModifier || (!opens && !closes)) return false;
    if (statistics_.HasChildren(row) && statistics_.IsOpen(row) != opens) statistics_.Toggle(row);
    return true;
}

void frmData::lstCalculate_DblClick(const QString& key) {
    if (!NeedsRows()) return;
    TheFrame().StartCalculation(key.mid(1).toInt());
}

void frmData::picPresentationOptions_Click(const QString& key) {
    if (!NeedsRows()) return;
    TheFrame().StartPresentation(key.at(0));
}

} // namespace tessaro
