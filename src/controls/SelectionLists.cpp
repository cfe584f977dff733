#include "controls/SelectionLists.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "ui_SelectionLists.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>

namespace tessaro {

namespace {

constexpr int kFollowedRows = 5000;
constexpr int kFilterPauseMilliseconds = 150;

QString WithCount(const QString& captionKey, const KeyedListModel& items) {
    const QLocale locale;
    QString count = locale.toString(items.Count());
    if (items.IsFiltered()) count = locale.toString(items.rowCount()) + QStringLiteral(" / ") + count;
    const QString pattern = GetText(QStringLiteral("TS_ListCaption"));
    return (pattern.isEmpty() ? QStringLiteral("%1 (%2)") : pattern).arg(PlainText(captionKey), count);
}

void MakeHeading(QLabel* label) {
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
}

} // namespace

SelectionLists::SelectionLists(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::SelectionLists>()) {
    ui_->setupUi(this);
    ui_->splitter->setSizes({460, 540}); // the buttons stand in the second pane, so that the lists are alike
    ui_->splitter->setStretchFactor(0, 46);
    ui_->splitter->setStretchFactor(1, 54);
    ui_->lblAvailable->setBuddy(ui_->lstAvailable);
    ui_->lblSelected->setBuddy(ui_->lstSelected);
    for (QToolButton* sort : {ui_->cmdAvailableIcon, ui_->cmdSelectedIcon})
        sort->setFocusPolicy(Qt::TabFocus);
    ui_->picListState->hide();
    ConnectLists();
    ConnectButtons();
    ShowButtonIcons();
    ShowSortIcons();
    EnableButtons();
}

SelectionLists::~SelectionLists() = default;

KeyedList& SelectionLists::Available() {
    return *ui_->lstAvailable;
}

KeyedList& SelectionLists::Selected() {
    return *ui_->lstSelected;
}

void SelectionLists::ConnectLists() {
    KeyedList* available = ui_->lstAvailable;
    KeyedList* selected = ui_->lstSelected;
    available->SetDropSource(selected);
    selected->SetDropSource(available);
    connect(available, &KeyedList::ItemActivated, this, &SelectionLists::AddOne);
    connect(available, &KeyedList::EnterPressed, this, &SelectionLists::AddHighlighted);
    connect(available, &KeyedList::ItemsDropped, this, &SelectionLists::RemoveHighlighted);
    connect(available, &KeyedList::PopupRequested, this, &SelectionLists::AvailablePopup);
    connect(available, &KeyedList::LeaveTowards, this, [this](Qt::Edge edge) { Leave(true, edge); });
    connect(selected, &KeyedList::ItemActivated, this, &SelectionLists::RemoveHighlighted);
    connect(selected, &KeyedList::DeletePressed, this, &SelectionLists::RemoveHighlighted);
    connect(selected, &KeyedList::ItemsDropped, this, &SelectionLists::AddHighlighted);
    connect(selected, &KeyedList::PopupRequested, this, &SelectionLists::SelectedPopup);
    connect(selected, &KeyedList::LeaveTowards, this, [this](Qt::Edge edge) { Leave(false, edge); });
    connect(&selected->Items(), &KeyedListModel::CountChanged, this, &SelectionLists::SelectedCountChanged);
    connect(&selected->Items(), &KeyedListModel::CountChanged, this, [this, selected] {
        if (!nothingFoundKey_.isEmpty() && selected->Items().Count() > 0) ShowNothingFound({});
    });
    for (KeyedList* list : {available, selected}) {
        connect(&list->Items(), &KeyedListModel::CountChanged, this, [this] {
            ShowCounts();
            EnableButtons();
        });
        connect(list, &KeyedList::HighlightChanged, this, &SelectionLists::EnableButtons);
        connect(list, &KeyedList::SortChanged, this, &SelectionLists::ShowSortIcons);
        connect(list, &KeyedList::CurrentTextChanged, this,
                [](const QString& text) { TheFrame().SetStatusText(text); });
    }
}

void SelectionLists::ConnectButtons() {
    connect(ui_->cmdAdd, &QPushButton::clicked, this, &SelectionLists::AddHighlighted);
    connect(ui_->cmdAddAll, &QPushButton::clicked, this, [this] {
        ApplyFilter(); // with what was just typed
        Q_EMIT AddAll();
    });
    connect(ui_->cmdRemove, &QPushButton::clicked, this, &SelectionLists::RemoveHighlighted);
    connect(ui_->cmdRemoveAll, &QPushButton::clicked, this, &SelectionLists::RemoveAll);
    connect(ui_->cmdAvailableIcon, &QToolButton::clicked, this, [this] { ui_->lstAvailable->SortOn(0); });
    connect(ui_->cmdSelectedIcon, &QToolButton::clicked, this, [this] { ui_->lstSelected->SortOn(0); });
    filterPause_.setSingleShot(true);
    filterPause_.setInterval(kFilterPauseMilliseconds);
    connect(ui_->cmdEndListState, &QToolButton::clicked, this, &SelectionLists::EndListState);
    ui_->txtFilter->installEventFilter(this);
    ui_->lstAvailable->installEventFilter(this);
    connect(&filterPause_, &QTimer::timeout, this, &SelectionLists::ApplyFilter);
    connect(ui_->txtFilter, &QLineEdit::textChanged, this, [this] {
        // A short list is filtered at each key; a long one after a pause in the typing.
        if (ui_->lstAvailable->Items().Count() > kFollowedRows)
            filterPause_.start();
        else
            ApplyFilter();
    });
    connect(ui_->txtFilter, &QLineEdit::returnPressed, this, [this] {
        ApplyFilter();
        Q_EMIT SearchRequested(ui_->txtFilter->text().trimmed());
        ui_->lstAvailable->setFocus();
    });
}

void SelectionLists::ApplyFilter() {
    filterPause_.stop();
    ui_->lstAvailable->Items().SetFilter(ui_->txtFilter->text());
}

void SelectionLists::Leave(bool fromAvailable, Qt::Edge edge) {
    const bool forward = (edge == Qt::RightEdge) == (layoutDirection() == Qt::LeftToRight);
    if (fromAvailable && forward)
        ui_->lstSelected->setFocus();
    else if (fromAvailable)
        Q_EMIT LeaveBackwards();
    else if (!forward)
        AvailableView()->setFocus();
}

void SelectionLists::SetListNames(const QString& available, const QString& selected) {
    ui_->lstAvailable->setObjectName(available);
    ui_->lstSelected->setObjectName(selected);
}

void SelectionLists::SetSortButtonNames(const QString& available, const QString& selected) {
    ui_->cmdAvailableIcon->setObjectName(available);
    ui_->cmdSelectedIcon->setObjectName(selected);
}

void SelectionLists::SetCaptionKeys(const QString& available, const QString& selected) {
    availableCaptionKey_ = available;
    selectedCaptionKey_ = selected;
    ShowCounts();
}

void SelectionLists::SetHints(const QString& availableKey, const QString& selectedKey) {
    availableHintKey_ = availableKey;
    selectedHintKey_ = selectedKey;
}

void SelectionLists::SetIcons(const QStringList& availableSettings, const QStringList& selectedSettings) {
    const auto icons = [](const QStringList& settings) {
        QList<QIcon> list;
        for (const QString& setting : settings)
            list << theme::Icon(Setting(setting));
        return list;
    };
    ui_->lstAvailable->Items().SetColumnIcons(icons(availableSettings));
    ui_->lstSelected->Items().SetColumnIcons(icons(selectedSettings));
}

void SelectionLists::SetFormCaptions() {
    SetCaption(ui_->cmdAdd, QStringLiteral("TS_Add"));
    SetCaption(ui_->cmdAddAll, QStringLiteral("TS_AddAll"));
    SetCaption(ui_->cmdRemove, QStringLiteral("TS_Remove"));
    SetCaption(ui_->cmdRemoveAll, QStringLiteral("TS_RemoveAll"));
    SetToolTip(ui_->cmdAddAll, QStringLiteral("TS_AddAllTip"));
    SetToolTip(ui_->cmdAvailableIcon, QStringLiteral("TS_SortAvailable"));
    SetToolTip(ui_->cmdSelectedIcon, QStringLiteral("TS_SortSelected"));
    ui_->cmdAvailableIcon->setAccessibleName(PlainText(QStringLiteral("TS_SortAvailable")));
    ui_->cmdSelectedIcon->setAccessibleName(PlainText(QStringLiteral("TS_SortSelected")));
    const QString filter = PlainText(QStringLiteral("TS_FilterPlaceholder"));
    ui_->txtFilter->setPlaceholderText(filter);
    ui_->txtFilter->setAccessibleName(filter);
    ShowHints();
    if (!showsBranch_) Q_EMIT BranchWanted(); // the text that is shown instead is in the language before
    for (QLabel* heading : {ui_->lblAvailable, ui_->lblSelected}) {
        MakeHeading(heading);
        heading->setMinimumHeight(ui_->txtFilter->sizeHint().height()); // so that both lists begin on one line
    }
    ShowCounts();
}

void SelectionLists::ShowHints() {
    const QString noMatch = GetText(QStringLiteral("TS_FilterNoMatch"));
    ui_->lstAvailable->SetEmptyHint(nothingInstead_.isEmpty() ? GetText(availableHintKey_) : nothingInstead_, noMatch);
    ui_->lstSelected->SetEmptyHint(GetText(nothingFoundKey_.isEmpty() ? selectedHintKey_ : nothingFoundKey_), noMatch);
}

void SelectionLists::ShowNothingFound(const QString& textKey) {
    nothingFoundKey_ = ui_->lstSelected->Items().Count() == 0 ? textKey : QString();
    ShowHints();
}

void SelectionLists::ClearFilter() {
    ui_->txtFilter->clear();
    ApplyFilter();
}

void SelectionLists::ShowInstead(const QString& what, const QString& nothing) {
    showsBranch_ = false;
    instead_ = what;
    nothingInstead_ = nothing;
    ShowHints();
    ShowListState();
}

void SelectionLists::ShowBranch() {
    showsBranch_ = true;
    instead_.clear();
    nothingInstead_.clear();
    ShowHints();
    ShowListState();
}

bool SelectionLists::ShowsOther() const {
    return !showsBranch_ || ui_->lstAvailable->Items().IsFiltered();
}

void SelectionLists::ShowListState() {
    const KeyedListModel& items = ui_->lstAvailable->Items();
    QStringList parts;
    if (!showsBranch_) parts << instead_;
    if (items.IsFiltered()) {
        const QLocale locale;
        parts << GetText(QStringLiteral("TS_FilterShown"))
                     .replace(QLatin1String("%1"), locale.toString(items.rowCount()))
                     .replace(QLatin1String("%2"), locale.toString(items.Count()));
    }
    ui_->lblListState->setText(parts.join(QStringLiteral(" \u2013 ")));
    ui_->lblListState->setAlignment(ReadingSide());
    SetCaption(ui_->cmdEndListState,
               items.IsFiltered() ? QStringLiteral("TS_FilterClear") : QStringLiteral("TS_BranchAgain"));
    if (parts.isEmpty() && ui_->cmdEndListState->hasFocus()) ui_->lstAvailable->setFocus();
    ui_->picListState->setVisible(!parts.isEmpty() && AvailableView() == ui_->lstAvailable);
}

/// Ends the filter first; without one, ends the search result and shows the branch again.
void SelectionLists::EndListState() {
    if (ui_->lstAvailable->Items().IsFiltered())
        ClearFilter();
    else if (!showsBranch_)
        Q_EMIT BranchWanted();
}

bool SelectionLists::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape || !ShowsOther())
        return QWidget::eventFilter(watched, event);
    EndListState();
    return true;
}

