#pragma once

#include <QAbstractSpinBox>

namespace tessaro {

/// A field for any text, with two arrows that put the next higher or lower number in steps of `SetSteps` into it.
class NumberSteps final : public QAbstractSpinBox {
    Q_OBJECT

  public:
    explicit NumberSteps(QWidget* parent = nullptr) : QAbstractSpinBox(parent) {}

    void SetSteps(int least, int most, int step);
    /// The field itself.
    [[nodiscard]] QLineEdit& Field() const { return *lineEdit(); }
    void stepBy(int steps) override;

  protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;

  private:
    [[nodiscard]] int Number() const;

    int least_ = 0;
    int most_ = 100;
    int step_ = 1;
};

} // namespace tessaro
