#pragma once

#include "layers/LayerStack.h"

namespace tessaro {

/// Gives each layer the texts of its labels by their field. Layers of the theme take them from `_MapData`, read once
/// for all features; when the areas' values are of different years, a value's label carries the year. Other layers show
/// the ids and names of their own tables; their combined labels come from the table `Area` and hold ids and names only,
/// in the formula's order. `formula` is that of the combined labels, which the database evaluates. Layers without
/// labels, and areas without a row, have no texts. Call it when values, layers or labels have changed; drawing needs
/// nothing of it.
void RenderLabels(LayerStack& map, const QString& formula);

/// The letters of labels before a user has chosen any: the product's font for maps, with a rim, and none shown yet.
[[nodiscard]] LayerLabels FirstLabels();

} // namespace tessaro
