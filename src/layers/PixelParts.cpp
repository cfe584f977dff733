#include "layers/PixelParts.h"

#include <algorithm>

namespace tessaro {

namespace {

/// Ends far outside the picture are pulled to this many pixels beyond it: the painter's own numbers end somewhere.
constexpr double kFarOutside = 8000;

/// The middle of the pixel; for what is no number one far outside. Above 0, a conversion to int cuts off as floor does,
/// and is far quicker.
double Snapped(double place, double size) {
    const double near = std::min(std::max(-kFarOutside, place), size + kFarOutside);
    return static_cast<int>(near + kFarOutside) - kFarOutside + 0.5;
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
    QPointF least(size.width() + kFarOutside, size.height() + kFarOutside);
    QPointF most(-kFarOutside, -kFarOutside);
    for (const QPointF* point = first; point != last; ++point) {
        const QPointF exact = view_.ToPicture(*point);
        const QPointF pixel(Snapped(exact.x(), size.width()), Snapped(exact.y(), size.height()));
        if (end != begin && pixel.x() == end[-1].x() && pixel.y() == end[-1].y()) continue;
        *end++ = pixel;
        least = {std::min(least.x(), pixel.x()), std::min(least.y(), pixel.y())};
        most = {std::max(most.x(), pixel.x()), std::max(most.y(), pixel.y())};
    }
    added.end = added.first + static_cast<std::size_t>(end - begin);
    added.box = {least, most};
    points_.resize(added.end);
    parts_.push_back(added);
}

void PixelParts::Clear() {
    points_.clear();
    parts_.clear();
}

} // namespace tessaro
