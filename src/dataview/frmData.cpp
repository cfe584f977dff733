#include "dataview/frmData.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "controls/SharedWidths.h"
#include "controls/Theme.h"
#include "dataview/ActionPanels.h"
#include "dataview/DataPanel.h"
#include "dataview/GridDelegate.h"
#include "dataview/GridQuery.h"
#include "dataview/SortPanel.h"
#include "dataview/TakeOutPanel.h"
#include "metadata/Details.h"
#include "metadata/frmInformationSheet.h"
#include "metadata/frmShowDetails.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_frmData.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>
#include <QToolButton>

#include <array>
#include <utility>

namespace tessaro {

namespace {

/// An option of the strip: its key in the settings, which say whether it is offered, its caption and its picture.
struct DataOption {
    const char* setting;
    const char* captionKey;
    const char* picture;
};

constexpr std::array<DataOption, 8> kDataOptions = {{
    {"DATA_VIEW", "TS_OptionView", "table.png"},
    {"DATA_STATS", "TS_OptionStatistics", "statistics.png"},
    {"DATA_SOURCES", "TS_OptionSources", "source.png"},
    {"DATA_UNITS", "TS_OptionUnits", "unit.png"},
    {"DATA_SUBPOPS", "TS_OptionSubpops", "subpop.png"},
    {"DATA_SORT", "TS_OptionSort", "sort_asc.png"},
    {"DATA_CALC", "TS_OptionCalculate", "calc.gif"},
    {"DATA_PRESENT", "TS_OptionPresent", "present.png"},
}};

/// How much a visible column counts when not all of them find room. Periods, identifiers and values are never cut.
constexpr std::array<double, VisibleCols> kColumnWeights = {100, 100, 1, 1.8, 100, 1, 0.8, 1.4};
/// A value of ordinary size, with the room of its footnote mark.
const QString kWideValue = QStringLiteral("-00,000,000.000");

QString Number(qint64 number) {
    return QLocale::system().toString(number);
}

/// A text of the string table with its places %1, %2 … filled with numbers. Empty stays empty.
QString WithNumbers(const char* key, std::initializer_list<qint64> numbers) {
    QString text = GetText(QLatin1String(key));
    int place = 0;
    for (const qint64 number : numbers)
        text.replace(QStringLiteral("%") + QString::number(++place), Number(number));
    return text;
}

} // namespace

frmData::frmData(QWidget* parent)
    : StageScreen(parent), ui_(std::make_unique<Ui::frmData>()), paging_(model_), dataOrderBy_(DefaultDataOrderBy()) {
    ui_->setupUi(this);
    MakeGrid();
    MakeOptionStrip();
    MakePanels();
    ConnectEvents();
    SetFormCaptions();
    ShowThisDataOption(0);
}

frmData::~frmData() {
    hide(); // while what the grid tells of it can still be answered
}

void frmData::MakeGrid() {
    ui_->DataGrid->setModel(&model_);
    ui_->DataGrid->setItemDelegate(new GridDelegate(ui_->DataGrid));
    ui_->DataGrid->installEventFilter(this);
    ui_->DataGrid->setContextMenuPolicy(Qt::CustomContextMenu);
    for (int column = 0; column < MaxCols; ++column)
        ui_->DataGrid->setColumnHidden(column, column >= VisibleCols);
    setFocusProxy(ui_->DataGrid);
}

/// The columns share the window by what they have to show of the selection.
void frmData::FitColumns() {
    std::vector<DataTable::Wish> wishes;
    for (int column = 1; column <= VisibleCols; ++column) {
        LongestTexts texts;
        const QStringList found = column == ColDatavalue ? QStringList(kWideValue) : LongestTextsOf(column);
        for (const QString& text : found)
            texts.Take(text);
        wishes.push_back({texts.Width(ui_->DataGrid->fontMetrics()), kColumnWeights.at(wishes.size())});
    }
    ui_->DataGrid->SetColumnWishes(std::move(wishes));
}

void frmData::Stop() {
    paging_.Stop();
    ShowRows();
}

void frmData::MakeOptionStrip() {
    QPalette strip = ui_->PicDataOptions->palette();
    strip.setColor(QPalette::Window, theme::SurfaceRaised());
    ui_->PicDataOptions->setPalette(strip);
    for (std::size_t place = 0; place < kDataOptions.size(); ++place) {
        const DataOption& option = kDataOptions.at(place);
        auto* button = new QToolButton(ui_->PicDataOptions);
        button->setObjectName(QLatin1String(option.setting));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIcon(theme::Icon(QLatin1String(option.picture)));
        button->setIconSize({theme::IconSize, theme::IconSize});
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setVisible(place == 0 || SettingOption(QLatin1String(option.setting)).offered);
        options_.addButton(button, static_cast<int>(place));
        ui_->layDataOptions->addWidget(button);
    }
    ui_->layDataOptions->addStretch();
}

void frmData::ConnectEvents() {
    tmrDataView_.setObjectName(QStringLiteral("tmrDataView"));
    tmrDataView_.setInterval(DataPaging::kInterval);
    paging_.onTimer = [this](bool on) { on ? tmrDataView_.start() : tmrDataView_.stop(); };
    // Painted at once, since no event is let through while the rows are counted.
    paging_.onCounting = [this](qint64 rows) {
        ui_->lblRows->setText(WithNumbers("TS_RowsLoading", {rows}));
        ui_->lblRows->repaint();
    };
    connect(&tmrDataView_, &QTimer::timeout, this, &frmData::tmrDataView_Timer);
    connect(&options_, &QButtonGroup::idClicked, this, &frmData::ShowThisDataOption);
    connect(ui_->DataGrid, &QWidget::customContextMenuRequested, this, &frmData::DataGrid_PopupMenu);
    connect(ui_->DataGrid->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { DataGrid_HeadClick(section + 1); });
    QScrollBar* bar = ui_->DataGrid->verticalScrollBar();
    connect(bar, &QScrollBar::sliderPressed, this, [this] { paging_.PauseTimer(); });
    connect(bar, &QScrollBar::sliderReleased, this, [this] { paging_.ResumeTimer(); });
    connect(bar, &QScrollBar::valueChanged, this, &frmData::DataGrid_Scrolled);
}

void frmData::Enter() {
    ErrorTrap trap("frmData_Activate");
    ShowGridPreferences();
    const bool textsChanged = std::exchange(textsChanged_, false);
    if (SelectionChanged) {
        MakeQryForTheGrid();
        FitColumns();
        SelectionChanged = false;
    } else if (textsChanged) {
        ReadTextsAnew();
        FitColumns();
    } else {
        paging_.ResumeTimer();
    }
    ShowThisDataOption(option_);
    ShowRows();
    setFocus();
}

void frmData::Leave() {
    sortPanel_->Leave();
    paging_.Suspend();
}

void frmData::ShowOptionCaption() {
    SetCaption(ui_->lblDataOptions, QLatin1String(kDataOptions.at(static_cast<std::size_t>(option_)).captionKey));
}

void frmData::tmrDataView_Timer() {
    paging_.PageTick();
    ShowRows();
}

void frmData::DataGrid_HeadClick(int column) {
    SortByColumn(column, column != sortedColumn_ || !sortedAscending_);
}

bool frmData::eventFilter(QObject* watched, QEvent* event) {
    if (watched == DataStats_ && event->type() == QEvent::KeyPress &&
        DataStats_KeyDown(static_cast<const QKeyEvent&>(*event)))
        return true;
    if (watched == ui_->DataGrid && event->type() == QEvent::KeyPress &&
        DataGrid_KeyDown(static_cast<const QKeyEvent&>(*event)))
        return true;
    return StageScreen::eventFilter(watched, event);
}

// True when the key is done with; otherwise the grid moves its cursor as ever.
bool frmData::DataGrid_KeyDown(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier) {
        RemoveRowsFromDataGrid();
        return true;
    }
    if (event.key() == Qt::Key_Escape && CanStop()) {
        Stop();
        return true;
    }
    if ((event.modifiers() & Qt::ControlModifier) == 0) return false;
    if (event.key() == Qt::Key_Home) paging_.LoadFromStart();
    if (event.key() != Qt::Key_End) return false;
    const WaitPointer wait;
    if (paging_.LoadFromEnd()) paging_.PageTick();
    ShowRows();
    // The last row of values is shown, not the spare one behind it.
    const int last = model_.ValueRows() - 1;
    if (!model_.HasSpareRow() || last < 0) return false;
    const int column = std::max(ui_->DataGrid->currentIndex().column(), 0);
    ui_->DataGrid->setCurrentIndex(model_.index(last, column));
    ui_->DataGrid->scrollTo(model_.index(last, column), QAbstractItemView::PositionAtBottom);
    return true;
}

