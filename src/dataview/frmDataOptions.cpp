#include "controls/DataTable.h"
#include "dataview/ActionPanels.h"
#include "dataview/DataPanels.h"
#include "dataview/GridQuery.h"
#include "dataview/StatisticsModel.h"
#include "dataview/frmData.h"
#include "dataview/frmDataFilters.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmData.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

// The options of the data view: panels, filters, rows taken out one by one, statistics.

namespace tessaro {

namespace {

enum Option { View, Stats, Sources, Units, Subpops, Sort, Calculate, Present };

/// What a panel says when it would leave the view empty.
constexpr const char* kGuardMessages[] = {"027", "028", "029", "030"};

} // namespace

void frmData::MakePanels() {
    DataStats_ = new DataTable(this);
    DataStats_->setObjectName(QStringLiteral("DataStats"));
    DataStats_->setModel(&statistics_);
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
    for (const DataPanel kind : DataPanels) {
        auto* panel = new OptionPanel(kind, panelRows_, this);
        connect(panel, &OptionPanel::Changed, this, [this] { Requery(); });
        ui_->picPanels->addWidget(panel);
        optionPanels_.push_back(panel);
    }
    sortPanel_ = new SortPanel(this);
    connect(sortPanel_, &SortPanel::Changed, this, [this] { sortPanelChanged_ = true; });
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

// False when the panel that is shown must not be left as it is.
bool frmData::MayLeaveOption() {
    if (option_ < Sources || option_ > Sort) return true;
    const bool emptied = option_ == Sort ? sortPanel_->IsEmptied() && model_.ValueRows() > 0
                                         : optionPanels_.at(static_cast<std::size_t>(option_ - Sources))->IsEmptied();
    if (!emptied) return true;
    ShowMessage(QLatin1String(kGuardMessages[option_ - Sources]));
    return false;
}

void frmData::ShowThisDataOption(int option) {
    ErrorTrap trap("ShowThisDataOption");
    if (option != option_ && !MayLeaveOption()) {
        options_.button(option_)->setChecked(true);
        return;
    }
    if (option_ == Sort && option != Sort) GenerateDataTable();
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
        optionPanels_.at(static_cast<std::size_t>(option - Sources))->LoadDataInto_SOURCES_UNIT_SUBPOPS();
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
    ui_->chkFilters->setVisible(option == View || option == Stats);
    ui_->cmdFilters->setVisible(option == View || option == Stats);
}

void frmData::DrawStats() {
    ErrorTrap trap("DrawStats");
    TheFrame().StartProgress();
    TheFrame().SetBusy(true);
    TheFrame().SetProgress(20);
    statistics_.SetLines(ReadStatistics(RowFilter));
    TheFrame().SetProgress(100);
    TheFrame().SetBusy(false);
    TheFrame().EndProgress();
    for (int column = 0; column < StatisticsModel::kNameColumn; ++column)
        DataStats_->setColumnWidth(column, DataStats_->fontMetrics().averageCharWidth() * 4);
    DataStats_->SetColumnCharacters(StatisticsModel::kNameColumn, 48);
    for (int column = StatisticsModel::kNameColumn + 1; column < StatisticsModel::MaxCols; ++column)
        DataStats_->SetColumnCharacters(column, 16);
    DataStats_->FitToFont();
}

// Another order, other filters or other items in view: the statement is opened anew.
bool frmData::Requery() {
    ErrorTrap trap("Requery");
    TheFrame().SetBusy(true);
    TheFrame().SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
    paging_.EndPaging(true);
    // The query of before stands on tables that may be dropped now.
    paging_.Close();
    ResetGrid();
    if (filters_.MostRecentOn || filters_.MissingDataOn) ForgetDeletedRows();
    if (filters_.MostRecentOn)
        MakeMostRecentTables();
    else
        MostRecentClause.clear();
    if (filters_.MissingDataOn) MakeMissingDataTable();
    const bool ok = StartPaging(FilteredStatement(filters_, dataOrderBy_));
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = false;
    RowFilter = BuildRowFilter(filters_);
    if (option_ == Stats) DrawStats();
    TheFrame().SetStatusText({});
    TheFrame().SetBusy(false);
    return ok;
}

void frmData::GenerateDataTable() {
    if (!std::exchange(sortPanelChanged_, false)) return;
    dataOrderBy_ = sortPanel_->OrderBy();
    ForgetDeletedRows();
    Requery();
}

void frmData::SetFilters(const DataFilters& filters) {
    filters_ = filters;
    filters_.MostRecentChanged = filters_.MissingDataChanged = filters_.ValueRangeChanged = true;
    ForgetDeletedRows();
    Requery();
    ui_->chkFilters->setChecked(filters_.AnyOn());
}

void frmData::chkFilters_Click() {
    if (model_.ValueRows() == 0 && !filters_.AnyOn()) {
        ui_->chkFilters->setChecked(false);
        ShowMessage(QStringLiteral("041"));
        return;
    }
    DataFilters filters;
    filters.DataValueFrom = filters_.DataValueFrom;
    filters.DataValueTo = filters_.DataValueTo;
    filters.MostRecentOn = ui_->chkFilters->isChecked();
    SetFilters(filters);
}

void frmData::cmdFilters_Click() {
    if (model_.ValueRows() == 0 && !filters_.AnyOn()) {
        ShowMessage(QStringLiteral("041"));
        return;
    }
    // The working tables are made anew for the count, so the grid lets go of them.
    paging_.Suspend();
    frmDataFilters dialog(this);
    const DataFilters before = filters_;
    DataFilters offered = filters_;
    if (!offered.ValueRangeOn) {
        TheFrame().SetBusy(true);
        if (const auto bounds = ValueBounds()) std::tie(offered.DataValueFrom, offered.DataValueTo) = *bounds;
        TheFrame().SetBusy(false);
    }
    dialog.SetFilters(offered);
    if (dialog.exec() == QDialog::Accepted && dialog.Filters() != before)
        SetFilters(dialog.Filters());
    else
        paging_.ResumeTimer();
}

void frmData::ForgetDeletedRows() {
    DeletedRowNIds.clear();
    deletedRows_ = 0;
}

void frmData::RemoveRowsFromDataGrid() {
    ErrorTrap trap("RemoveRowFromDataGrid");
    std::vector<int> rows;
    const auto chosen = ui_->DataGrid->selectionModel()->selection();
    for (const QItemSelectionRange& range : chosen)
        for (int row = range.top(); row <= std::min(range.bottom(), model_.ValueRows() - 1); ++row)
            rows.push_back(row);
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.empty()) return;
    TheFrame().SetBusy(true);
    for (const int row : rows) {
        const GridRow* values = model_.RowAt(row);
        if (!values || !values->hasRowNId) continue;
        if (!DeletedRowNIds.isEmpty()) DeletedRowNIds += QLatin1Char(',');
        DeletedRowNIds += QString::number(values->rowNId);
    }
    ui_->DataGrid->clearSelection();
    model_.RemoveRows(rows);
    deletedRows_ += static_cast<qint64>(rows.size());
    const int next = std::min(rows.front(), model_.ValueRows() - 1);
    if (next >= 0)
        ui_->DataGrid->setCurrentIndex(model_.index(next, std::max(ui_->DataGrid->currentIndex().column(), 0)));
    RowFilter = BuildRowFilter(filters_);
    TheFrame().SetBusy(false);
    ShowRows();
}

void frmData::RestoreDeletedRows() {
    if (DeletedRowNIds.trimmed().isEmpty()) return;
    TheFrame().SetBusy(true);
    const QString rows = DeletedRowNIds;
    ForgetDeletedRows();
    if (filters_.MissingDataOn) {
        Requery();
    } else {
        std::vector<GridRow> restored = paging_.Texts(RestoreStatement(rows));
        restoredRows_ += static_cast<qint64>(restored.size());
        model_.AppendRows(std::move(restored));
    }
    RowFilter = BuildRowFilter(filters_);
    TheFrame().SetBusy(false);
    ShowRows();
}

void frmData::ShowCount() {
    TheFrame().SetBusy(true);
    const qint64 rows = CountOfRows();
    TheFrame().SetBusy(false);
    ShowMessage(QLocale::system().toString(rows), MessageType::Ok, 103, {}, false);
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
    if (model_.ValueRows() == 0) {
        ShowMessage(QStringLiteral("041"));
        return;
    }
    TheFrame().StartCalculation(key.mid(1).toInt());
}

void frmData::picPresentationOptions_Click(const QString& key) {
    if (model_.ValueRows() == 0) {
        ShowMessage(QStringLiteral("041"));
        return;
    }
    TheFrame().StartPresentation(key.at(0));
}

} // namespace tessaro
