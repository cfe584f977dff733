#include "controls/CancelWatch.h"

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
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool PressesButton(const QKeyEvent& event) {
    const int key = event.key();
    return !event.isAutoRepeat() && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
}

} // namespace

CancelWatch::CancelWatch(QWidget& window, const QWidget* button)
    : window_(window), button_(button), modalBefore_(QApplication::activeModalWidget()) {
    qApp->installEventFilter(this);
}

CancelWatch::~CancelWatch() {
    qApp->removeEventFilter(this);
}

bool CancelWatch::Asked() {
    if (asked_ || (sinceLook_.isValid() && sinceLook_.elapsed() < kBetweenLooks)) return asked_;
    QCoreApplication::processEvents();
    sinceLook_.start();
    return asked_;
}

bool CancelWatch::MessageIsOpen() const {
    const QWidget* modal = QApplication::activeModalWidget();
    return modal && modal != modalBefore_ && modal != &window_;
}

bool CancelWatch::Asks(const QObject* target, const QEvent& event) const {
    switch (event.type()) {
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        return key.key() == Qt::Key_Escape || (target == button_ && PressesButton(key));
    }
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
        return target == button_;
    default:
        return false;
    }
}

bool CancelWatch::eventFilter(QObject* target, QEvent* event) {
    if (MessageIsOpen()) return false;
    if (event->type() == QEvent::Close && target->isWidgetType() && (target == &window_ || event->spontaneous())) {
        event->ignore();
        asked_ |= target == &window_;
        return true;
    }
    // Input comes to the window first, then to a widget in it; only the second is looked at.
    if (!IsInput(event->type()) || target->isWindowType()) return false;
    asked_ |= Asks(target, *event);
    event->accept(); // an accepted override makes the shortcut arrive as a key press
    return true;
}

} // namespace tessaro
