#include "layers/FillPattern.h"

#include <QImage>
#include <QTransform>

namespace tessaro {

namespace {

bool IsSet(FillPattern pattern, int x, int y) {
    switch (pattern) {
    case FillPattern::Horizontal:
        return y == 3;
    case FillPattern::Vertical:
        return x == 3;
    case FillPattern::UpwardDiagonal:
        return x + y == kTile - 1;
    case FillPattern::DownwardDiagonal:
        return x == y;
    case FillPattern::Cross:
        return x == 3 || y == 3;
    case FillPattern::DiagonalCross:
        return x == y || x + y == kTile - 1;
    case FillPattern::LightGray: // one of eight
        return (x % 4 == 0 && y % 4 == 0) || (x % 4 == 2 && y % 4 == 2);
    case FillPattern::Gray:
        return (x + y) % 2 == 0;
    case FillPattern::DarkGray: // seven of eight
        return !((x % 4 == 0 && y % 4 == 0) || (x % 4 == 2 && y % 4 == 2));
    case FillPattern::Solid:
    case FillPattern::Transparent:
        break;
    }
    return true;
}

QImage TileOf(FillPattern pattern, const QColor& color) {
    QImage tile(kTile, kTile, QImage::Format_ARGB32_Premultiplied);
    tile.fill(Qt::transparent);
    for (int y = 0; y < kTile; ++y)
        for (int x = 0; x < kTile; ++x)
            if (IsSet(pattern, x, y)) tile.setPixelColor(x, y, color);
    return tile;
}

} // namespace

FillPattern PatternOfNumber(int number) {
    const bool known = number >= 0 && number <= static_cast<int>(FillPattern::DarkGray);
    return known ? static_cast<FillPattern>(number) : FillPattern::Solid;
}

QBrush PatternBrush(FillPattern pattern, const QColor& color, double scale) {
    if (pattern == FillPattern::Transparent) return Qt::NoBrush;
    if (pattern == FillPattern::Solid) return color;
    QBrush brush(TileOf(pattern, color));
    brush.setTransform(QTransform::fromScale(scale, scale));
    return brush;
}

} // namespace tessaro
