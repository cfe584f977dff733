#include "dataview/DataPanels.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "session/Frame.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QSet>
#include <QVBoxLayout>

namespace tessaro {

namespace {

struct PanelLook {
    const char* availableCaption;
    const char* selectedCaption;
    const char* availableIcon;
    const char* selectedIcon;
};

PanelLook LookOf(DataPanel panel) {
    switch (panel) {
    case DataPanel::Sources:
        return {"Sources_Available", "Sources_Selected", "DATA_SRC_AVL_ICON", "DATA_SRC_SEL_ICON"};
    case DataPanel::Units:
        return {"Units_Available", "Units_Selected", "DATA_UNIT_AVL_ICON", "DATA_UNIT_SEL_ICON"};
    case DataPanel::Subpops:
        return {"Subpop_Available", "Subpop_Selected", "DATA_SUBPOP_AVL_ICON", "DATA_SUBPOP_SEL_ICON"};
    }
    return {};
}

QStringList KeysIn(const std::vector<KeyedItem>& items) {
    QStringList keys;
    for (const KeyedItem& item : items)
        keys << item.key;
    return keys;
}

std::vector<KeyedItem> ItemsOf(const KeyedList& list, const QStringList& keys) {
    const QSet<QString> wanted(keys.begin(), keys.end());
    std::vector<KeyedItem> items;
    for (const KeyedItem& item : list.Items().Items())
        if (wanted.contains(item.key)) items.push_back(item);
    return items;
}

QStringList Texts(const QStringList& keys) {
    QStringList texts;
    for (const QString& key : keys)
        texts << PlainText(key);
    return texts;
}

SelectionLists* MakeLists(QWidget* panel) {
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    auto* lists = new SelectionLists(panel);
    column->addWidget(lists);
    return lists;
}

} // namespace

OptionPanel::OptionPanel(DataPanel panel, PanelRows& rows, QWidget* parent)
    : QWidget(parent), panel_(panel), rows_(rows), lists_(MakeLists(this)) {
    const PanelLook look = LookOf(panel);
    lists_->SetCaptionKeys(QLatin1String(look.availableCaption), QLatin1String(look.selectedCaption));
    lists_->SetHints(QStringLiteral("TS_NoItemsWithData"), QStringLiteral("TS_NoItemsInView"));
    lists_->SetIcons({QLatin1String(look.availableIcon)}, {QLatin1String(look.selectedIcon)});
    if (panel == DataPanel::Sources) {
        lists_->Available().Items().SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SRC_REC_AVL_ICON"))));
        lists_->Selected().Items().SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SRC_REC_SEL_ICON"))));
    }
    connect(lists_, &SelectionLists::AddHighlighted, this,
            [this] { AddIndicatorToSel(KeysIn(lists_->Available().HighlightedItems())); });
    connect(lists_, &SelectionLists::AddAll, this,
            [this] { AddIndicatorToSel(KeysIn(lists_->Available().Items().Items())); });
    connect(lists_, &SelectionLists::AddOne, this, [this](const QString& key) { AddIndicatorToSel({key}); });
    connect(lists_, &SelectionLists::RemoveHighlighted, this, [this] { RemoveIndicatorFromSel(false); });
    connect(lists_, &SelectionLists::RemoveAll, this, [this] { RemoveIndicatorFromSel(true); });
}

void OptionPanel::LoadDataInto_SOURCES_UNIT_SUBPOPS() {
    if (loaded_) return;
    loaded_ = true;
    TheFrame().SetBusy(true);
    const QColor global = ShowGlobalColor ? ColorFromNumber(GlobalColor) : QColor();
    std::vector<KeyedItem> items = PanelItems(panel_);
    for (KeyedList* list : {&lists_->Available(), &lists_->Selected()}) {
        list->Items().SetGlobalColor(global);
        list->Items().SetItems(items);
        list->SortOn(0);
        if (list->Items().SortOrder() == Qt::DescendingOrder) list->SortOn(0);
    }
    TheFrame().SetBusy(false);
}

bool OptionPanel::IsEmptied() const {
    return loaded_ && lists_->Available().Items().Count() > 0 && lists_->Selected().Items().Count() == 0;
}

void OptionPanel::SetFormCaptions() {
    lists_->SetFormCaptions();
    const QStringList heads = Texts(PanelHeads(panel_));
    lists_->Available().SetColumns(heads);
    lists_->Selected().SetColumns(heads);
}

void OptionPanel::AddIndicatorToSel(const QStringList& keys) {
    QStringList fresh;
    for (const QString& key : keys)
        if (!lists_->Selected().Items().Contains(key)) fresh << key;
    if (fresh.isEmpty()) return;
    lists_->Selected().Items().AddItems(ItemsOf(lists_->Available(), fresh));
    PutBack(panel_, fresh, rows_);
    Q_EMIT Changed();
}

void OptionPanel::RemoveIndicatorFromSel(bool all) {
    const QStringList keys = KeysIn(all ? lists_->Selected().Items().Items() : lists_->Selected().HighlightedItems());
    if (keys.isEmpty()) return;
    TakeOut(panel_, keys, all, rows_);
    lists_->Selected().Items().RemoveKeys(QSet<QString>(keys.begin(), keys.end()));
    Q_EMIT Changed();
}

SortPanel::SortPanel(QWidget* parent) : QWidget(parent), lists_(MakeLists(this)) {
    lists_->SetCaptionKeys(QStringLiteral("TS_SortColumnsAvailable"), QStringLiteral("TS_SortColumnsSelected"));
    lists_->SetHints(QStringLiteral("TS_SortAvailableColumns"), QStringLiteral("TS_SortNoColumns"));
    lists_->SetIcons({QStringLiteral("DATA_SORT_ASC_ICON")}, {QStringLiteral("DATA_SORT_SEL_ASC_ICON")});
    lists_->Selected().Items().SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SORT_SEL_DES_ICON"))));
    connect(lists_, &SelectionLists::AddHighlighted, this,
            [this] { Add(KeysIn(lists_->Available().HighlightedItems())); });
    connect(lists_, &SelectionLists::AddAll, this, [this] { Add(KeysIn(lists_->Available().Items().Items())); });
    connect(lists_, &SelectionLists::AddOne, this, [this](const QString& key) { Add({key}); });
    connect(lists_, &SelectionLists::RemoveHighlighted, this, [this] { Remove(false); });
    connect(lists_, &SelectionLists::RemoveAll, this, [this] { Remove(true); });
    // A double click turns the order round here instead of taking the column away.
    lists_->Selected().disconnect(lists_);
    connect(&lists_->Selected(), &KeyedList::ItemActivated, this, &SortPanel::TurnRound);
    connect(&lists_->Selected(), &KeyedList::DeletePressed, this, [this] { Remove(false); });
    connect(&lists_->Selected(), &KeyedList::ItemsDropped, lists_, &SelectionLists::AddHighlighted);
    connect(&lists_->Selected(), &KeyedList::HighlightChanged, lists_, &SelectionLists::EnableButtons);
    connect(&lists_->Selected(), &KeyedList::EnterPressed, this, &SortPanel::TurnRound);
    Reset();
}

void SortPanel::Reset() {
    std::vector<KeyedItem> chosen;
    std::vector<KeyedItem> items = SortItems();
    for (const KeyedItem& item : items)
        if (item.key == QLatin1String("A.AreaID")) chosen.push_back(item);
    lists_->Available().Items().SetItemsInOrder(std::move(items));
    lists_->Selected().Items().SetItemsInOrder(std::move(chosen));
}

QString SortPanel::OrderBy() const {
    return OrderByOf(Chosen());
}

std::vector<KeyedItem> SortPanel::Chosen() const {
    return lists_->Selected().Items().Items();
}

bool SortPanel::IsEmptied() const {
    return lists_->Selected().Items().Count() == 0;
}

void SortPanel::SetFormCaptions() {
    lists_->SetFormCaptions();
    const QStringList heads{PlainText(QStringLiteral("TS_OptionSort"))};
    lists_->Available().SetColumns(heads);
    lists_->Selected().SetColumns(heads);
    std::vector<KeyedItem> chosen = Chosen();
    std::vector<KeyedItem> items = SortItems();
    for (KeyedItem& item : chosen)
        for (const KeyedItem& named : items)
            if (named.key == item.key) item.cells = named.cells;
    lists_->Available().Items().SetItemsInOrder(std::move(items));
    lists_->Selected().Items().SetItemsInOrder(std::move(chosen));
}

void SortPanel::Add(const QStringList& keys) {
    std::vector<KeyedItem> chosen = Chosen();
    const std::size_t before = chosen.size();
    for (KeyedItem& item : ItemsOf(lists_->Available(), keys))
        if (!lists_->Selected().Items().Contains(item.key)) chosen.push_back(std::move(item));
    if (chosen.size() == before) return;
    lists_->Selected().Items().SetItemsInOrder(std::move(chosen));
    Q_EMIT Changed();
}

void SortPanel::Remove(bool all) {
    const QStringList keys = KeysIn(all ? Chosen() : lists_->Selected().HighlightedItems());
    if (keys.isEmpty()) return;
    lists_->Selected().Items().RemoveKeys(QSet<QString>(keys.begin(), keys.end()));
    Q_EMIT Changed();
}

void SortPanel::TurnRound() {
    const QString key = lists_->Selected().CurrentKey();
    for (const KeyedItem& item : Chosen())
        if (item.key == key) lists_->Selected().Items().SetMarked(key, !item.marked);
    Q_EMIT Changed();
}

} // namespace tessaro
