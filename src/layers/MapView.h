#pragma once

#include "layers/MapLayer.h"

#include <QSizeF>

namespace tessaro {

/// How a part of the map lies on a picture. Layers in degrees are drawn with x shortened by the cosine of a middle
/// latitude, so that shapes there have their true proportions (equirectangular projection with a standard parallel);
/// layers in other units as they are.
class MapView final {
  public:
    /// The wanted extent is shown whole, in the middle of a picture of this size; an empty one is the whole world.
    MapView(const MapBox& wanted, QSizeF size, double xScale);

    [[nodiscard]] QPointF ToPicture(QPointF map) const {
        return {(map.x() - shown_.left) * pixelsX_, (shown_.top - map.y()) * pixelsY_};
    }
    [[nodiscard]] QPointF ToMap(QPointF picture) const {
        return {shown_.left + picture.x() / pixelsX_, shown_.top - picture.y() / pixelsY_};
    }
    [[nodiscard]] const MapBox& Shown() const { return shown_; } ///< what the picture shows, edge to edge
    [[nodiscard]] QSizeF Size() const { return size_; }
    [[nodiscard]] double PixelsX() const { return pixelsX_; } ///< for one unit of the map
    [[nodiscard]] double PixelsY() const { return pixelsY_; }

  private:
    QSizeF size_;
    double pixelsX_ = 1;
    double pixelsY_ = 1;
    MapBox shown_;
};

/// The factor of x for layers with this full extent: the cosine of its middle latitude, at most 80 degrees; 1 for an
/// extent beyond 180 or 90 degrees, which is in other units.
[[nodiscard]] double XScaleOf(const MapBox& extent);

} // namespace tessaro
