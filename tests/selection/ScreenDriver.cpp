#include "selection/ScreenDriver.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>

namespace tessaro::test {

void DragHighlighted(KeyedList& from, const QPoint& start, KeyedList& to) {
    // The drag runs a loop of its own; what the window system would do is done from within it.
    QTimer::singleShot(0, &to, [&to] {
        auto* drag = to.window()->findChild<QDrag*>();
        if (drag != nullptr) {
            const QPoint place = to.viewport()->rect().center();
            QDragEnterEvent enter(place, Qt::CopyAction, drag->mimeData(), Qt::LeftButton, {});
            QApplication::sendEvent(to.viewport(), &enter);
            if (enter.isAccepted()) {
                QDropEvent drop(place, Qt::CopyAction, drag->mimeData(), Qt::LeftButton, {});
                QApplication::sendEvent(to.viewport(), &drop);
            }
        }
        QDrag::cancel();
    });
    const QPoint far = start + QPoint(0, 4 * QApplication::startDragDistance());
    QTest::mousePress(from.viewport(), Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, far, from.viewport()->mapToGlobal(far), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(from.viewport(), &move);
    QApplication::sendEvent(from.viewport(), &move);
    QTest::mouseRelease(from.viewport(), Qt::LeftButton, {}, far);
}

} // namespace tessaro::test
