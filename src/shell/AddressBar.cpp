#include "shell/AddressBar.h"

#include "controls/Captions.h"
#include "controls/Theme.h"
#include "controls/TintedIcon.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QToolButton>

namespace tessaro {

AddressBar::AddressBar(QWidget* parent)
    : QWidget(parent), lblAddress_(new QLabel(this)), cmbAddress_(new QComboBox(this)), picGo_(new QToolButton(this)) {
    lblAddress_->setObjectName(QStringLiteral("lblAddress"));
    cmbAddress_->setObjectName(QStringLiteral("cmbAddress"));
    picGo_->setObjectName(QStringLiteral("picGo"));
    lblAddress_->setBuddy(cmbAddress_);
    cmbAddress_->setEditable(true);
    cmbAddress_->setInsertPolicy(QComboBox::NoInsert);
    cmbAddress_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cmbAddress_->setMinimumContentsLength(24);
    cmbAddress_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbAddress_->completer()->setFilterMode(Qt::MatchContains);
    cmbAddress_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    cmbAddress_->completer()->popup()->installEventFilter(this);
    cmbAddress_->installEventFilter(this);
    cmbAddress_->lineEdit()->installEventFilter(this);
    picGo_->setAutoRaise(true);
    picGo_->setFocusPolicy(Qt::TabFocus);
    picGo_->setIconSize({theme::kIconSize, theme::kIconSize});
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kGrid);
    row->addWidget(lblAddress_);
    row->addWidget(cmbAddress_, 1);
    row->addWidget(picGo_);
    connect(cmbAddress_, &QComboBox::activated, this, [this] {
        if (!suppressed_) Q_EMIT Entered();
    });
    connect(picGo_, &QToolButton::clicked, this, &AddressBar::GoPressed);
    auto* toField = new QShortcut(QKeySequence(QStringLiteral("Ctrl+L")), this);
    connect(toField, &QShortcut::activated, this, [this] {
        cmbAddress_->setFocus();
        cmbAddress_->lineEdit()->selectAll();
    });
}

QString AddressBar::Text() const {
    return cmbAddress_->currentText();
}

QStringList AddressBar::Items() const {
    QStringList items;
    for (int i = 0; i < cmbAddress_->count(); ++i)
        items << cmbAddress_->itemText(i);
    return items;
}

int AddressBar::Find(const QString& text) const {
    for (int i = 0; i < cmbAddress_->count(); ++i)
        if (cmbAddress_->itemText(i).compare(text, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

void AddressBar::SetItems(const QStringList& items) {
    const QScopedValueRollback suppress(suppressed_, true);
    cmbAddress_->clear();
    for (const QString& item : items)
        AddItem(item);
}

void AddressBar::AddItem(const QString& item) {
    const QScopedValueRollback suppress(suppressed_, true);
    const QString shown = Text();
    const int current = cmbAddress_->currentIndex();
    cmbAddress_->addItem(item, 0);
    // A combo box selects the first item that is added to an empty list.
    cmbAddress_->setCurrentIndex(current);
    cmbAddress_->setEditText(shown);
}

void AddressBar::RemoveItem(const QString& item) {
    const QScopedValueRollback suppress(suppressed_, true);
    const QString shown = Text();
    const int place = Find(item);
    if (place < 0) return;
    cmbAddress_->removeItem(place);
    cmbAddress_->setCurrentIndex(Find(shown));
    cmbAddress_->setEditText(shown);
}

void AddressBar::Show(const QString& text) {
    const QScopedValueRollback suppress(suppressed_, true);
    const int place = Find(text);
    cmbAddress_->setCurrentIndex(place);
    if (place < 0) cmbAddress_->setEditText(text);
    cmbAddress_->lineEdit()->setCursorPosition(0);
}

void AddressBar::ShowAsItem(const QString& text) {
    if (Find(text) < 0) AddItem(text);
    Show(text);
}

void AddressBar::SetCaptions() {
    SetCaption(lblAddress_, QStringLiteral("ADDRESS"));
    SetToolTip(picGo_, QStringLiteral("ADD_GO"));
    picGo_->setAccessibleName(PlainText(QStringLiteral("ADD_GO")));
    cmbAddress_->setAccessibleName(PlainText(QStringLiteral("ADDRESS")));
    cmbAddress_->setToolTip(QStringLiteral("Ctrl+L"));
    cmbAddress_->setFont(LanguageFont());
}

void AddressBar::SetPictures() {
    picGo_->setIcon(theme::Icon(QStringLiteral("MAIN_go.gif")));
}

bool AddressBar::eventFilter(QObject* watched, QEvent* event) {
    // The wheel over the closed list would select, and so open, one database after the other.
    if (watched == cmbAddress_ && event->type() == QEvent::Wheel) return true;
    if (event->type() == QEvent::KeyPress && watched == cmbAddress_->completer()->popup() &&
        SuggestionKey(static_cast<const QKeyEvent&>(*event)))
        return true;
    // The combo box has the focus and calls its field directly, past the field's event filters.
    const bool ofField = watched == cmbAddress_ || watched == cmbAddress_->lineEdit();
    if (ofField && event->type() == QEvent::KeyPress && FieldKey(static_cast<const QKeyEvent&>(*event))) return true;
    // When the focus leaves, the combo box selects the item whose text stands in the field. That is no wish to open it.
    if (ofField && event->type() == QEvent::FocusOut) {
        const QScopedValueRollback suppress(suppressed_, true);
        watched->event(event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/// Enter opens what was typed, unless a suggestion is highlighted.
bool AddressBar::SuggestionKey(const QKeyEvent& event) {
    QAbstractItemView* suggestions = cmbAddress_->completer()->popup();
    if (suggestions->currentIndex().isValid()) return false;
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
    suggestions->hide();
    return FieldKey(event);
}

bool AddressBar::FieldKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        if (!suppressed_) Q_EMIT Entered();
        return true;
    }
    // By default the arrow keys select the next item, which would open a database at each key. Here they open the list.
    if (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up) {
        cmbAddress_->showPopup();
        return true;
    }
    return false;
}

} // namespace tessaro
