#include "shell/StopKey.h"

#include <QApplication>
#include <QKeyEvent>

namespace tessaro {

namespace {

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

bool StopKey::IsAsked() {
    qApp->installEventFilter(this);
    QApplication::processEvents();
    qApp->removeEventFilter(this);
    return asked_;
}

bool StopKey::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (!IsInput(type)) return false;
    const bool isKey = type == QEvent::KeyPress || type == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) asked_ = true;
    if (type == QEvent::MouseButtonPress && watched == button_) asked_ = true;
    // A window passes the mouse on to its widgets by itself, and the button is one of them.
    if (watched->isWindowType() && type != QEvent::Close) return false;
    event->setAccepted(type != QEvent::Close); // a window that is to close stays
    return true;
}

} // namespace tessaro
