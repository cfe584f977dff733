#pragma once

#include "layers/MapView.h"

#include <QRectF>

#include <vector>

namespace tessaro {

/// A part of a layer on a picture: some of the points, from the first to behind the last.
struct PixelPart {
    std::size_t first = 0;
    std::size_t end = 0;
    QRectF box;
};

/// Parts of a layer as they lie on the pixels of a picture. Each point is moved to the middle of its pixel; a point
/// that shares one with the point before is left out.
class PixelParts final {
  public:
    PixelParts(const MapLayer& layer, const MapView& view) : layer_(layer), view_(view) {}

    /// Puts a part of the layer behind the others.
    void Add(int part);
    void Clear();

    [[nodiscard]] std::size_t Count() const { return parts_.size(); }
    [[nodiscard]] const PixelPart& At(std::size_t index) const { return parts_[index]; }
    [[nodiscard]] const QPointF* FirstOf(const PixelPart& part) const { return points_.data() + part.first; }
    [[nodiscard]] const QPointF* EndOf(const PixelPart& part) const { return points_.data() + part.end; }
    [[nodiscard]] static int SizeOf(const PixelPart& part) { return static_cast<int>(part.end - part.first); }

  private:
    const MapLayer& layer_;
    const MapView& view_;
    std::vector<QPointF> points_;
    std::vector<PixelPart> parts_;
};

} // namespace tessaro
