#pragma once

#include "map/MapData.h"
#include "map/MapLayerList.h"

#include <QStringList>

namespace tessaro {

// What a theme can be chosen from: the texts in view, each once and in order.

[[nodiscard]] QStringList IndicatorsInView();
[[nodiscard]] QStringList SubpopsOf(const QString& indicator);
/// With an empty subgroup, of all of them.
[[nodiscard]] QStringList UnitsOf(const QString& indicator, const QString& subpop);

/// The layers that the installation and the user's folder of maps offer, by name.
[[nodiscard]] MapFiles InstalledMaps();
/// The layer of points that belongs to a layer of areas ("World_Points.shp" to "World.shp"); without a folder when none
/// is installed.
[[nodiscard]] MapFile PointsOf(const MapFile& areas);

} // namespace tessaro