void SelectionLists::ShowCounts() {
    const QString available = WithCount(availableCaptionKey_, ui_->lstAvailable->Items());
    const QString selected = WithCount(selectedCaptionKey_, ui_->lstSelected->Items());
    ui_->lblAvailable->setText(available);
    ui_->lblSelected->setText(selected);
    ui_->lstAvailable->setAccessibleName(available);
    ui_->lstSelected->setAccessibleName(selected);
    ShowListState();
}

void SelectionLists::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) ShowButtonIcons();
}

void SelectionLists::ShowButtonIcons() {
    // Arrows point to the list that gets the items, which is on the left in right-to-left languages.
    const QString add = QStringLiteral("add");
    const QString remove = QStringLiteral("remove");
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const auto show = [](QPushButton* button, const QString& name) {
        button->setIcon(theme::Icon(name + QStringLiteral(".png")));
    };
    show(ui_->cmdAdd, (mirrored ? remove : add) + QStringLiteral("_one"));
    show(ui_->cmdAddAll, (mirrored ? remove : add) + QStringLiteral("_all"));
    show(ui_->cmdRemove, (mirrored ? add : remove) + QStringLiteral("_one"));
    show(ui_->cmdRemoveAll, (mirrored ? add : remove) + QStringLiteral("_all"));
}

