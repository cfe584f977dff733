#include "layers/PixelParts.h"

#include <algorithm>
#include <limits>

namespace tessaro {

namespace {

/// Ends far outside the picture are pulled to this many pixels beyond it: the painter's own numbers end somewhere.
constexpr double kFarOutside = 8000;

/// The pixel, counted from the far end outside; for what is no number that end. Above 0, a conversion to int cuts off
/// as floor does, and is far quicker.
int PixelAt(double place, double size) {
    return static_cast<int>(std::min(std::max(-kFarOutside, place), size + kFarOutside) + kFarOutside);
}

double MiddleOf(int pixel) {
    return pixel - kFarOutside + 0.5;
}

} // namespace

void PixelParts::Add(int part) {
    const QPointF* const first = layer_.FirstOf(part);
    const QPointF* const last = layer_.EndOf(part);
    const QSizeF size = view_.Size();
    PixelPart added{points_.size(), 0, {}};
    points_.resize(added.first + static_cast<std::size_t>(last - first));
    QPointF* const begin = points_.data() + added.first;
    QPointF* end = begin;
    int leastX = std::numeric_limits<int>::max(), leastY = leastX;
    int mostX = 0, mostY = 0;
    int lastX = -1, lastY = -1;
    for (const QPointF* point = first; point != last; ++point) {
        const QPointF exact = view_.ToPicture(*point);
        const int x = PixelAt(exact.x(), size.width());
        const int y = PixelAt(exact.y(), size.height());
        *end = {MiddleOf(x), MiddleOf(y)};
        end += static_cast<int>(x != lastX) | static_cast<int>(y != lastY); // a branch here is often guessed wrong
        lastX = x;
        lastY = y;
        leastX = std::min(leastX, x);
        leastY = std::min(leastY, y);
        mostX = std::max(mostX, x);
        mostY = std::max(mostY, y);
    }
    added.end = added.first + static_cast<std::size_t>(end - begin);
    if (first != last)
        added.box = {QPointF(MiddleOf(leastX), MiddleOf(leastY)), QPointF(MiddleOf(mostX), MiddleOf(mostY))};
    points_.resize(added.end);
    parts_.push_back(added);
}

void PixelParts::Clear() {
    points_.clear();
    parts_.clear();
}

} // namespace tessaro
