#pragma once

#include "layers/LayerPainter.h"

#include <vector>

class QPainter;

namespace tessaro {

/// A feature that is drawn, and the number of its symbol.
struct SeenFeature {
    std::size_t feature;
    int symbol;
};

/// False where a picture is made of lines and curves. These have no tiles, so that patterns become lines there, and
/// their pens have to grow with the picture.
[[nodiscard]] bool IsOfPixels(const QPainter& painter);

/// Draws features of a layer of polygons, as PaintLayer tells.
void PaintPolygons(QPainter& painter, const MapLayer& layer, const LayerSymbols& symbols, const MapView& view,
                   double scale, const std::vector<SeenFeature>& seen);

} // namespace tessaro
