#pragma once

#include "layers/LayerStack.h"
#include "map/MapDraft.h"

#include <QSize>

namespace tessaro {

/// What every output of a map is made of. `_MapData` holds the values and the classes saved with them (SaveData), and
/// the layers are drawn as on the screen. All of it must outlive the call that is given it.
struct MapPage {
    const MapDraft& draft;
    const LayerStack& layers;
    MapBox extent; ///< what the map shows, edge to edge
    QSize size;    ///< of the map on the screen, in pixels
};

} // namespace tessaro