// Whoever scrolls to the end of what is loaded gets the next page at once instead of waiting for the timer.
void frmData::DataGrid_Scrolled() {
    const bool atSpareRow = model_.HasSpareRow() && ui_->DataGrid->LastVisibleRow() >= model_.ValueRows();
    if (atSpareRow && paging_.LoadingFromTop() && !paging_.BottomStarted())
        paging_.isRunning() ? paging_.PageTick() : paging_.NextPage();
    ShowRows();
}

void frmData::ShowInformation(bool ofIndicator) {
    const GridRow* row = model_.RowAt(ui_->DataGrid->currentIndex().row());
    if (!row) return;
    if (ofIndicator)
        ShowInformationInBROW(row->indicatorGId, QStringLiteral("IND"), FormName(), true, this);
    else
        ShowInformationInBROW(QString::number(row->sourceNId), QStringLiteral("SOURCES"), FormName(), false, this);
}

// Where the area lies from its columns, where the indicator is classified from the others.
void frmData::ViewDetails() {
    ErrorTrap trap("mnu_DataView_ViewDetails");
    const QModelIndex cell = ui_->DataGrid->currentIndex();
    const GridRow* row = model_.RowAt(cell.row());
    if (!row) return;
    frmShowDetails form(this);
    if (cell.column() + 1 == ColAreaID || cell.column() + 1 == ColAreaName)
        form.ShowAreaDetails(row->areaId);
    else
        form.DisplayINDDetails(metadata::DetailsOfIndicator(row->indicatorGId));
    form.exec();
}

