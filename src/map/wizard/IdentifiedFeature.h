#pragma once

#include "map/MapLayerList.h"

#include <QPointF>
#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// A feature found at a place: of the topmost layers first, one a layer.
struct IdentifiedFeature {
    int layer = -1;
    int feature = -1;
};

/// For each visible layer with features within a distance of a place, the nearest of them.
[[nodiscard]] std::vector<IdentifiedFeature> FeaturesNear(const LayerStack& map, QPointF place, double distance);

/// What is known of a feature, as "caption = value": of a theme's area its row of `_MapData`, of others the fields of
/// the layer's table, name and id first.
[[nodiscard]] QStringList Identify_list(const LayerStack& map, IdentifiedFeature found);

/// "12.5, 48.1": degrees within the world with their decimals, other units as whole numbers.
[[nodiscard]] QString PlaceText(QPointF place);

} // namespace tessaro
