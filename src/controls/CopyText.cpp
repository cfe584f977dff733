#include "controls/CopyText.h"

#include "controls/DataTable.h"
#include "controls/KeyedList.h"
#include "controls/KeyedTree.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextEdit>

#include <algorithm>

namespace tessaro {

namespace {

/// The rows of a choice, from top to bottom as they are shown.
QModelIndexList RowsOf(const QAbstractItemView& view) {
    QModelIndexList rows;
    const QModelIndexList chosen = view.selectionModel()->selectedIndexes();
    for (const QModelIndex& index : chosen) {
        const QModelIndex row = index.siblingAtColumn(0);
        if (!rows.contains(row)) rows << row;
    }
    if (rows.isEmpty() && view.currentIndex().isValid()) rows << view.currentIndex().siblingAtColumn(0);
    std::sort(rows.begin(), rows.end(), [&view](const QModelIndex& a, const QModelIndex& b) {
        return view.visualRect(a).top() < view.visualRect(b).top();
    });
    return rows;
}

/// The text of a cell; for a picture its accessible name.
QString TextOf(const QModelIndex& cell) {
    const QString text = cell.data().toString();
    return (text.isEmpty() ? cell.data(Qt::AccessibleTextRole).toString() : text).simplified();
}

/// Handles the key before the view, which would copy only one cell.
class CopyKey final : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
            return false;
        auto* view = qobject_cast<QAbstractItemView*>(watched);
        return view && CopyFromControl(view);
    }
};

} // namespace

QString ChosenText(const QAbstractItemView& view) {
    if (view.model() == nullptr || view.selectionModel() == nullptr) return {};
    QStringList lines;
    const QModelIndexList rows = RowsOf(view);
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (int column = 0; column < view.model()->columnCount(row.parent()); ++column)
            cells << TextOf(row.siblingAtColumn(column));
        lines << cells.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n'));
}

bool CopyFromControl(QWidget* control) {
    if (auto* field = qobject_cast<QLineEdit*>(control)) {
        field->copy();
        return true;
    }
    if (auto* text = qobject_cast<QTextEdit*>(control)) {
        text->copy();
        return true;
    }
    if (auto* list = qobject_cast<KeyedList*>(control)) {
        list->CopyHighlighted();
        return true;
    }
    if (auto* tree = qobject_cast<KeyedTree*>(control)) {
        tree->CopyBranch();
        return true;
    }
    const auto* view = qobject_cast<QAbstractItemView*>(control);
    if (view == nullptr || qobject_cast<DataTable*>(control) != nullptr) return false;
    const QString text = ChosenText(*view);
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
    return true;
}

void CopyByKey(QObject& owner) {
    QCoreApplication::instance()->installEventFilter(new CopyKey(&owner));
}

} // namespace tessaro
