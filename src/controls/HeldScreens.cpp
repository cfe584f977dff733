#include "controls/HeldScreens.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace tessaro {

HeldScreens::HeldScreens(QWidget& screens) : screens_(screens) {
    screens_.setUpdatesEnabled(false);
    qApp->installEventFilter(this);
}

HeldScreens::~HeldScreens() {
    qApp->removeEventFilter(this);
    screens_.setUpdatesEnabled(true);
}

// A timer whose event is dropped fires again when its time is over once more, also one that fires once.
bool HeldScreens::eventFilter(QObject* /*target*/, QEvent* event) {
    return event->type() == QEvent::Timer;
}

} // namespace tessaro
