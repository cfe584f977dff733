#pragma once

#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace tessaro {

/// Lets the user stop long work that holds up the windows. While it lives, Escape, the button (by mouse, touch or key)
/// and closing the window ask for that; all other input is dropped, so that it hits nothing that the work has changed.
/// A message that opens during the work gets its own input.
class CancelWatch final : public QObject {
  public:
    /// `window` stays open when the user closes it. Both are borrowed; the button may be disabled.
    CancelWatch(QWidget& window, const QWidget* button);
    ~CancelWatch() override;

    /// Lets the windows paint and takes the input that has come, at once and then every 40 milliseconds at most, so
    /// that it may be called for every row. True once the user has asked to stop.
    [[nodiscard]] bool Asked();

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;

  private:
    [[nodiscard]] bool MessageIsOpen() const;
    [[nodiscard]] bool Asks(const QObject* target, const QEvent& event) const;

    QWidget& window_;
    const QWidget* button_;
    const QWidget* modalBefore_; ///< the modal window that the work began in
    QElapsedTimer sinceLook_;
    bool asked_ = false;
};

} // namespace tessaro
