#include "selection/ScreenDriver.h"

#include <QDropEvent>
#include <QMimeData>

namespace tessaro::test {

bool DropHighlighted(const KeyedList& from, KeyedList& to) {
    const std::unique_ptr<QMimeData> data(from.model()->mimeData(from.selectionModel()->selectedRows()));
    const QPoint place = to.viewport()->rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(to.viewport(), &enter);
    QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    if (enter.isAccepted()) QApplication::sendEvent(to.viewport(), &drop);
    return enter.isAccepted();
}

} // namespace tessaro::test
