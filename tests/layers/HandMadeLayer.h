#pragma once

#include "layers/MapLayer.h"

#include <vector>

namespace tessaro::test {

using Ring = std::vector<QPointF>;

/// Puts a feature of these parts behind those of the layer.
inline void Add(MapLayer& layer, const std::vector<Ring>& parts) {
    MapFeature feature{static_cast<int>(layer.partStarts.size()) - 1, 0, {}};
    for (const Ring& part : parts) {
        for (const QPointF point : part) {
            layer.points.push_back(point);
            feature.box.Add(point);
        }
        layer.partStarts.push_back(static_cast<int>(layer.points.size()));
    }
    feature.endPart = static_cast<int>(layer.partStarts.size()) - 1;
    layer.features.push_back(feature);
}

inline MapLayer LayerOf(LayerKind kind, const std::vector<std::vector<Ring>>& features) {
    MapLayer layer;
    layer.kind = kind;
    for (const auto& parts : features) {
        Add(layer, parts);
        layer.extent.Add(layer.features.back().box);
    }
    return layer;
}

inline Ring Square(double left, double bottom, double size) {
    return {{left, bottom}, {left, bottom + size}, {left + size, bottom + size}, {left + size, bottom}};
}

} // namespace tessaro::test
