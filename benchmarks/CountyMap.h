#pragma once

#include "layers/LayerStack.h"
#include "map/MapDraft.h"

namespace tessaro::bench {

/// A map of all counties as the wizard of maps has it.
struct CountyMap {
    LayerStack layers;
    MapDraft draft;
};

/// Selects all counties and the one theme that has a value for each. Expects the installation's own database.
void SelectCounties();
/// Fills `_MapData` from the selection, computes five classes, and loads the layers.
void MakeCountyMap(CountyMap& map);

} // namespace tessaro::bench
