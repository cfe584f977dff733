#pragma once

#include "map/MapPage.h"

#include <QString>

namespace tessaro {

/// Saves the whole page of a map, as PaintPage has it, on A4: ".svg" and ".pdf" hold lines and letters, others (".png")
/// pixels, 300 to the inch. Sources are those of `_MapData`. False when the file can't be made; the old one stands.
[[nodiscard]] bool SavePagePicture(const QString& path, const MapPage& page);

} // namespace tessaro
