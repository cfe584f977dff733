#include "layers/LayerStack.h"

#include "layers/LabelLayouts.h"
#include "layers/MapView.h"
#include "layers/Seam.h"

#include <algorithm>

namespace tessaro {

StackedLayer& LayerStack::Add(MapLayer layer, const QString& tag) {
    StackedLayer added;
    added.data = std::move(layer);
    added.inDegrees = IsInDegrees(added.data.extent);
    added.tag = tag;
    layers_.push_back(std::move(added));
    Arrange();
    return layers_.back();
}

void LayerStack::Remove(int index) {
    layers_.erase(layers_.begin() + index);
    Arrange();
}

void LayerStack::Move(int from, int to) {
    const auto first = layers_.begin();
    if (from < to)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
}

void LayerStack::Clear() {
    layers_.clear();
    Arrange();
}

void LayerStack::SetLabels(int index, LayerLabels labels) {
    StackedLayer& layer = At(index);
    labels.places = std::move(layer.labels.places);
    labels.layouts = std::make_shared<LabelLayouts>();
    layer.labels = std::move(labels);
    if (layer.labels.places.empty() && !layer.labels.texts.empty()) layer.labels.places = LabelPlaces(layer.data);
}

void LayerStack::Arrange() {
    std::vector<LongitudeSpan> spans;
    for (StackedLayer& each : layers_) {
        if (!each.inDegrees) continue;
        ApplySeam(each.data, std::nullopt);
        const std::vector<LongitudeSpan> more = SpansOf(each.data);
        spans.insert(spans.end(), more.begin(), more.end());
    }
    const auto seam = SeamOf(std::move(spans));
    extent_ = {};
    bool inDegrees = true;
    for (StackedLayer& each : layers_) {
        if (each.inDegrees) ApplySeam(each.data, seam);
        inDegrees = inDegrees && (each.inDegrees || each.data.extent.IsEmpty());
        extent_.Add(each.data.extent);
        each.labels.places.clear();
        if (!each.labels.texts.empty()) each.labels.places = LabelPlaces(each.data);
    }
    // Parts that were moved across 180 degrees are degrees all the same.
    xScale_ = inDegrees && !extent_.IsEmpty() ? XScaleOf({-180, extent_.bottom, 180, extent_.top}) : 1;
}

} // namespace tessaro
