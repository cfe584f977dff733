#pragma once

#include "layers/MapLayer.h"

#include <QByteArray>

#include <map>
#include <optional>
#include <string>

namespace tessaro {

/// Why a layer can't be read, or what is missing of it.
enum class LayerFault {
    None,
    Missing,         ///< there is no such file, or it can't be read
    TooLarge,        ///< more than a gigabyte
    NotAShapefile,   ///< the file doesn't begin as one
    UnsupportedKind, ///< its shapes are neither points, lines nor polygons
    Damaged          ///< its head or index doesn't fit the file
};

struct LayerReading {
    std::optional<MapLayer> layer;
    LayerFault fault = LayerFault::None; ///< why there is no layer
    bool hasTable = false;               ///< False: no .dbf, or one that can't be read; the layer has no fields then
};

/// Reads the .shp that a path names, in any case, with the .shx, .dbf and .cpg beside it. A file whose first word was
/// negated (EncryptShape) is read as it was before. Without an index, or with one that doesn't fit, the records follow
/// one another. Heights and measures are left out; records that can't be read become null shapes. Texts are in the code
/// page that the .cpg or the table's language byte tells, else in UTF-8 when they are valid in it, else in
/// Windows-1252.
[[nodiscard]] LayerReading ReadLayer(const QString& path);

/// The same from the bytes of the files by their endings ("shp", "shx", "dbf", "cpg").
[[nodiscard]] LayerReading ReadLayerFiles(std::map<std::string, QByteArray> files, const QString& name);

} // namespace tessaro