void SelectionLists::ShowSortIcons() {
    const auto show = [](QToolButton* button, const KeyedListModel& items) {
        const bool descending = items.SortOrder() == Qt::DescendingOrder;
        button->setIcon(theme::Icon(
            Setting(descending ? QStringLiteral("SORT BUTTON DES ICON") : QStringLiteral("SORT BUTTON ASC ICON"))));
        button->setProperty("sortKey", descending ? QStringLiteral("DES") : QStringLiteral("ASC"));
    };
    show(ui_->cmdAvailableIcon, ui_->lstAvailable->Items());
    show(ui_->cmdSelectedIcon, ui_->lstSelected->Items());
}

void SelectionLists::EnableButtons() {
    // A button that gets disabled gives the focus to its list; otherwise the next button would get it, which moves
    // everything.
    const auto enable = [](QPushButton* button, bool on, KeyedList* list) {
        if (!on && button->hasFocus()) list->setFocus();
        button->setEnabled(on);
    };
    enable(ui_->cmdAdd, ui_->lstAvailable->HasHighlighted(), ui_->lstAvailable);
    enable(ui_->cmdAddAll, ui_->lstAvailable->Items().rowCount() > 0, ui_->lstAvailable);
    enable(ui_->cmdRemove, ui_->lstSelected->HasHighlighted(), ui_->lstSelected);
    enable(ui_->cmdRemoveAll, ui_->lstSelected->Items().Count() > 0, ui_->lstSelected);
}

