#pragma once

#include <QColor>

#include <vector>

namespace tessaro {

/// The colour at a share (0 to 1) of the way from one to another, in red, green and blue.
[[nodiscard]] QColor ColorBetween(const QColor& first, const QColor& last, double share);
/// Colours in equal steps of red, green and blue from the first to the last. Nothing for a count below 1; one is the
/// first.
[[nodiscard]] std::vector<QColor> RampColors(const QColor& first, const QColor& last, int count);
/// The colour that a class gets for the one that was chosen: black becomes (0, 0, 1), since the colour number 0 stands
/// for no colour on the map.
[[nodiscard]] QColor ClassColor(const QColor& chosen);

} // namespace tessaro
