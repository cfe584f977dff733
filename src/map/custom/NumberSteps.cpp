#include "map/custom/NumberSteps.h"

#include "session/DisplayValue.h"

#include <QLineEdit>

#include <algorithm>

namespace tessaro {

void NumberSteps::SetSteps(int least, int most, int step) {
    least_ = least;
    most_ = most;
    step_ = step;
}

int NumberSteps::Number() const {
    const double typed = NumberTyped(lineEdit()->text()).value_or(least_);
    return static_cast<int>(std::clamp(typed, double(least_), double(most_)));
}

void NumberSteps::stepBy(int steps) {
    const int number = std::clamp(Number() + steps * step_, least_, most_);
    lineEdit()->setText(DisplayedValue(QString::number(number)));
    selectAll();
}

QAbstractSpinBox::StepEnabled NumberSteps::stepEnabled() const {
    StepEnabled enabled = StepNone;
    if (Number() < most_) enabled |= StepUpEnabled;
    if (Number() > least_) enabled |= StepDownEnabled;
    return enabled;
}

} // namespace tessaro
