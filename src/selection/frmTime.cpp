#include "selection/frmTime.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "metadata/Details.h"
#include "metadata/frmShowDetails.h"
#include "selection/CrossFilters.h"
#include "selection/PrintSummaryView.h"
#include "selection/ScreenParts.h"
#include "selection/TimeSelection.h"
#include "selection/frmAutoSelect.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "ui_frmTime.h"

namespace tessaro {

frmTime::frmTime(QWidget* parent) : StageScreen(parent), ui_(std::make_unique<Ui::frmTime>()) {
    ui_->setupUi(this);
    SelectionLists& lists = *ui_->picLVContainer;
    lists.SetSortButtonNames(QStringLiteral("cmdSortButtons_0"), QStringLiteral("cmdSortButtons_1"));
    lists.SetHints(QStringLiteral("TS_NoTimePeriodsAvailable"), QStringLiteral("TS_NoTimePeriodsSelected"));
    lists.SetIcons({QStringLiteral("TIME_IMG_AVL_ICON")}, {QStringLiteral("TIME_IMG_SEL_ICON")});
    StyleFilterButton(ui_->cmdAllFilter, FilterButton::All);
    StyleStrip(ui_->picTop, ui_->hairLine);
    ConnectControls();
    SetFormCaptions();
    Form_Load();
}

frmTime::~frmTime() = default;

KeyedList& frmTime::lstAvailable() const {
    return ui_->picLVContainer->Available();
}

KeyedList& frmTime::lstSelected() const {
    return ui_->picLVContainer->Selected();
}

void frmTime::ConnectControls() {
    SelectionLists* lists = ui_->picLVContainer;
    connect(lists, &SelectionLists::AddHighlighted, this, [this] { AddSelectedPeriods(false); });
    connect(lists, &SelectionLists::AddAll, this, [this] { AddSelectedPeriods(true); });
    connect(lists, &SelectionLists::AddOne, this, &frmTime::AddOnePeriod);
    connect(lists, &SelectionLists::RemoveHighlighted, this, [this] { RemoveSelectedPeriods(false); });
    connect(lists, &SelectionLists::RemoveAll, this, [this] { RemoveSelectedPeriods(true); });
    connect(lists, &SelectionLists::AvailablePopup, this, &frmTime::ShowAvailablePopup);
    connect(lists, &SelectionLists::SelectedPopup, this, &frmTime::ShowSelectedPopup);
    connect(lists, &SelectionLists::SelectedCountChanged, this, &StageScreen::SelectionSummaryChanged);
    connect(ui_->cmdAllFilter, &QPushButton::clicked, this, &frmTime::cmdAllFilter_Click);
}

void frmTime::Form_Load() {
    ErrorTrap trap("Form_Load");
    FillAvailablePeriods();
    std::vector<KeyedItem> chosen = selection::SelectedPeriods();
    if (!chosen.empty()) SelectionChanged = true;
    lstSelected().Items().SetItems(std::move(chosen));
}

void frmTime::SetFormCaptions() {
    SetFormFonts(this);
    ShowHeading(ui_->lblHeading, QStringLiteral("TS_ChooseTimePeriods"));
    SetCaption(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelect"));
    SetToolTip(ui_->cmdAllFilter, QStringLiteral("TS_AutoSelectTip"));
    ui_->picLVContainer->SetFormCaptions();
    const QStringList heads{PlainText(QStringLiteral("TS_TimePeriods"))};
    lstAvailable().SetColumns(heads);
    lstSelected().SetColumns(heads);
}

void frmTime::Enter() {
    lstAvailable().setFocus();
}

void frmTime::SelectAll() {
    ui_->picLVContainer->HighlightAll();
}

void frmTime::Copy() {
    ui_->picLVContainer->CopyHighlighted();
}

void frmTime::ShowPeriodDetails() {
    ErrorTrap trap("ShowPeriodDetails");
    const std::vector<KeyedItem> items = lstSelected().HighlightedItems();
    if (items.empty()) return;
    frmShowDetails form(this);
    form.ShowPeriodDetails(items.front().cells.value(0), metadata::DataRowsOfPeriod(IdOfKey(items.front().key)));
    form.exec();
}

void frmTime::Print() {
    PrintSummaryView(QStringLiteral("TIME"), lstSelected(), this);
}

void frmTime::Find() {
    ui_->picLVContainer->FocusFilter();
}

QString frmTime::SelectionSummary() const {
    return SummaryOf(QStringLiteral("TS_TimePeriodCount"), lstSelected().Items().Count());
}

void frmTime::FillAvailablePeriods() {
    ErrorTrap trap("FillAvailablePeriods");
    lstAvailable().Items().SetItems(selection::AvailablePeriods());
}

void frmTime::AddThisPeriod(const QString& key, const QString& text) {
    SelectionChanged = true;
    const KeyedItem period{key, {text}, 0};
    if (lstSelected().Items().AddItems({period}) > 0) ShowKept(selection::AddPeriod(period));
}

/// When a write has failed, shows what the table holds.
void frmTime::ShowKept(bool written) {
    if (written) return;
    lstSelected().Items().SetItems(selection::SelectedPeriods());
    TellNotKept();
}

void frmTime::AddPeriods(const std::vector<KeyedItem>& periods) {
    SelectionChanged = true;
    std::vector<KeyedItem> fresh;
    for (const KeyedItem& period : periods)
        if (!lstSelected().Items().Contains(period.key)) fresh.push_back(period);
    const bool written = selection::AddPeriods(fresh);
    lstSelected().Items().AddItems(std::move(fresh));
    ShowKept(written);
}

void frmTime::AddOnePeriod(const QString& key) {
    ErrorTrap trap("lstAvailable_DblClick");
    const int row = lstAvailable().Items().RowOfKey(key);
    if (row >= 0) AddThisPeriod(key, lstAvailable().Items().ItemAt(row).cells.value(0));
}

void frmTime::AddSelectedPeriods(bool all) {
    ErrorTrap trap("AddSelectedPeriods");
    AddPeriods(all ? lstAvailable().Items().ShownItems() : lstAvailable().HighlightedItems());
}

void frmTime::RemoveSelectedPeriods(bool all) {
    ErrorTrap trap("RemoveSelectedPeriods");
    if (all) {
        lstSelected().Items().Clear();
        ShowKept(selection::RemoveAllPeriods());
        return;
    }
    const std::vector<KeyedItem> removed = lstSelected().HighlightedItems();
    lstSelected().Items().RemoveKeys(KeysOf(removed));
    ShowKept(selection::RemovePeriods(removed));
    TheFrame().SetStatusText({});
    const std::vector<KeyedItem>& left = lstSelected().Items().Items();
    if (!left.empty()) lstSelected().HighlightKey(left.front().key); // which shows its text in the status bar
}

void frmTime::cmdAllFilter_Click() {
    ErrorTrap trap("cmdAllFilter_Click");
    const auto by = selection::DecideOtherStages(selection::Stage::Time, AskAutoSelect(this));
    if (!by) return;
    const WaitState wait;
    std::vector<KeyedItem> found = selection::FindPeriods(by->first, by->second);
    TheFrame().SetProgress(50);
    lstSelected().Items().Clear();
    if (!selection::RemoveAllPeriods()) return ShowKept(false);
    AddPeriods(found);
    TheFrame().SetProgress(100);
    if (found.empty()) TellNothingFound(*ui_->picLVContainer);
}

void frmTime::ShowAvailablePopup(const QPoint& place) {
    const bool any = lstAvailable().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_time_avl_Options"), place,
              {{0, "mnu_popIndicatorsAvl_SelectHighlighted", [this] { AddSelectedPeriods(false); },
                lstAvailable().HasHighlighted(), kWhyNoneHighlighted},
               {1, "mnu_Edit_SelectAll", [this] { AddSelectedPeriods(true); }, any, kWhyListEmpty},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstAvailable()); }}});
}

void frmTime::ShowSelectedPopup(const QPoint& place) {
    const bool any = lstSelected().Items().Count() > 0;
    ShowPopup(this, QStringLiteral("mnu_popup_time_sel_Options"), place,
              {{0, "mnu_popDataSort_ClearHighlighted", [this] { RemoveSelectedPeriods(false); },
                lstSelected().HasHighlighted(), kWhyNoneHighlighted},
               {1, "mnu_popDataSort_ClearAll", [this] { RemoveSelectedPeriods(true); }, any, kWhyListEmpty},
               {2, nullptr, {}},
               {3, "Count", [this] { ui_->picLVContainer->ShowCount(lstSelected()); }},
               {5, nullptr, {}},
               {6, "mnu_DataView_ViewDetails", [this] { ShowPeriodDetails(); }, lstSelected().HasHighlighted(),
                kWhyNoneHighlighted},
               {7, "PRINT BUTTON", [this] { Print(); }, any, kWhyListEmpty}});
}

} // namespace tessaro