void SelectionLists::SetOtherView(QWidget* view) {
    otherView_ = view;
    view->hide();
    ui_->availableLayout->addWidget(view, 1);
    setTabOrder(ui_->lstAvailable, view);
}

void SelectionLists::ShowOtherView(bool shown) {
    if (otherView_ == nullptr || otherView_->isVisibleTo(this) == shown) return;
    if (shown) {
        ui_->lstAvailable->clearSelection();
        sizesOfLists_ = ui_->splitter->sizes();
    }
    for (QWidget* each : {static_cast<QWidget*>(ui_->lblAvailable), static_cast<QWidget*>(ui_->txtFilter),
                          static_cast<QWidget*>(ui_->cmdAvailableIcon), static_cast<QWidget*>(ui_->lstAvailable)})
        each->setVisible(!shown);
    ui_->availableHead->setContentsMargins(shown ? QMargins() : QMargins(8, 8, 8, 8));
    otherView_->setVisible(shown);
    ShowListState();
    const int width = sizesOfLists_.value(0) + sizesOfLists_.value(1);
    ui_->splitter->setSizes(shown ? QList<int>{width * 64 / 100, width * 36 / 100} : sizesOfLists_);
}

QWidget* SelectionLists::AvailableView() const {
    return otherView_ != nullptr && otherView_->isVisibleTo(this) ? otherView_ : ui_->lstAvailable;
}

void SelectionLists::FocusFilter() {
    ui_->txtFilter->setFocus(Qt::ShortcutFocusReason);
    ui_->txtFilter->selectAll();
}

void SelectionLists::CopyHighlighted() {
    (ui_->lstSelected->hasFocus() ? ui_->lstSelected : ui_->lstAvailable)->CopyHighlighted();
}

void SelectionLists::HighlightAll() {
    (ui_->lstSelected->hasFocus() ? ui_->lstSelected : ui_->lstAvailable)->selectAll();
}

void SelectionLists::ShowCount(const KeyedList& list) {
    ShowMessage(QLocale().toString(list.Items().Count()), MessageType::Ok, MessageIcon::Note, {}, false);
}

namespace {

/// Deletes the popups that an owner has shown before. A popup can't delete itself when it closes: an action of it may
/// still be running and would return into the deleted object.
void ForgetPopups(QWidget* owner, const QString& menuName) {
    const QList<QMenu*> shownBefore = owner->findChildren<QMenu*>(menuName, Qt::FindDirectChildrenOnly);
    for (QMenu* menu : shownBefore) {
        menu->setObjectName({});
        const QList<QAction*> actions = menu->actions();
        for (QAction* action : actions)
            action->setObjectName({});
        menu->deleteLater();
    }
}

} // namespace

QMenu* ShowPopup(QWidget* owner, const QString& menuName, const QPoint& globalPosition,
                 const QList<PopupEntry>& entries) {
    ForgetPopups(owner, menuName);
    auto* menu = new QMenu(owner);
    menu->setObjectName(menuName);
    menu->setToolTipsVisible(true);
    for (const PopupEntry& entry : entries) {
        if (entry.key == nullptr) {
            menu->addSeparator();
            continue;
        }
        QAction* action = menu->addAction(GetText(QString::fromLatin1(entry.key)));
        action->setObjectName(menuName + QLatin1Char('_') + QString::number(entry.index));
        action->setEnabled(entry.action && entry.enabled);
        if (entry.action)
            QObject::connect(action, &QAction::triggered, owner, entry.action);
        else
            action->setToolTip(GetText(QStringLiteral("TS_NotYetAvailable")));
        if (entry.action && !entry.enabled && entry.whyNot) action->setToolTip(GetText(QLatin1String(entry.whyNot)));
    }
    menu->popup(globalPosition);
    return menu;
}

QSet<QString> KeysOf(const std::vector<KeyedItem>& items) {
    QSet<QString> keys;
    keys.reserve(static_cast<qsizetype>(items.size()));
    for (const KeyedItem& item : items)
        keys.insert(item.key);
    return keys;
}

QColor GlobalItemColor() {
    return ShowGlobalColor ? theme::TextColor(ColorFromNumber(GlobalColor)) : QColor();
}

} // namespace tessaro
