#pragma once

#include "layers/MapLayer.h"

#include <QHash>
#include <QPointF>
#include <QString>

#include <vector>

namespace tessaro {

/// The outlines of the areas of the open database, from the maps that they name. A map is read when an area of it is
/// asked for first.
class AreaOutlines final {
  public:
    /// Reads which map each area names.
    AreaOutlines();
    /// The rings of an area by its id, in the layer's units; none when its map has no polygon for it.
    [[nodiscard]] std::vector<std::vector<QPointF>> RingsOf(const QString& areaId);

  private:
    struct Outlines {
        MapLayer layer;
        QHash<QString, int> features; ///< by area id in capitals
    };
    const Outlines& OutlinesIn(const QString& mapFile);

    QHash<QString, QString> mapOf_; ///< by area id in capitals
    QHash<QString, Outlines> maps_; ///< by the name that areas give
};

} // namespace tessaro
