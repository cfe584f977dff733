#include "dataview/SortPanel.h"

#include "controls/Captions.h"
#include "controls/SelectionLists.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "dataview/SortOrder.h"
#include "session/Messages.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QHeaderView>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>

namespace tessaro {

namespace {

struct ButtonText {
    const char* name;
    const char* key;
    const char* shortcut;
};

enum ButtonPlace { Ascending, Descending, Up, Down, ButtonCount };

constexpr std::array<ButtonText, ButtonCount> kButtons = {{
    {"cmdAscending", "TS_SortAscending", ""},
    {"cmdDescending", "TS_SortDescending", ""},
    {"cmdMoveUp", "TS_MoveUp", "Alt+Up"},
    {"cmdMoveDown", "TS_MoveDown", "Alt+Down"},
}};

QStringList KeyList(const std::vector<KeyedItem>& items) {
    QStringList keys;
    for (const KeyedItem& item : items)
        keys << item.key;
    return keys;
}

QSet<QString> KeySet(const QStringList& keys) {
    return {keys.begin(), keys.end()};
}

} // namespace

SortPanel::SortPanel(QWidget* parent) : DataPanel(parent), lists_(new SelectionLists(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(lists_, 1);
    SetFirstControl(&lists_->Available());
    lists_->SetCaptionKeys(QStringLiteral("TS_SortColumnsAvailable"), QStringLiteral("TS_SortColumnsSelected"));
    lists_->SetHints(QStringLiteral("TS_SortAvailableColumns"), QStringLiteral("TS_SortNoColumns"));
    // The order of the chosen columns is their rank; sorting them by name would change it.
    lists_->Selected().header()->setSectionsClickable(false);
    lists_->Selected().header()->setSortIndicatorShown(false);
    if (auto* sort = lists_->findChild<QToolButton*>(QStringLiteral("cmdSelectedIcon"))) {
        QSizePolicy room = sort->sizePolicy();
        room.setRetainSizeWhenHidden(true); // so that the heads of both lists stay on one line
        sort->setSizePolicy(room);
        sort->hide();
    }
    MakeButtons();
    ConnectLists();
}

void SortPanel::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(2 * theme::kGrid, theme::kGrid, 2 * theme::kGrid, 2 * theme::kGrid);
    row->setSpacing(theme::kGrid);
    row->addStretch();
    for (const ButtonText& text : kButtons) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(text.name));
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(button);
        buttons_ << button;
    }
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(buttons_[Ascending], &QToolButton::clicked, this, [this] { SetDescending(false); });
    connect(buttons_[Descending], &QToolButton::clicked, this, [this] { SetDescending(true); });
    connect(buttons_[Up], &QToolButton::clicked, this, [this] { MoveHighlighted(-1); });
    connect(buttons_[Down], &QToolButton::clicked, this, [this] { MoveHighlighted(1); });
}

void SortPanel::ConnectLists() {
    KeyedList& available = lists_->Available();
    connect(lists_, &SelectionLists::AddHighlighted, this, [&available, this] { Put(available.HighlightedItems()); });
    connect(lists_, &SelectionLists::AddAll, this, [&available, this] { Put(available.Items().ShownItems()); });
    connect(lists_, &SelectionLists::AddOne, this, [&available, this](const QString& key) {
        const int row = available.Items().RowOfKey(key);
        if (row >= 0) Put({available.Items().ItemAt(row)});
    });
    connect(lists_, &SelectionLists::RemoveHighlighted, this, &SortPanel::TakeOutHighlighted);
    connect(lists_, &SelectionLists::RemoveAll, this, &SortPanel::TakeOutAll);
    connect(lists_, &SelectionLists::AvailablePopup, this, &SortPanel::ShowAvailablePopup);
    connect(lists_, &SelectionLists::SelectedPopup, this, &SortPanel::ShowSelectedPopup);
    connect(&lists_->Selected(), &KeyedList::HighlightChanged, this, &SortPanel::EnableButtons);
}

void SortPanel::Enter() {
    if (filled_) return;
    filled_ = true;
    std::vector<KeyedItem> columns = sorting::AvailableColumns();
    std::vector<KeyedItem> chosen;
    for (const KeyedItem& column : columns)
        if (column.key == sorting::DefaultColumn()) chosen.push_back(column);
    lists_->Available().Items().SetItemsInOrder(std::move(columns));
    lists_->Selected().Items().SetItemsInOrder(std::move(chosen));
    EnableButtons();
}

bool SortPanel::MayLeave() {
    if (!filled_ || !Columns().empty()) return true;
    ShowMessage(QStringLiteral("030"));
    return false;
}

void SortPanel::ShowOrder(int column, bool ascending) {
    Enter();
    KeyedItem item = sorting::AvailableColumns().at(static_cast<std::size_t>(column - 1));
    item.marked = !ascending;
    lists_->Selected().Items().SetItemsInOrder({std::move(item)});
    usersOrder_ = true;
    EnableButtons();
}

void SortPanel::Leave() {
    if (!std::exchange(changed_, false)) return;
    usersOrder_ = true;
    Q_EMIT Changed();
}

void SortPanel::Reset() {
    changed_ = false;
    if (usersOrder_) return;
    filled_ = false;
    lists_->Available().Items().Clear();
    lists_->Selected().Items().Clear();
}

const std::vector<KeyedItem>& SortPanel::Columns() const {
    return lists_->Selected().Items().Items();
}

