#pragma once

#include "layers/MapLayer.h"

class QByteArray;

namespace tessaro {

class MemoryFiles;

/// Makes the head of a dBase table tell no more records than the file holds. False when its fields or lengths don't fit
/// one another, so that it can't be read at all.
[[nodiscard]] bool FitTable(QByteArray& table);

/// Fields and texts of a layer's features from its table ("dbf", with "cpg") among files in memory. Rows that the table
/// lacks are empty. False, and no fields, when there is no table.
bool ReadLayerTable(MapLayer& layer, MemoryFiles& files);

} // namespace tessaro
