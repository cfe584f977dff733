#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <vector>

namespace tessaro {

/// Outlines of one colour, antialiased, on a transparent picture of their own that is then laid over the map. Several
/// times as fast as a painter's pen; and since lines don't add up where they meet, a border that two areas share looks
/// like any other.
class OutlinePicture final {
  public:
    /// Lines that are wider show that their corners aren't rounded.
    static constexpr double kMostWidth = 3;

    /// A picture of this part of the map's pixels. The width is in pixels; one below 1 makes the lines fainter.
    OutlinePicture(const QRect& area, const QColor& color, double width);

    /// Draws a ring through the middles of pixels; the last point is joined with the first.
    void AddRing(const QPointF* first, const QPointF* end);
    [[nodiscard]] const QImage& Image() const { return image_; }
    [[nodiscard]] QPoint Corner() const { return corner_; } ///< of the picture on the map

  private:
    /// Pixels of one direction, as steps in memory.
    struct Axis {
        qptrdiff step;
        int count;
    };
    /// How a line lies on the pixels across its main direction, in 1/65536 of a pixel.
    struct Slope {
        qint64 step;   ///< from one pixel of the main direction to the next
        qint64 height; ///< of the line
    };
    /// Most lines are this short; their slopes are computed once.
    static constexpr int kShort = 16;

    [[nodiscard]] Slope SlopeOf(int length, int rise) const;
    void AddLine(QPoint from, QPoint to);
    void AddLine(const Axis& along, const Axis& across, QPoint from, QPoint to);
    void Cover(QRgb* line, const Axis& across, qint64 top, qint64 height);

    QImage image_;
    QPoint corner_;
    QRgb* pixels_ = nullptr;
    Axis x_{1, 0};
    Axis y_{0, 0};
    double width_;
    QRgb inks_[256];                 ///< the colour by the share of a pixel that is covered
    Slope slopes_[kShort][kShort]{}; ///< of lines by their length and, upwards, their rise
};

} // namespace tessaro
