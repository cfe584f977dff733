#pragma once

#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace tessaro {

/// Lets the user give up long work that holds up a window: while it lives, a click on one button, Escape and the
/// window's close button ask for that, and all other input is dropped, so that nothing hits what lies behind.
class CancelWatch final : public QObject {
    Q_OBJECT

  public:
    CancelWatch(QWidget& window, const QWidget* button);
    ~CancelWatch() override;

    /// Takes what input has come meanwhile; True once the user has asked to stop. Costs next to nothing when called
    /// often.
    [[nodiscard]] bool Asked();

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;

  private:
    QWidget& window_;
    const QWidget* button_;
    QElapsedTimer sinceLook_;
    bool asked_ = false;
};

} // namespace tessaro
