#pragma once

#include "layers/LayerStack.h"
#include "map/MapAreas.h"

namespace tessaro {

/// What a map shows before the user moves it.
struct FirstView {
    MapBox extent;   ///< empty: everything
    int outside = 0; ///< areas with a value that lie outside of it
};

/// The view that holds the bulk of a theme's areas with a value, for maps with a few far away ones, such as Alaska,
/// Hawaii and Guam beside the other states. An end of the longer side is left out when an empty band of at least
/// 5 per cent of what remains parts it from the rest, and all that is left out is at most a tenth of the areas. A view
/// that isn't less than half of the full extent makes no difference: then everything is shown. An area counts where its
/// largest part lies.
[[nodiscard]] FirstView FirstViewOf(const LayerStack& map, const MapAreas& areas);

} // namespace tessaro
