#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace tessaro {

/// Lets the windows paint during long work, and hears whether the user wants it to end: Escape, or a click on the stop
/// button. All other input made meanwhile is dropped, so that it hits nothing that the work has changed.
class StopKey final : public QObject {
    Q_OBJECT

  public:
    explicit StopKey(QWidget* button, QObject* parent = nullptr) : QObject(parent), button_(button) {}

    /// The beginning of a piece of work.
    void Start() { asked_ = false; }
    /// True when the user has asked since Start.
    [[nodiscard]] bool IsAsked();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QPointer<QWidget> button_;
    bool asked_ = false;
};

} // namespace tessaro
