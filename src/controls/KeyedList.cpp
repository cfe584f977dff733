#include "controls/KeyedList.h"

#include "controls/EmptyHint.h"
#include "controls/SharedWidths.h"
#include "controls/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

namespace tessaro {

KeyedList::KeyedList(QWidget* parent) : QTreeView(parent), model_(new KeyedListModel(this)) {
    setModel(model_);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(false);
    setItemsExpandable(false);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setDragDropMode(DragDrop);
    setIconSize({16, 16});
    setFrameShape(QFrame::NoFrame);
    setTabKeyNavigation(false);
    header()->setSectionsClickable(true);
    header()->setHighlightSections(false);
    header()->setSortIndicatorShown(true);
    header()->setSortIndicator(0, Qt::AscendingOrder);
    header()->setStretchLastSection(true);
    header()->setMinimumSectionSize(4 * theme::kGrid);
    connect(header(), &QHeaderView::sectionResized, this, [this] {
        if (QApplication::mouseButtons().testFlag(Qt::LeftButton) && header()->underMouse()) widthsAreTheUsers_ = true;
    });
    connect(header(), &QHeaderView::sectionClicked, this, &KeyedList::SortOn);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        Q_EMIT HighlightChanged();
        Q_EMIT SortChanged();
    });
    connect(model_, &KeyedListModel::CountChanged, this, [this] {
        if (!weights_.isEmpty()) ShareWidth();
    });
    connect(this, &KeyedList::SortChanged, this, [this] {
        const int column = model_->SortColumn();
        header()->setSortIndicator(column, model_->SortOrder());
    });
}

void KeyedList::SetColumns(const QStringList& heads) {
    model_->SetColumns(heads);
    widthsAreTheUsers_ = false;
    ShareWidth();
}

void KeyedList::SetColumnWeights(const QList<double>& weights) {
    weights_ = weights;
    ShareWidth();
}

void KeyedList::ShareWidth() {
    const int columns = model_->columnCount();
    if (columns < 2 || widthsAreTheUsers_) return;
    const int width = viewport()->width();
    if (weights_.size() == columns && model_->Count() > 0) return ShareWidthByTexts();
    // The first column names the thing and gets half; the others share the rest.
    const int first = columns == 2 ? width * 2 / 3 : width / 2;
    header()->resizeSection(0, first);
    for (int column = 1; column < columns; ++column)
        header()->resizeSection(column, (width - first) / (columns - 1));
}

void KeyedList::ShareWidthByTexts() {
    const int columns = model_->columnCount();
    std::vector<LongestTexts> texts(static_cast<std::size_t>(columns));
    for (const KeyedItem& item : model_->Items())
        for (int column = 0; column < columns; ++column)
            texts[static_cast<std::size_t>(column)].Take(item.cells.value(column));
    std::vector<ColumnWish> wishes;
    for (int column = 0; column < columns; ++column) {
        const bool hasIcon = !model_->index(0, column).data(Qt::DecorationRole).isNull();
        const int wanted = texts[static_cast<std::size_t>(column)].Width(fontMetrics()) + 2 * theme::kGrid +
                           (hasIcon ? iconSize().width() + theme::kGrid : 0);
        const int head = header()->sectionSizeHint(column);
        wishes.push_back({std::max(wanted, head), head, weights_[column]});
    }
    const std::vector<int> widths = SharedWidths(wishes, viewport()->width());
    for (int column = 0; column < columns; ++column)
        header()->resizeSection(column, widths[static_cast<std::size_t>(column)]);
}

void KeyedList::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    ShareWidth();
}

void KeyedList::SetEmptyHint(const QString& hint, const QString& noMatchHint) {
    emptyHint_ = hint;
    noMatchHint_ = noMatchHint;
    viewport()->update();
}

QString KeyedList::HintShown() const {
    if (model_->rowCount() > 0) return {};
    return model_->Count() > 0 ? noMatchHint_ : emptyHint_;
}

std::vector<int> KeyedList::HighlightedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::vector<KeyedItem> KeyedList::HighlightedItems() const {
    std::vector<KeyedItem> items;
    for (const int row : HighlightedRows())
        items.push_back(model_->ItemAt(row));
    return items;
}

