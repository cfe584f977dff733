#pragma once

#include <QPointF>
#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// What the shapes of a layer are; the numbers are those by which the system tells them apart.
enum class LayerKind { Point = 21, Line = 22, Polygon = 23 };

/// A box in the layer's units, mostly degrees; y goes up. A default one is empty and grows from nothing.
struct MapBox {
    double left = 0;
    double bottom = 0;
    double right = -1;
    double top = -1;

    [[nodiscard]] bool IsEmpty() const { return !(left <= right && bottom <= top); }
    [[nodiscard]] double Width() const { return IsEmpty() ? 0 : right - left; }
    [[nodiscard]] double Height() const { return IsEmpty() ? 0 : top - bottom; }
    [[nodiscard]] bool Contains(QPointF point) const;
    [[nodiscard]] bool Meets(const MapBox& other) const;
    void Add(QPointF point);
    void Add(const MapBox& other);
    bool operator==(const MapBox&) const = default;
};

/// One shape: parts of the layer's points, from `firstPart` to before `endPart`. A null shape has no parts.
struct MapFeature {
    int firstPart = 0;
    int endPart = 0;
    MapBox box;
};

/// Shapes and table of a shapefile, in memory. Feature i belongs to row i of the table.
struct MapLayer {
    QString name;
    LayerKind kind = LayerKind::Polygon;
    std::vector<QPointF> points;
    std::vector<int> partStarts{0}; ///< part p has the points from partStarts[p] to before partStarts[p + 1]
    std::vector<MapFeature> features;
    MapBox extent;

    QStringList fields;
    std::vector<QStringList> columns; ///< one for each field, with a text for each feature
    int damaged = 0;                  ///< records that can't be read and became null shapes

    [[nodiscard]] int PartCount() const { return static_cast<int>(partStarts.size()) - 1; }
    /// The points of a part, from the first to behind the last.
    [[nodiscard]] const QPointF* FirstOf(int part) const {
        return points.data() + partStarts[static_cast<std::size_t>(part)];
    }
    [[nodiscard]] const QPointF* EndOf(int part) const { return FirstOf(part + 1); }

    /// The number of a field, whatever its case; -1 for none.
    [[nodiscard]] int FieldOf(const QString& field) const;
    /// The field that holds the ids of areas ("ID_", else "AREAID") or their names; -1 for none.
    [[nodiscard]] int IdField() const;
    [[nodiscard]] int NameField() const;
    /// The text of a feature's field; empty for a field that there is not.
    [[nodiscard]] QString Text(int feature, int field) const;

    /// The topmost feature that holds the point: a polygon with it inside (not in a hole), or a line or point within
    /// `distance` of it. -1 for none.
    [[nodiscard]] int FeatureAt(QPointF point, double distance) const;
    /// All features that hold the point or have a part within `distance` of it, the topmost first.
    [[nodiscard]] std::vector<int> SearchByDistance(QPointF point, double distance) const;
    /// The feature that is nearest to the point, at most `distance` away; -1 for none.
    [[nodiscard]] int NearestFeature(QPointF point, double distance) const;
};

} // namespace tessaro
