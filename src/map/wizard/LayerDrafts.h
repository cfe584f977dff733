#pragma once

#include "map/MapDraft.h"

#include <vector>

namespace tessaro {

/// The tag of a layer that is no theme's, by the folder of its file.
[[nodiscard]] QString CustomTag(const QString& folder);

/// The layers of a map as a draft keeps them, from the lowest to the topmost.
[[nodiscard]] std::vector<LayerDraft> DraftsOf(const LayerStack& map);
/// Gives the labels of a theme's layers the field and letters of their drafts, in the same order as the layers.
void ApplyLabels(const std::vector<LayerDraft>& drafts, LayerStack& map);
/// Puts such layers on a map in place of those there. Layers whose file can't be read are left out, after a report;
/// the texts of labels are those of RenderLabels. False when one was left out.
bool PutLayers(LayerStack& map, const std::vector<LayerDraft>& drafts, const LayerLocator& locate);

/// Makes the layers of the theme the lowest ones, in their order, so that others are not covered by them.
void SinkThemeLayers(LayerStack& map);

} // namespace tessaro
