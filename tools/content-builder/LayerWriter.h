#pragma once

#include <QPointF>

#include <filesystem>
#include <string>
#include <vector>

namespace tessaro::content {

/// What the shapes of a layer are; the numbers are the shapefile's.
enum class ShapeKind { Points = 1, Lines = 3, Polygons = 5 };

/// One feature: the rings of a polygon in any order and direction, the parts of a line, or one part with the point.
/// Coordinates are degrees of longitude and latitude.
struct LayerRecord {
    std::string id;
    std::string name;
    std::vector<std::vector<QPointF>> parts;
};
struct LayerContents {
    ShapeKind kind = ShapeKind::Polygons;
    std::vector<LayerRecord> records;
};

/// Writes stem.shp with its index, its table of the fields ID_ and Name1_ (in UTF-8) and its coordinate system
/// (WGS 84), each put in place when it is whole. Throws std::runtime_error when that fails.
void WriteLayer(const LayerContents& layer, const std::filesystem::path& folder, const std::string& stem);

} // namespace tessaro::content
