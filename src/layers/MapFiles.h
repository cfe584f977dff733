#pragma once

#include "layers/LayerReader.h"

#include <QString>

#include <vector>

namespace tessaro {

/// The path of a layer in AppPath/Maps by its MapFile, with or without the ending, in any case; empty when there is no
/// such file.
[[nodiscard]] QString MapPath(const QString& mapFile);
/// Reads a layer; where map files are scrambled, from a restored copy in MapFilesFolder, which is emptied first.
[[nodiscard]] LayerReading OpenAreaMap(const QString& path);
/// Why a layer can't be shown, in the current language; empty for LayerFault::None.
[[nodiscard]] QString ReasonOf(LayerFault fault);
/// The ids of the features of a layer as areas have them, trimmed and in capitals.
[[nodiscard]] std::vector<QString> AreaIdsOf(const MapLayer& layer);

} // namespace tessaro
