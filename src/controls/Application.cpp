#include "controls/Application.h"

#include "session/ErrorSink.h"

namespace tessaro {

bool Application::notify(QObject* receiver, QEvent* event) {
    return DeliverGuarded(*receiver, [&] { return QApplication::notify(receiver, event); });
}

bool DeliverGuarded(const QObject& receiver, const std::function<bool()>& deliver) {
    // The handler may delete its receiver before it throws.
    const QString name = receiver.objectName();
    const char* const type = receiver.metaObject()->className();
    try {
        return deliver();
    } catch (const std::exception& error) {
        ReportError(error, name.isEmpty() ? QString::fromLatin1(type) : name);
        return false;
    }
}

} // namespace tessaro
