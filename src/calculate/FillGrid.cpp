#include "calculate/FillGrid.h"

#include "controls/FillDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

namespace tessaro {

namespace {

constexpr int kLeastColumn = 120; ///< pixels

} // namespace

FillGrid::FillGrid(QWidget* parent) : QTableWidget(parent) {
    setItemDelegate(new FillDelegate(this));
    setEditTriggers(EditKeyPressed | AnyKeyPressed | DoubleClicked);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(kLeastColumn);
    horizontalHeader()->setHighlightSections(false);
    connect(itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            [this](QWidget*, QAbstractItemDelegate::EndEditHint hint) {
                const bool done = hint == QAbstractItemDelegate::SubmitModelCache;
                if (done && currentRow() + 1 < rowCount()) setCurrentCell(currentRow() + 1, currentColumn());
            });
}

void FillGrid::SetHeads(const QStringList& heads) {
    setColumnCount(static_cast<int>(heads.size()));
    setHorizontalHeaderLabels(heads);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 0; column < columnCount(); ++column)
        horizontalHeaderItem(column)->setTextAlignment(
            (column == 0 ? Qt::AlignLeading : Qt::AlignRight | Qt::AlignAbsolute) | Qt::AlignVCenter);
}

void FillGrid::SetLabel(int row, int column, const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setToolTip(text);
    setItem(row, column, item);
}

void FillGrid::SetField(int row, int column, const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    setItem(row, column, item);
}

QString FillGrid::TextOf(int row, int column) const {
    const QTableWidgetItem* cell = item(row, column);
    if (!cell) return {};
    const auto* typed = findChild<QLineEdit*>(QStringLiteral("txtFill"));
    const bool open = typed && state() == EditingState && row == currentRow() && column == currentColumn();
    return open ? typed->text() : cell->text();
}

void FillGrid::EndTyping() {
    if (auto* typed = findChild<QLineEdit*>(QStringLiteral("txtFill")); typed && state() == EditingState) {
        commitData(typed);
        closeEditor(typed, QAbstractItemDelegate::NoHint);
    }
}

// Return in a cell closes it; elsewhere it is the wizard's.
void FillGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->setAccepted(state() == EditingState);
    else
        QTableWidget::keyPressEvent(event);
}

} // namespace tessaro
