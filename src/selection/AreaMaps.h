#pragma once

#include "layers/MapFiles.h"

#include <QHash>
#include <QSet>
#include <QString>

/// Which map layer shows the areas of a branch, and which areas its features are.
namespace tessaro::selection {

/// True when some area names a map that exists.
[[nodiscard]] bool HasAreaMaps();
/// The one map that the children of a tree node name; empty when there is none, or they name several.
[[nodiscard]] QString MapOfChildren(const QString& nodeKey);
/// The map that an area names itself; empty when it names none that exists.
[[nodiscard]] QString MapOfArea(const QString& areaId);

/// The features of the areas below a node that the layer shows, or of the area itself when it has none below; all for
/// the root.
[[nodiscard]] std::vector<int> FeaturesBelow(const std::vector<QString>& ids, const QString& nodeId);

/// The number of an area in the database; empty for an id that is none.
[[nodiscard]] QString NumberOfArea(const QString& areaId);
/// The name of an area; empty for an id that is none.
[[nodiscard]] QString NameOfArea(const QString& areaId);
/// Names of all areas by their ids in capitals.
[[nodiscard]] QHash<QString, QString> NamesOfAreas();

} // namespace tessaro::selection
