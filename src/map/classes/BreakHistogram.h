#pragma once

#include "map/classes/ClassBreaks.h"

#include <QColor>
#include <QWidget>

#include <vector>

namespace tessaro {

/// How the values spread over their range: a bar for each stretch in the colour of its class, and a line where a class
/// ends. Where bounds may be edited, lines are dragged, or chosen with Page Up and Page Down and moved with the arrow
/// keys. Small numbers are at the left in every language.
class BreakHistogram final : public QWidget {
    Q_OBJECT

  public:
    explicit BreakHistogram(QWidget* parent = nullptr);

    /// Values in ascending order.
    void SetValues(std::vector<double> ascending);
    /// The classes with a colour for each. Only with `movable` can their upper bounds be moved, by `step` with a key.
    void SetClasses(ClassBreaks classes, std::vector<QColor> colors, bool movable, double step);

    /// Where a value lies, in pixels from the left.
    [[nodiscard]] int PlaceOf(double value) const;
    [[nodiscard]] double ValueAt(int place) const;
    /// How many values each bar stands for.
    [[nodiscard]] const std::vector<int>& Bars() const { return bars_; }
    [[nodiscard]] QSize sizeHint() const override { return {480, 96}; }

  Q_SIGNALS:
    /// The user wants the upper bound of a class (from 0) to be this value.
    void BoundMoved(int row, double value);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void CountBars();
    void PaintBars(QPainter& painter) const;
    void PaintBounds(QPainter& painter) const;
    [[nodiscard]] int BoundNear(int place) const;
    [[nodiscard]] QRect Ground() const;
    [[nodiscard]] QColor ColorOf(double value) const;

    std::vector<double> values_;
    std::vector<int> bars_;
    ClassBreaks classes_;
    std::vector<QColor> colors_;
    bool movable_ = false;
    double step_ = 1;
    int chosen_ = -1; ///< the class whose bound the keys move
    int dragged_ = -1;
};

} // namespace tessaro
