#include "map/ClassColors.h"

#include <cmath>

namespace tessaro {

namespace {

int Between(int first, int last, double share) {
    return static_cast<int>(std::lround(first + (last - first) * share));
}

} // namespace

std::vector<QColor> RampColors(const QColor& first, const QColor& last, int count) {
    std::vector<QColor> colors;
    for (int i = 0; i < count; ++i) {
        const double share = count == 1 ? 0 : static_cast<double>(i) / (count - 1);
        colors.emplace_back(Between(first.red(), last.red(), share), Between(first.green(), last.green(), share),
                            Between(first.blue(), last.blue(), share));
    }
    return colors;
}

QColor ClassColor(const QColor& chosen) {
    const QColor color = chosen.toRgb();
    return color.red() == 0 && color.green() == 0 && color.blue() == 0 ? QColor(0, 0, 1) : color;
}

} // namespace tessaro
