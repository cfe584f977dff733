#pragma once

#include <QApplication>

#include <functional>

namespace tessaro {

/// The application of the toolkit, which outlives what an event handler throws: a row that can't be read from a damaged
/// file ends the work on that event, not the program.
class Application final : public QApplication {
    Q_OBJECT

  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

/// Runs the delivery of an event; what it throws is reported under the receiver's name or class, and gives False.
bool DeliverGuarded(const QObject& receiver, const std::function<bool()>& deliver);

} // namespace tessaro
