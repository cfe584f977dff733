#include "layers/OutlinePicture.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr int kBits = 16;
constexpr qint64 kOne = qint64{1} << kBits;

QPoint PixelOf(QPointF middle) {
    return {static_cast<int>(std::floor(middle.x())), static_cast<int>(std::floor(middle.y()))};
}

} // namespace

OutlinePicture::OutlinePicture(const QRect& area, const QColor& color, double width)
    : image_(area.size(), QImage::Format_ARGB32_Premultiplied), corner_(area.topLeft()), width_(std::max(1.0, width)) {
    const double opacity = color.alphaF() * std::min(1.0, width);
    for (int share = 0; share < 256; ++share)
        inks_[share] = qPremultiply(
            qRgba(color.red(), color.green(), color.blue(), static_cast<int>(std::lround(opacity * share))));
    if (image_.isNull()) return;
    image_.fill(Qt::transparent);
    for (int length = 1; length < kShort; ++length)
        for (int rise = 0; rise <= length; ++rise)
            slopes_[length][rise] = SlopeOf(length, rise);
    pixels_ = reinterpret_cast<QRgb*>(image_.bits());
    x_ = {1, image_.width()};
    y_ = {image_.bytesPerLine() / static_cast<qptrdiff>(sizeof(QRgb)), image_.height()};
}

OutlinePicture::Slope OutlinePicture::SlopeOf(int length, int rise) const {
    const double slope = static_cast<double>(rise) / length;
    return {std::llround(slope * kOne), static_cast<qint64>(width_ * std::sqrt(1 + slope * slope) * kOne)};
}

/// Covers the pixels between `top` and one line's height below it, the first and the last of them in part.
inline void OutlinePicture::Cover(QRgb* line, const Axis& across, qint64 top, qint64 height) {
    const qint64 bottom = top + height;
    const qint64 first = std::max(top >> kBits, qint64{0});
    const qint64 last = std::min((bottom - 1) >> kBits, static_cast<qint64>(across.count) - 1);
    for (qint64 i = first; i <= last; ++i) {
        const qint64 covered = std::min(bottom, (i + 1) << kBits) - std::max(top, i << kBits);
        QRgb& pixel = line[i * across.step];
        // The inks differ in strength only, so that the greater number is the stronger one.
        pixel = std::max(pixel, inks_[(covered * 255) >> kBits]);
    }
}

/// Goes along the direction in which the line is longer, a pixel a step, and covers the pixels across it.
inline void OutlinePicture::AddLine(const Axis& along, const Axis& across, QPoint from, QPoint to) {
    if (from.x() > to.x()) std::swap(from, to);
    const int first = std::max(from.x(), 0);
    const int last = std::min(to.x(), along.count - 1);
    const int length = to.x() - from.x();
    if (first > last || length == 0) return;
    const int rise = to.y() - from.y();
    const int upwards = std::abs(rise);
    Slope slope = length < kShort ? slopes_[length][upwards] : SlopeOf(length, upwards);
    if (rise < 0) slope.step = -slope.step;
    qint64 top = from.y() * kOne + kOne / 2 - slope.height / 2 + slope.step * (first - from.x());
    QRgb* line = pixels_ + first * along.step;
    for (int i = first; i <= last; ++i, line += along.step, top += slope.step)
        Cover(line, across, top, slope.height);
}

inline void OutlinePicture::AddLine(QPoint from, QPoint to) {
    if (std::abs(to.x() - from.x()) >= std::abs(to.y() - from.y()))
        AddLine(x_, y_, from, to);
    else
        AddLine(y_, x_, from.transposed(), to.transposed());
}

void OutlinePicture::AddRing(const QPointF* first, const QPointF* end) {
    if (first == end || !pixels_) return;
    QPoint before = PixelOf(end[-1]) - corner_;
    for (const QPointF* point = first; point != end; ++point) {
        const QPoint pixel = PixelOf(*point) - corner_;
        AddLine(before, pixel);
        before = pixel;
    }
}

} // namespace tessaro
