#pragma once

#include <QLabel>

namespace tessaro {

/// A line of text that ends in "…" where the room is too small for it, and shows the whole text as its tool tip then.
class ElidedLabel final : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    [[nodiscard]] QString Shown() const;
};

} // namespace tessaro
