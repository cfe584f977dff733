#include "dataview/TakeOutPanel.h"

#include "controls/Captions.h"
#include "controls/SelectionLists.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QVBoxLayout>

namespace tessaro {

namespace {

struct PanelTexts {
    const char* availableKey;
    const char* selectedKey;
    const char* noneLeft; ///< message when nothing is left in view
    const char* availableIcon;
    const char* selectedIcon;
    QList<const char*> heads;
};

const PanelTexts& TextsOf(OptionList option) {
    static const std::array<PanelTexts, 3> texts = {{
        {"Sources_Available",
         "Sources_Selected",
         "027",
         "DATA_SRC_AVL_ICON",
         "DATA_SRC_SEL_ICON",
         {"Comm_Indicator", "Comm_Unit", "Subpop", "Comm_Source"}},
        {"Units_Available",
         "Units_Selected",
         "028",
         "DATA_UNIT_AVL_ICON",
         "DATA_UNIT_SEL_ICON",
         {"Comm_Indicator", "Comm_Unit"}},
        {"Subpop_Available",
         "Subpop_Selected",
         "029",
         "DATA_SUBPOP_AVL_ICON",
         "DATA_SUBPOP_SEL_ICON",
         {"Comm_Indicator", "Subpop"}},
    }};
    return texts.at(static_cast<std::size_t>(option));
}

QStringList KeyList(const std::vector<KeyedItem>& items) {
    QStringList keys;
    for (const KeyedItem& item : items)
        keys << item.key;
    return keys;
}

} // namespace

TakeOutPanel::TakeOutPanel(OptionList option, DataOptions& options, QWidget* parent)
    : DataPanel(parent), option_(option), options_(options), lists_(new SelectionLists(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lists_);
    SetFirstControl(&lists_->Selected());
    const PanelTexts& texts = TextsOf(option_);
    lists_->SetCaptionKeys(QLatin1String(texts.availableKey), QLatin1String(texts.selectedKey));
    lists_->SetHints(QStringLiteral("TS_NoItemsWithData"), QStringLiteral("TS_NoItemsInView"));
    // Of the four columns of the sources, the last is what the panel is about.
    const QList<double> weights = option_ == OptionList::Sources ? QList<double>{2, 1, 1, 2} : QList<double>{3, 2};
    for (KeyedList* list : {&lists_->Available(), &lists_->Selected()})
        list->SetColumnWeights(weights);
    ConnectLists();
}

void TakeOutPanel::ConnectLists() {
    KeyedList& available = lists_->Available();
    KeyedList& selected = lists_->Selected();
    connect(lists_, &SelectionLists::AddHighlighted, this, [&available, this] { Put(available.HighlightedItems()); });
    connect(lists_, &SelectionLists::AddAll, this, [&available, this] { Put(available.Items().ShownItems()); });
    connect(lists_, &SelectionLists::AddOne, this, [&available, this](const QString& key) {
        const int row = available.Items().RowOfKey(key);
        if (row >= 0) Put({available.Items().ItemAt(row)});
    });
    connect(lists_, &SelectionLists::RemoveHighlighted, this,
            [&selected, this] { TakeOut(selected.HighlightedItems()); });
    connect(lists_, &SelectionLists::RemoveAll, this, &TakeOutPanel::TakeOutAll);
    connect(lists_, &SelectionLists::AvailablePopup, this, &TakeOutPanel::ShowAvailablePopup);
    connect(lists_, &SelectionLists::SelectedPopup, this, &TakeOutPanel::ShowSelectedPopup);
}

void TakeOutPanel::Enter() {
    for (KeyedList* list : {&lists_->Available(), &lists_->Selected()})
        list->Items().SetGlobalColor(GlobalItemColor());
    if (filled_) return;
    filled_ = true;
    const WaitPointer wait;
    std::vector<KeyedItem> items = options_.LoadDataInto_SOURCES_UNIT_SUBPOPS(option_);
    lists_->Available().Items().SetItems(items);
    lists_->Selected().Items().SetItems(std::move(items));
}

void TakeOutPanel::ReadTextsAnew() {
    if (!filled_) return;
    const QSet<QString> inView = KeysOf(lists_->Selected().Items().Items());
    std::vector<KeyedItem> items = options_.LoadDataInto_SOURCES_UNIT_SUBPOPS(option_);
    lists_->Available().Items().SetItems(items);
    std::erase_if(items, [&](const KeyedItem& item) { return !inView.contains(item.key); });
    lists_->Selected().Items().SetItems(std::move(items));
}

void TakeOutPanel::Reset() {
    filled_ = false;
    lists_->Available().Items().Clear();
    lists_->Selected().Items().Clear();
}

void TakeOutPanel::SetFormCaptions() {
    QStringList heads;
    for (const char* key : TextsOf(option_).heads)
        heads << PlainText(QLatin1String(key));
    lists_->Available().SetColumns(heads);
    lists_->Selected().SetColumns(heads);
    lists_->SetFormCaptions();
    ShowIcons();
}

void TakeOutPanel::ShowIcons() {
    const PanelTexts& texts = TextsOf(option_);
    lists_->SetIcons({QLatin1String(texts.availableIcon)}, {QLatin1String(texts.selectedIcon)});
    if (option_ != OptionList::Sources) return;
    lists_->Available().Items().SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SRC_REC_AVL_ICON"))));
    lists_->Selected().Items().SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SRC_REC_SEL_ICON"))));
}

bool TakeOutPanel::IsEmpty() const {
    return filled_ && lists_->Selected().Items().Count() == 0;
}

bool TakeOutPanel::MayLeave() {
    if (!IsEmpty()) return true;
    ShowMessage(QLatin1String(TextsOf(option_).noneLeft));
    return false;
}

void TakeOutPanel::Put(const std::vector<KeyedItem>& items) {
    std::vector<KeyedItem> fresh;
    for (const KeyedItem& item : items)
        if (!lists_->Selected().Items().Contains(item.key)) fresh.push_back(item);
    if (fresh.empty() || !options_.AddIndicatorToSel(option_, KeyList(fresh))) return;
    lists_->Selected().Items().AddItems(std::move(fresh));
    Q_EMIT Changed();
}

void TakeOutPanel::PutBack(const QStringList& keys) {
    Enter();
    std::vector<KeyedItem> items;
    for (const QString& key : keys)
        if (const int row = lists_->Available().Items().RowOfKey(key); row >= 0)
            items.push_back(lists_->Available().Items().ItemAt(row));
    Put(items);
}

void TakeOutPanel::TakeOut(const std::vector<KeyedItem>& items) {
    const QStringList keys = KeyList(items);
    if (keys.isEmpty() || !options_.RemoveIndicatorFromSel(option_, keys)) return;
    lists_->Selected().Items().RemoveKeys(KeysOf(items));
    const std::vector<KeyedItem>& left = lists_->Selected().Items().Items();
    if (!left.empty()) lists_->Selected().HighlightKey(left.front().key);
    Q_EMIT Changed();
}

void TakeOutPanel::TakeOutAll() {
    if (lists_->Selected().Items().Count() == 0 || !options_.RemoveAllFromSel(option_)) return;
    lists_->Selected().Items().Clear();
    Q_EMIT Changed();
}

void TakeOutPanel::PutRecommended() {
    std::vector<KeyedItem> recommended;
    for (const KeyedItem& item : lists_->Available().Items().Items())
        if (item.marked) recommended.push_back(item);
    Put(recommended);
}

void TakeOutPanel::SelectAll() {
    lists_->HighlightAll();
}

void TakeOutPanel::Copy() {
    lists_->CopyHighlighted();
}

void TakeOutPanel::Find() {
    lists_->FocusFilter();
}

void TakeOutPanel::ShowAvailablePopup(const QPoint& place) {
    KeyedList& list = lists_->Available();
    QList<PopupEntry> entries = {{0, "mnu_Edit_SelectAll", [&list, this] { Put(list.Items().Items()); },
                                  list.Items().Count() > 0, kWhyListEmpty},
                                 {1, "mnu_popIndicatorsAvl_SelectHighlighted",
                                  [&list, this] { Put(list.HighlightedItems()); }, list.HasHighlighted(),
                                  kWhyNoneHighlighted}};
    if (option_ == OptionList::Sources)
        entries << PopupEntry{2, "mnu_popDataSources_SelectRecommended", [this] { PutRecommended(); }};
    entries << PopupEntry{3, nullptr, {}} << PopupEntry{4, "Count", [&list, this] { lists_->ShowCount(list); }};
    if (option_ == OptionList::Sources)
        entries << PopupEntry{5, nullptr, {}}
                << PopupEntry{6, "Information", [this] { AskForInformation(); }, list.HasHighlighted(),
                              kWhyNoneHighlighted};
    ShowPopup(this, QStringLiteral("mnu_popup_Data_Sources_Avl_Options"), place, entries);
}

// A source's key ends with its number.
void TakeOutPanel::AskForInformation() {
    const std::vector<KeyedItem> items = lists_->Available().HighlightedItems();
    if (!items.empty()) Q_EMIT InformationWanted(items.front().key.section(QLatin1Char('_'), -1));
}

void TakeOutPanel::ShowSelectedPopup(const QPoint& place) {
    KeyedList& list = lists_->Selected();
    ShowPopup(this, QStringLiteral("mnu_popup_Data_Sources_Sel_Options"), place,
              {{0, "mnu_popDataSort_ClearHighlighted", [&list, this] { TakeOut(list.HighlightedItems()); },
                list.HasHighlighted(), kWhyNoneHighlighted},
               {1, "mnu_popDataSort_ClearAll", [this] { TakeOutAll(); }, list.Items().Count() > 0, kWhyListEmpty},
               {2, nullptr, {}},
               {3, "Count", [&list, this] { lists_->ShowCount(list); }}});
}

} // namespace tessaro
