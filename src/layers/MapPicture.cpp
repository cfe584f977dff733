#include "layers/MapPicture.h"

#include <QPainter>

namespace tessaro {

MapView ViewOf(const LayerStack& layers, const MapBox& extent, QSizeF size) {
    return {extent, size, layers.XScale()};
}

void PaintMap(QPainter& painter, const LayerStack& layers, const MapView& view, double scale,
              const AfterLayer& afterLayer) {
    for (int i = 0; i < layers.Count(); ++i) {
        const StackedLayer& layer = layers.At(i);
        if (!layer.visible) continue;
        PaintLayer(painter, layer.data, layer.symbols, view, scale);
        if (afterLayer) afterLayer(i);
    }
    std::vector<LabelledLayer> labels;
    for (int i = 0; i < layers.Count(); ++i) {
        const StackedLayer& layer = layers.At(i);
        if (layer.visible)
            labels.push_back({&layer.labels, layer.data.kind == LayerKind::Point ? &layer.symbols : nullptr});
    }
    PaintLabels(painter, labels, view, scale);
}

QImage MapImage(const LayerStack& layers, const MapBox& extent, QSize size, double scale, const QColor& ground) {
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return image;
    image.fill(ground);
    QPainter painter(&image);
    PaintMap(painter, layers, ViewOf(layers, extent, image.size()), scale);
    return image;
}

} // namespace tessaro
