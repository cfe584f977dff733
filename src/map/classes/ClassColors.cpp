#include "map/classes/ClassColors.h"

#include <cmath>

namespace tessaro {

namespace {

int Between(int first, int last, double share) {
    return static_cast<int>(std::lround(first + (last - first) * share));
}

} // namespace

QColor ColorBetween(const QColor& first, const QColor& last, double share) {
    return {Between(first.red(), last.red(), share), Between(first.green(), last.green(), share),
            Between(first.blue(), last.blue(), share)};
}

std::vector<QColor> RampColors(const QColor& first, const QColor& last, int count) {
    std::vector<QColor> colors;
    for (int i = 0; i < count; ++i)
        colors.push_back(ColorBetween(first, last, count == 1 ? 0 : static_cast<double>(i) / (count - 1)));
    return colors;
}

QColor ClassColor(const QColor& chosen) {
    const QColor color = chosen.toRgb();
    return color.red() == 0 && color.green() == 0 && color.blue() == 0 ? QColor(0, 0, 1) : color;
}

} // namespace tessaro
