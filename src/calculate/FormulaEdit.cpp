#include "calculate/FormulaEdit.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextBlock>
#include <QTextOption>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kShortestName = 2; ///< letters from which names are offered
constexpr int kLeastPopup = 280; ///< pixels

/// Behind a reference in Arabic letters, so that the numbers and operators after it still run from left to right.
constexpr QChar kLeftToRightMark(0x200E);
const QString kMarkedBrace = QLatin1Char('}') + QString(kLeftToRightMark);

bool IsOperator(QChar c) {
    return QStringLiteral("{}+*/^").contains(c) || c == kLeftToRightMark;
}

bool RunsFromRight(QChar letter) {
    return letter.direction() == QChar::DirR || letter.direction() == QChar::DirAL;
}

} // namespace

FormulaEdit::FormulaEdit(QWidget* parent) : QPlainTextEdit(parent), completer_(new QCompleter(this)) {
    setTabChangesFocus(true);
    QTextOption leftToRight(Qt::AlignLeft | Qt::AlignAbsolute);
    leftToRight.setTextDirection(Qt::LeftToRight);
    leftToRight.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDefaultTextOption(leftToRight);
    completer_->setWidget(this);
    completer_->setModel(new QStringListModel(completer_));
    completer_->setCaseSensitivity(Qt::CaseInsensitive);
    completer_->setFilterMode(Qt::MatchContains);
    completer_->popup()->setObjectName(QStringLiteral("lstNames"));
    connect(this, &QPlainTextEdit::textChanged, this, &FormulaEdit::MarkBraces);
    connect(completer_, qOverload<const QString&>(&QCompleter::activated), this, &FormulaEdit::TakeName);
}

void FormulaEdit::SetReferences(const QStringList& references) {
    static_cast<QStringListModel*>(completer_->model())->setStringList(references);
}

QString FormulaEdit::Formula() const {
    return toPlainText().replace(kMarkedBrace, QStringLiteral("}"));
}

void FormulaEdit::MarkBraces() {
    const QString text = toPlainText();
    if (std::none_of(text.begin(), text.end(), RunsFromRight)) return;
    for (qsizetype at = text.lastIndexOf(QLatin1Char('}')); at >= 0;
         at = at > 0 ? text.lastIndexOf(QLatin1Char('}'), at - 1) : -1) {
        if (at + 1 < text.size() && text.at(at + 1) == kLeftToRightMark) continue;
        QTextCursor cursor(document());
        cursor.joinPreviousEditBlock();
        cursor.setPosition(static_cast<int>(at) + 1);
        cursor.insertText(kLeftToRightMark);
        cursor.endEditBlock();
    }
}

bool FormulaEdit::DeletesPastMark(int key) {
    QTextCursor cursor = textCursor();
    const bool back = key == Qt::Key_Backspace;
    if (cursor.hasSelection() || (!back && key != Qt::Key_Delete)) return false;
    const QString text = toPlainText();
    const int next = cursor.position() - (back ? 1 : 0);
    if (next < 0 || next >= text.size() || text.at(next) != kLeftToRightMark) return false;
    const int end = back ? cursor.position() - 2 : cursor.position() + 2;
    cursor.setPosition(std::clamp(end, 0, static_cast<int>(text.size())), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return true;
}

int FormulaEdit::PlaceOf(int position) const {
    const QString text = toPlainText();
    for (qsizetype at = text.indexOf(kMarkedBrace); at >= 0 && at < position; at = text.indexOf(kMarkedBrace, at + 2))
        ++position;
    return position;
}

void FormulaEdit::InsertAtCaret(const QString& text) {
    textCursor().insertText(text);
    setFocus(Qt::OtherFocusReason);
}

void FormulaEdit::MarkFault(int position, int length) {
    QList<QTextEdit::ExtraSelection> marks;
    const int end = document()->characterCount() - 1;
    if (position >= 0 && end > 0) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(document());
        mark.cursor.setPosition(std::min(PlaceOf(position), end - 1));
        mark.cursor.setPosition(std::min(PlaceOf(position + std::max(length, 1)), end), QTextCursor::KeepAnchor);
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(Qt::red);
        mark.format.setFontUnderline(true);
        marks << mark;
    }
    setExtraSelections(marks);
}

// The list takes the keys that choose from it; Return otherwise is the wizard's.
void FormulaEdit::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool chooses = isReturn || event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab;
    if (isReturn || (chooses && completer_->popup()->isVisible())) return event->ignore();
    if (!DeletesPastMark(event->key())) QPlainTextEdit::keyPressEvent(event);
    const bool isText = !event->text().isEmpty() && event->text().at(0).isPrint();
    if (isText || event->key() == Qt::Key_Backspace) OfferNames();
}

void FormulaEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) completer_->popup()->hide();
    QPlainTextEdit::focusOutEvent(event);
}

int FormulaEdit::StartOfName() const {
    const QString text = toPlainText();
    int start = textCursor().position();
    while (start > 0 && !IsOperator(text.at(start - 1)))
        --start;
    while (start < textCursor().position() && text.at(start).isSpace())
        ++start;
    return start;
}

void FormulaEdit::OfferNames() {
    const QString name = toPlainText().mid(StartOfName(), textCursor().position() - StartOfName());
    if (name.trimmed().size() < kShortestName || name.contains(QLatin1Char('~'))) return completer_->popup()->hide();
    completer_->setCompletionPrefix(name.trimmed());
    if (completer_->completionCount() == 0) return completer_->popup()->hide();
    completer_->popup()->setCurrentIndex(completer_->completionModel()->index(0, 0));
    QRect place = cursorRect();
    place.setWidth(std::max(kLeastPopup, completer_->popup()->sizeHintForColumn(0) +
                                             completer_->popup()->verticalScrollBar()->sizeHint().width()));
    completer_->complete(place);
}

void FormulaEdit::TakeName(const QString& reference) {
    const QString text = toPlainText();
    int start = StartOfName();
    // A brace that was typed for the reference goes with the name.
    const int before = static_cast<int>(text.left(start).trimmed().size()) - 1;
    if (before >= 0 && text.at(before) == QLatin1Char('{') && text.mid(before + 1, start - before - 1).isEmpty())
        start = before;
    QTextCursor cursor = textCursor();
    const int end = cursor.position();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(reference);
    setTextCursor(cursor);
}

} // namespace tessaro
