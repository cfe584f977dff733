#pragma once

#include <QTabBar>

namespace tessaro {

/// The strip of classification views: flat labels, the chosen one underlined in the accent. Arrow keys walk it, and it
/// scrolls where it doesn't fit.
class OptionStrip final : public QTabBar {
    Q_OBJECT

  public:
    explicit OptionStrip(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
};

} // namespace tessaro
