#pragma once

#include "layers/LabelPainter.h"
#include "layers/LayerPainter.h"
#include "layers/MapLayer.h"

#include <vector>

namespace tessaro {

/// A layer on a map: its shapes and table, what it is for, how it is drawn.
struct StackedLayer {
    MapLayer data;
    QString tag;  ///< "Data" for the layer of a theme, "Customize - " + folder for a customised one
    QString file; ///< the .shp as the user knows it, not a working copy; empty for a layer that was made in memory
    LayerSymbols symbols;
    LayerLabels labels;
    bool visible = true;
    bool inDegrees = true; ///< set by the stack
};

/// The layers of a map, drawn from the first to the last. Layers in degrees share one seam (see Seam.h) and one scale
/// of x, so that they lie over each other.
class LayerStack final {
  public:
    /// Puts a layer on top, without labels. The reference holds until the next change of the stack.
    StackedLayer& Add(MapLayer layer, const QString& tag);
    void Remove(int index);
    /// Moves a layer, with all that belongs to it, to another place in the order; the others keep theirs.
    void Move(int from, int to);
    /// Gives a layer a text for each feature; empty ones are not drawn. Places are found here, once for a layer.
    void SetLabels(int index, LayerLabels labels);
    void Clear();

    [[nodiscard]] int Count() const { return static_cast<int>(layers_.size()); }
    [[nodiscard]] StackedLayer& At(int index) { return layers_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const StackedLayer& At(int index) const { return layers_[static_cast<std::size_t>(index)]; }

    /// The box around all layers, hidden ones too; empty without layers.
    [[nodiscard]] const MapBox& FullExtent() const { return extent_; }
    /// See XScaleOf. It changes with the layers only, so that shapes keep their proportions while the map is moved.
    [[nodiscard]] double XScale() const { return xScale_; }

  private:
    void Arrange();

    std::vector<StackedLayer> layers_;
    MapBox extent_;
    double xScale_ = 1;
};

} // namespace tessaro
