#pragma once

#include "map/MapPage.h"

#include <QString>

namespace tessaro {

/// Where a map goes that the user gave this name: its folder, blanks of its name as "_", and ".apr" as the ending.
/// Empty for a name that is none.
[[nodiscard]] QString ProjectPathOf(const QString& chosen);

/// Writes the map as a project of ArcView 3 (a text of numbered objects), and `_MapData` as the dBase table that it
/// shows and joins to the layers, beside it with the same name. Both files are put in place together. False, after a
/// report, when one of them can't be written or would take the place of a layer's own table: the old ones stand.
[[nodiscard]] bool WriteProjectFile(const QString& path, const MapPage& page);

} // namespace tessaro
