#include "layers/MapView.h"

#include "layers/Seam.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessaro {

namespace {

constexpr double kLeastSide = 1e-9;
constexpr double kMostLatitude = 80;
const MapBox kWorld{-180, -90, 180, 90};

} // namespace

MapView::MapView(const MapBox& wanted, QSizeF size, double xScale)
    : size_(std::max(size.width(), 1.0), std::max(size.height(), 1.0)) {
    const MapBox box = wanted.IsEmpty() ? kWorld : wanted;
    const double width = std::max(box.Width(), kLeastSide) * xScale;
    const double height = std::max(box.Height(), kLeastSide);
    pixelsY_ = std::min(size_.width() / width, size_.height() / height);
    pixelsX_ = pixelsY_ * xScale;
    const double x = (box.left + box.right) / 2;
    const double y = (box.bottom + box.top) / 2;
    const double halfWidth = size_.width() / pixelsX_ / 2;
    const double halfHeight = size_.height() / pixelsY_ / 2;
    shown_ = {x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight};
}

double XScaleOf(const MapBox& extent) {
    if (!IsInDegrees(extent)) return 1;
    const double latitude = std::min(std::fabs(extent.bottom + extent.top) / 2, kMostLatitude);
    return std::cos(latitude * std::numbers::pi / 180);
}

} // namespace tessaro