void frmData::SelectAll() {
    if (DataPanel* panel = PanelShown()) return panel->SelectAll();
    (ui_->picPanels->currentWidget() == DataStats_ ? DataStats_ : ui_->DataGrid)->selectAll();
}

void frmData::Find() {
    if (DataPanel* panel = PanelShown()) panel->Find();
}

void frmData::Copy() {
    if (DataPanel* panel = PanelShown()) return panel->Copy();
    const WaitPointer wait;
    (ui_->picPanels->currentWidget() == DataStats_ ? DataStats_ : ui_->DataGrid)->Copy();
}

void frmData::Refresh() {
    MakeQryForTheGrid();
    SelectionChanged = false;
    ShowThisDataOption(option_);
}

void frmData::SetFormCaptions() {
    SetFormFonts(this);
    for (std::size_t place = 0; place < kDataOptions.size(); ++place) {
        QAbstractButton* button = options_.button(static_cast<int>(place));
        SetCaption(button, QLatin1String(kDataOptions.at(place).captionKey));
        if (!button->isEnabled()) SetToolTip(button, QStringLiteral("TS_NotYetAvailable"));
    }
    QFont head = LanguageFont();
    head.setBold(true);
    ui_->lblDataOptions->setFont(head);
    QPalette muted = ui_->lblRows->palette();
    muted.setColor(QPalette::WindowText, theme::MutedText());
    ui_->lblRows->setPalette(muted);
    ui_->DataGrid->setAccessibleName(PlainText(QStringLiteral("TS_DataGrid")));
    ui_->PicDataOptions->setAccessibleName(PlainText(QStringLiteral("TS_DataOptions")));
    ShowFilterState();
    ShowNote();
    SetToolTip(ui_->chkFilters, QStringLiteral("TS_FiltersTip"));
    SetCaption(ui_->cmdFilters, QStringLiteral("TS_FiltersButton"));
    // So that what lies below stays where it is on panels without the button.
    ui_->lblDataOptions->setMinimumHeight(ui_->cmdFilters->sizeHint().height());
    for (TakeOutPanel* panel : takeOutPanels_)
        panel->SetFormCaptions();
    sortPanel_->SetFormCaptions();
    statistics_.Refresh();
    DataStats_->SetHint(GetText(QStringLiteral("TS_NoStatistics")));
    ShowThisDataOption(option_);
    ShowGridPreferences();
    ShowRows();
}

void frmData::ShowGridPreferences() {
    ui_->DataGrid->setShowGrid(ViewGridLines);
    ui_->DataGrid->setAlternatingRowColors(!ViewGridLines);
    ui_->DataGrid->setLayoutDirection(RightToLeft || LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    ui_->DataGrid->FitToFont();
    model_.Refresh();
}

// Rows of the query less those removed from the grid one by one; only what has been loaded while it isn't counted.
qint64 frmData::RowsInGrid() const {
    const bool known = paging_.PagingComplete() || paging_.TotalKnown();
    return (known ? paging_.TotalRows() : paging_.RowsLoaded()) - model_.RemovedRows();
}

/// How far a load is, and of how many once they are counted.
QString frmData::LoadText() const {
    const qint64 loaded = paging_.RowsLoaded() - model_.RemovedRows();
    if (paging_.TotalKnown())
        return WithNumbers(paging_.isStopped() ? "TS_RowsStoppedOf" : "TS_RowsLoadingOf", {loaded, RowsInGrid()});
    return WithNumbers(paging_.isStopped() ? "TS_RowsStopped" : "TS_RowsLoading", {loaded});
}

void frmData::ShowRows() {
    const QString loading = LoadText();
    QString text;
    if (model_.ValueRows() > 0) {
        const int first = ui_->DataGrid->FirstVisibleRow() + 1;
        const int last = std::min(ui_->DataGrid->LastVisibleRow() + 1, model_.ValueRows());
        const bool complete = paging_.PagingComplete();
        if (ui_->picPanels->currentWidget() != ui_->pagView)
            text = SelectionSummary();
        else if (complete || paging_.BottomStarted())
            text = WithNumbers("TS_RowsOf", {first, last, RowsInGrid()});
        if (text.isEmpty() || (!complete && paging_.TotalKnown()))
            text += text.isEmpty() ? loading : QStringLiteral("   ·   ") + loading;
    }
    ui_->lblRows->setText(text);
    Q_EMIT SelectionSummaryChanged();
}

QString frmData::SelectionSummary() const {
    if (model_.ValueRows() == 0) return {};
    const bool known = paging_.PagingComplete() || paging_.TotalKnown();
    return WithNumbers(known ? "TS_RowsTotal" : "TS_RowsLoaded", {RowsInGrid()});
}

} // namespace tessaro
