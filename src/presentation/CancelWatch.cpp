#include "presentation/CancelWatch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace tessaro {

namespace {

constexpr qint64 kBetweenLooks = 40; ///< milliseconds

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

CancelWatch::CancelWatch(QWidget& window, const QWidget* button) : window_(window), button_(button) {
    sinceLook_.start();
    qApp->installEventFilter(this);
}

CancelWatch::~CancelWatch() {
    qApp->removeEventFilter(this);
}

bool CancelWatch::Asked() {
    if (!asked_ && sinceLook_.elapsed() >= kBetweenLooks) {
        QCoreApplication::processEvents();
        sinceLook_.restart();
    }
    return asked_;
}

bool CancelWatch::eventFilter(QObject* target, QEvent* event) {
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != &window_) return false; // a question lies over the window
    if (event->type() == QEvent::Close && target == &window_) {
        event->ignore();
        return asked_ = true;
    }
    if (!IsInput(event->type())) return false;
    // Each event reaches the native window first and then a widget: only the second one counts.
    if (!target->isWidgetType()) return event->type() == QEvent::Shortcut;
    const bool escape = event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    asked_ |= escape || (event->type() == QEvent::MouseButtonRelease && target == button_);
    return true;
}

} // namespace tessaro
