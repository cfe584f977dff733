#include "controls/KeyedTree.h"

#include "controls/EmptyHint.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>

namespace tessaro {

KeyedTree::KeyedTree(QWidget* parent) : QTreeView(parent), model_(new KeyedTreeModel(this)) {
    setModel(model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    setIconSize({16, 16});
    setExpandsOnDoubleClick(true);
    setVerticalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
}

QString KeyedTree::CurrentKey() const {
    return model_->KeyAt(currentIndex());
}

void KeyedTree::ShowKey(const QString& key) {
    quiet_ = true;
    setCurrentIndex(model_->IndexOfKey(key));
    quiet_ = false;
}

void KeyedTree::SetEmptyHint(const QString& hint) {
    emptyHint_ = hint;
    viewport()->update();
}

QString KeyedTree::BranchText() const {
    QStringList lines;
    if (currentIndex().isValid()) AppendBranch(currentIndex(), 0, lines);
    return lines.join(QLatin1Char('\n'));
}

void KeyedTree::AppendBranch(const QModelIndex& node, int level, QStringList& lines) const {
    lines << QString(level, QLatin1Char('\t')) + node.data().toString().simplified();
    if (!isExpanded(node)) return;
    for (int row = 0; row < model_->rowCount(node); ++row)
        AppendBranch(model_->index(row, 0, node), level + 1, lines);
}

void KeyedTree::CopyBranch() const {
    const QString text = BranchText();
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

void KeyedTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (quiet_ || !current.isValid()) return;
    toldOnPress_ = true;
    Q_EMIT NodeChosen(model_->KeyAt(current));
    if (collapseOthers_) CollapseOthers(model_->IndexOfKey(CurrentKey()));
}

void KeyedTree::CollapseOthers(const QModelIndex& chosen) {
    for (QModelIndex node = chosen; node.isValid(); node = node.parent()) {
        const QModelIndex above = node.parent();
        for (int row = 0; row < model_->rowCount(above); ++row)
            if (const QModelIndex other = model_->index(row, 0, above); row != node.row() && isExpanded(other))
                collapse(other);
    }
}

void KeyedTree::mousePressEvent(QMouseEvent* event) {
    toldOnPress_ = false;
    QTreeView::mousePressEvent(event);
}

void KeyedTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool again = event->button() == Qt::LeftButton && !toldOnPress_ && index.isValid() &&
                       index == currentIndex() && visualRect(index).contains(event->position().toPoint());
    if (again) Q_EMIT NodeChosen(model_->KeyAt(index));
}

void KeyedTree::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT EnterPressed();
        event->accept();
    } else if (event->matches(QKeySequence::Copy)) {
        CopyBranch();
        event->accept();
    } else if (event->key() == Qt::Key_Menu) {
        Q_EMIT PopupRequested(viewport()->mapToGlobal(visualRect(currentIndex()).center()));
        event->accept();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void KeyedTree::contextMenuEvent(QContextMenuEvent* event) {
    Q_EMIT PopupRequested(event->globalPos());
    event->accept();
}

void KeyedTree::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (model_->rowCount() == 0) PaintEmptyHint(viewport(), emptyHint_);
}

} // namespace tessaro