QString KeyedList::CurrentKey() const {
    const QModelIndex current = currentIndex();
    return current.isValid() ? model_->ItemAt(current.row()).key : QString();
}

void KeyedList::HighlightKey(const QString& key) {
    const int row = model_->RowOfKey(key);
    if (row < 0) return;
    const QModelIndex index = model_->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void KeyedList::SortOn(int column) {
    const bool again = column == model_->SortColumn() && model_->SortOrder() == Qt::AscendingOrder;
    model_->sort(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
    Q_EMIT SortChanged();
}

void KeyedList::CopyHighlighted() const {
    const std::vector<int> rows = HighlightedRows();
    if (!rows.empty()) QApplication::clipboard()->setText(model_->TextOfRows(rows));
}

void KeyedList::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        // Without a handler, Return goes on to the form's default button.
        if (!isSignalConnected(QMetaMethod::fromSignal(&KeyedList::EnterPressed)) || HighlightedRows().empty())
            return event->ignore();
        Q_EMIT EnterPressed();
    } else if (key == Qt::Key_Delete && !control) {
        Q_EMIT DeletePressed();
    } else if (event->matches(QKeySequence::Copy)) {
        CopyHighlighted();
    } else if ((key == Qt::Key_Right || key == Qt::Key_Left) && (control || plainArrowsLeave_)) {
        Q_EMIT LeaveTowards(key == Qt::Key_Right ? Qt::RightEdge : Qt::LeftEdge);
    } else if (key == Qt::Key_Menu) {
        const QRect place = visualRect(currentIndex());
        Q_EMIT PopupRequested(viewport()->mapToGlobal(place.isValid() ? place.center() : QPoint(8, 8)));
    } else {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
}

void KeyedList::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    PaintEmptyHint(viewport(), HintShown());
}

void KeyedList::contextMenuEvent(QContextMenuEvent* event) {
    Q_EMIT PopupRequested(event->globalPos());
    event->accept();
}

void KeyedList::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) {
        Q_EMIT ItemActivated(model_->ItemAt(index.row()).key);
        event->accept();
        return;
    }
    QTreeView::mouseDoubleClickEvent(event);
}

KeyedList* KeyedList::SourceOf(const QDropEvent* event) const {
    const QObject* source = KeyedListModel::SourceOf(*event->mimeData());
    for (KeyedList* list : dropSources_)
        if (list && source == &list->Items()) return list;
    return nullptr;
}

void KeyedList::dragEnterEvent(QDragEnterEvent* event) {
    if (Accepts(event))
        event->acceptProposedAction();
    else
        event->ignore();
}

void KeyedList::dragMoveEvent(QDragMoveEvent* event) {
    if (Accepts(event))
        event->acceptProposedAction();
    else
        event->ignore();
}

void KeyedList::dropEvent(QDropEvent* event) {
    if (!Accepts(event)) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    Q_EMIT ItemsDropped();
    Q_EMIT ItemsDroppedFrom(SourceOf(event), indexAt(event->position().toPoint()).row());
}

void KeyedList::startDrag(Qt::DropActions /*actions*/) {
    const QModelIndexList highlighted = selectionModel()->selectedRows();
    if (highlighted.isEmpty()) return;
    auto* drag = new QDrag(this);
    drag->setMimeData(model_->mimeData(highlighted));
    const QString text = highlighted.size() == 1 ? model_->ItemAt(highlighted.first().row()).cells.value(0)
                                                 : QLocale().toString(highlighted.size());
    const QFontMetrics metrics(font());
    const QString shown = metrics.elidedText(text, Qt::ElideRight, 240);
    QPixmap picture(metrics.horizontalAdvance(shown) + 2 * theme::kGrid, metrics.height() + theme::kGrid);
    picture.fill(palette().color(QPalette::Highlight));
    QPainter painter(&picture);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(picture.rect(), Qt::AlignCenter, shown);
    painter.end();
    drag->setPixmap(picture);
    drag->setHotSpot({-theme::kGrid, -theme::kGrid});
    drag->exec(Qt::CopyAction);
}

void KeyedList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (current.isValid()) Q_EMIT CurrentTextChanged(model_->ItemAt(current.row()).cells.join(QStringLiteral(" - ")));
}

void KeyedList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    Q_EMIT HighlightChanged();
}

} // namespace tessaro
