#pragma once

#include <QApplication>

#include <functional>

namespace tessaro {

/// A QApplication that catches what an event handler throws: a row that can't be read from a damaged file ends the
/// handling of that event, not the program.
class Application final : public QApplication {
    Q_OBJECT

  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

/// Delivers an event by `deliver`; an exception is reported under the receiver's name or class, and the result is
/// False.
bool DeliverGuarded(const QObject& receiver, const std::function<bool()>& deliver);

} // namespace tessaro
