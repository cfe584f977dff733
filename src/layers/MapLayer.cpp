#include "layers/MapLayer.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

/// True when a ray from the point to the right crosses the ring an odd number of times. The ring need not be closed.
bool IsInsideRing(const QPointF* first, const QPointF* end, QPointF point) {
    bool inside = false;
    const QPointF* before = end - 1;
    for (const QPointF* corner = first; corner != end; before = corner++) {
        if ((corner->y() > point.y()) == (before->y() > point.y())) continue;
        const double share = (point.y() - corner->y()) / (before->y() - corner->y());
        if (point.x() < corner->x() + share * (before->x() - corner->x())) inside = !inside;
    }
    return inside;
}

double DistanceToEdge(QPointF a, QPointF b, QPointF point) {
    const QPointF edge = b - a;
    const double square = QPointF::dotProduct(edge, edge);
    const double share = square > 0 ? std::clamp(QPointF::dotProduct(point - a, edge) / square, 0.0, 1.0) : 0;
    const QPointF away = point - (a + share * edge);
    return std::hypot(away.x(), away.y());
}

/// A single point counts as an edge without length.
bool IsNearLine(const QPointF* first, const QPointF* end, QPointF point, double distance) {
    if (end - first == 1) return DistanceToEdge(*first, *first, point) <= distance;
    for (const QPointF* next = first + 1; next < end; ++next)
        if (DistanceToEdge(next[-1], *next, point) <= distance) return true;
    return false;
}

bool Holds(const MapLayer& layer, const MapFeature& feature, QPointF point, double distance) {
    bool inside = false;
    for (int part = feature.firstPart; part < feature.endPart; ++part) {
        const QPointF* const first = layer.points.data() + layer.partStarts[static_cast<std::size_t>(part)];
        const QPointF* const end = layer.points.data() + layer.partStarts[static_cast<std::size_t>(part) + 1];
        if (first == end) continue;
        if (layer.kind == LayerKind::Polygon)
            inside = inside != IsInsideRing(first, end, point);
        else if (layer.kind == LayerKind::Line && IsNearLine(first, end, point, distance))
            return true;
        else if (layer.kind == LayerKind::Point &&
                 std::any_of(first, end, [&](QPointF each) { return DistanceToEdge(each, each, point) <= distance; }))
            return true;
    }
    return inside;
}

} // namespace

bool MapBox::Contains(QPointF point) const {
    return point.x() >= left && point.x() <= right && point.y() >= bottom && point.y() <= top;
}

bool MapBox::Meets(const MapBox& other) const {
    return !IsEmpty() && !other.IsEmpty() && left <= other.right && other.left <= right && bottom <= other.top &&
           other.bottom <= top;
}

void MapBox::Add(QPointF point) {
    Add(MapBox{point.x(), point.y(), point.x(), point.y()});
}

void MapBox::Add(const MapBox& other) {
    if (other.IsEmpty()) return;
    if (IsEmpty()) {
        *this = other;
        return;
    }
    left = std::min(left, other.left);
    bottom = std::min(bottom, other.bottom);
    right = std::max(right, other.right);
    top = std::max(top, other.top);
}

int MapLayer::FieldOf(const QString& field) const {
    for (int i = 0; i < fields.size(); ++i)
        if (fields[i].compare(field, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

int MapLayer::IdField() const {
    const int field = FieldOf(QStringLiteral("ID_"));
    return field >= 0 ? field : FieldOf(QStringLiteral("AREAID"));
}

int MapLayer::NameField() const {
    for (const char* each : {"Name1_", "Name", "Name2_", "Name_Abbr"}) {
        const int field = FieldOf(QLatin1String(each));
        if (field >= 0) return field;
    }
    return -1;
}

QString MapLayer::Text(int feature, int field) const {
    if (field < 0 || field >= static_cast<int>(columns.size())) return {};
    return columns[static_cast<std::size_t>(field)].value(feature);
}

int MapLayer::FeatureAt(QPointF point, double distance) const {
    const double reach = kind == LayerKind::Polygon ? 0 : distance;
    const MapBox around{point.x() - reach, point.y() - reach, point.x() + reach, point.y() + reach};
    for (std::size_t i = features.size(); i-- > 0;)
        if (features[i].box.Meets(around) && Holds(*this, features[i], point, distance)) return static_cast<int>(i);
    return -1;
}

} // namespace tessaro
