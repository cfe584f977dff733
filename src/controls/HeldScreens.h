#pragma once

#include <QObject>

class QWidget;

namespace tessaro {

/// While it lives, a widget and what is in it don't paint, and timers wait: each of them may read rows, which can't be
/// while a statement is at work. Other windows paint.
class HeldScreens final : public QObject {
  public:
    /// The widget must live as long.
    explicit HeldScreens(QWidget& screens);
    ~HeldScreens() override;

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;

  private:
    QWidget& screens_;
};

} // namespace tessaro
