#pragma once

#include <QRectF>

#include <vector>

namespace tessaro {

/// The rings of a polygon, given by their boxes, in groups: rings whose boxes meet, directly or through others, are in
/// one, so that a hole is with what it lies in. Each group can be drawn apart, which is far quicker than all at once.
/// The groups hold the numbers of the rings.
[[nodiscard]] std::vector<std::vector<std::size_t>> RingGroups(const std::vector<QRectF>& boxes);

} // namespace tessaro
