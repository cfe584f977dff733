#pragma once

#include "layers/LayerStack.h"
#include "layers/MapView.h"

#include <QImage>

#include <functional>

namespace tessaro {

/// The view of a map's layers in a picture of this size.
[[nodiscard]] MapView ViewOf(const LayerStack& layers, const MapBox& extent, QSizeF size);

/// Called after each layer, hidden ones left out, with its number.
using AfterLayer = std::function<void(int layer)>;

/// Draws the layers that are visible, and then their labels, so that no layer covers the labels of another. Nothing but
/// these arguments counts.
void PaintMap(QPainter& painter, const LayerStack& layers, const MapView& view, double scale,
              const AfterLayer& afterLayer = {});

/// The map as a picture: `size` as on the screen, with `scale` times as many pixels. Pens, patterns and letters grow
/// with it. A null picture when there is no memory for it.
[[nodiscard]] QImage MapImage(const LayerStack& layers, const MapBox& extent, QSize size, double scale,
                              const QColor& ground = Qt::white);

} // namespace tessaro