void SortPanel::SetFormCaptions() {
    const QStringList heads{PlainText(QStringLiteral("TS_SortColumn"))};
    lists_->Available().SetColumns(heads);
    lists_->Selected().SetColumns(heads);
    lists_->SetFormCaptions();
    lists_->SetIcons({QStringLiteral("DATA_SORT_ASC_ICON")}, {QStringLiteral("DATA_SORT_SEL_ASC_ICON")});
    KeyedListModel& chosen = lists_->Selected().Items();
    chosen.SetMarkedIcon(theme::Icon(Setting(QStringLiteral("DATA_SORT_SEL_DES_ICON"))));
    for (int place = 0; place < ButtonCount; ++place) {
        const ButtonText& text = kButtons.at(static_cast<std::size_t>(place));
        SetCaption(buttons_[place], QLatin1String(text.key));
        buttons_[place]->setShortcut(QKeySequence(QLatin1String(text.shortcut)));
        buttons_[place]->setToolTip(
            PlainText(QLatin1String(text.key)) +
            (*text.shortcut != '\0' ? QStringLiteral(" (%1)").arg(QLatin1String(text.shortcut)) : QString()));
    }
    if (!filled_) return;
    // The columns' names in the new language, in the order and with the directions that they have.
    std::vector<KeyedItem> chosenColumns = Columns();
    const std::vector<KeyedItem> all = sorting::AvailableColumns();
    for (KeyedItem& column : chosenColumns)
        for (const KeyedItem& named : all)
            if (named.key == column.key) column.cells = named.cells;
    lists_->Available().Items().SetItemsInOrder(all);
    chosen.SetItemsInOrder(std::move(chosenColumns));
}

void SortPanel::Put(std::vector<KeyedItem> columns) {
    const int added = lists_->Selected().Items().AddItems(std::move(columns));
    changed_ = changed_ || added > 0;
}

void SortPanel::TakeOutHighlighted() {
    const QStringList keys = KeyList(lists_->Selected().HighlightedItems());
    if (keys.isEmpty()) return;
    lists_->Selected().Items().RemoveKeys(KeySet(keys));
    if (!Columns().empty()) lists_->Selected().HighlightKey(Columns().front().key);
    changed_ = true;
}

void SortPanel::TakeOutAll() {
    lists_->Selected().Items().SetItemsInOrder({});
    changed_ = true;
}

void SortPanel::SetDescending(bool descending) {
    const std::vector<KeyedItem> columns = lists_->Selected().HighlightedItems();
    for (const KeyedItem& column : columns)
        lists_->Selected().Items().SetMarked(column.key, descending);
    changed_ = changed_ || !columns.empty();
}

void SortPanel::MoveHighlighted(int step) {
    const QStringList keys = KeyList(lists_->Selected().HighlightedItems());
    if (keys.isEmpty()) return;
    lists_->Selected().Items().MoveKeys(KeySet(keys), step);
    KeepHighlights(keys);
    changed_ = true;
}

void SortPanel::KeepHighlights(const QStringList& keys) {
    KeyedList& list = lists_->Selected();
    list.HighlightKey(keys.front());
    for (const QString& key : keys)
        list.selectionModel()->select(list.model()->index(list.Items().RowOfKey(key), 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void SortPanel::EnableButtons() {
    for (QToolButton* button : buttons_)
        button->setEnabled(lists_->Selected().HasHighlighted());
}

void SortPanel::SelectAll() {
    lists_->HighlightAll();
}

void SortPanel::Copy() {
    lists_->CopyHighlighted();
}

void SortPanel::ShowAvailablePopup(const QPoint& place) {
    KeyedList& list = lists_->Available();
    ShowPopup(this, QStringLiteral("mnu_Data_Sort_PopupMenu_Avl_Options"), place,
              {{0, "mnu_Edit_SelectAll", [&list, this] { Put(list.Items().Items()); }},
               {1, "mnu_popIndicatorsAvl_SelectHighlighted", [&list, this] { Put(list.HighlightedItems()); },
                list.HasHighlighted(), kWhyNoneHighlighted},
               {2, nullptr, {}},
               {3, "Count", [&list, this] { lists_->ShowCount(list); }}});
}

void SortPanel::ShowSelectedPopup(const QPoint& place) {
    KeyedList& list = lists_->Selected();
    const bool highlighted = list.HasHighlighted();
    ShowPopup(
        this, QStringLiteral("mnu_Data_Sort_PopupMenu_Sel_Options"), place,
        {{0, "mnu_popDataSort_Ascending", [this] { SetDescending(false); }, highlighted, kWhyNoneHighlighted},
         {1, "mnu_popDataSort_Descending", [this] { SetDescending(true); }, highlighted, kWhyNoneHighlighted},
         {2, nullptr, {}},
         {3, "mnu_popDataSort_ClearAll", [this] { TakeOutAll(); }, list.Items().Count() > 0, kWhyListEmpty},
         {4, "mnu_popDataSort_ClearHighlighted", [this] { TakeOutHighlighted(); }, highlighted, kWhyNoneHighlighted},
         {5, nullptr, {}},
         {6, "Count", [&list, this] { lists_->ShowCount(list); }},
         {7, nullptr, {}},
         {9, "PRINT BUTTON", [this] { Q_EMIT PrintWanted(); }}});
}

} // namespace tessaro
