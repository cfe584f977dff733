#include "layers/MapLayer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaro {

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();

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

/// The distance from a line, or from a ring when `closed`. A single point counts as an edge without length.
double DistanceToLine(const QPointF* first, const QPointF* end, QPointF point, bool closed) {
    double nearest = DistanceToEdge(closed ? end[-1] : *first, *first, point);
    for (const QPointF* next = first + 1; next < end; ++next)
        nearest = std::min(nearest, DistanceToEdge(next[-1], *next, point));
    return nearest;
}

double DistanceToPoints(const QPointF* first, const QPointF* end, QPointF point) {
    double nearest = kFar;
    for (const QPointF* each = first; each < end; ++each)
        nearest = std::min(nearest, DistanceToEdge(*each, *each, point));
    return nearest;
}

bool IsInside(const MapLayer& layer, const MapFeature& feature, QPointF point) {
    bool inside = false;
    for (int part = feature.firstPart; part < feature.endPart; ++part)
        if (layer.FirstOf(part) != layer.EndOf(part))
            inside = inside != IsInsideRing(layer.FirstOf(part), layer.EndOf(part), point);
    return inside;
}

/// How far a point is from a feature: 0 within a polygon.
double DistanceTo(const MapLayer& layer, const MapFeature& feature, QPointF point) {
    if (layer.kind == LayerKind::Polygon && IsInside(layer, feature, point)) return 0;
    double nearest = kFar;
    for (int part = feature.firstPart; part < feature.endPart; ++part) {
        const QPointF* const first = layer.FirstOf(part);
        const QPointF* const end = layer.EndOf(part);
        if (first == end) continue;
        nearest = std::min(nearest, layer.kind == LayerKind::Point
                                        ? DistanceToPoints(first, end, point)
                                        : DistanceToLine(first, end, point, layer.kind == LayerKind::Polygon));
    }
    return nearest;
}

MapBox Around(QPointF point, double distance) {
    return {point.x() - distance, point.y() - distance, point.x() + distance, point.y() + distance};
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
    const MapBox around = Around(point, reach);
    for (std::size_t i = features.size(); i-- > 0;) {
        if (!features[i].box.Meets(around)) continue;
        const bool holds = kind == LayerKind::Polygon ? IsInside(*this, features[i], point)
                                                      : DistanceTo(*this, features[i], point) <= distance;
        if (holds) return static_cast<int>(i);
    }
    return -1;
}

std::vector<int> MapLayer::SearchByDistance(QPointF point, double distance) const {
    std::vector<int> found;
    const MapBox around = Around(point, distance);
    for (std::size_t i = features.size(); i-- > 0;)
        if (features[i].box.Meets(around) && DistanceTo(*this, features[i], point) <= distance)
            found.push_back(static_cast<int>(i));
    return found;
}

int MapLayer::NearestFeature(QPointF point, double distance) const {
    int nearest = -1;
    double least = kFar;
    for (const int each : SearchByDistance(point, distance)) {
        const double away = DistanceTo(*this, features[static_cast<std::size_t>(each)], point);
        if (away >= least) continue;
        nearest = each;
        least = away;
    }
    return nearest;
}

} // namespace tessaro
