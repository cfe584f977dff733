#pragma once

#include <QBrush>
#include <QColor>

namespace tessaro {

/// The fills of polygons by the numbers that the map keeps.
enum class FillPattern {
    Solid,
    Transparent,
    Horizontal,
    Vertical,
    UpwardDiagonal,
    DownwardDiagonal,
    Cross,
    DiagonalCross,
    LightGray,
    Gray,
    DarkGray
};

/// The fill of a stored number; solid for one that there is not.
[[nodiscard]] FillPattern PatternOfNumber(int number);

constexpr int kTile = 8; ///< pixels of the side of a pattern's tile

/// A brush whose tiles of 8 x 8 are `scale` times as large: 1 on the screen, more in a picture for print. The ground
/// shows between the lines.
[[nodiscard]] QBrush PatternBrush(FillPattern pattern, const QColor& color, double scale);

} // namespace tessaro
