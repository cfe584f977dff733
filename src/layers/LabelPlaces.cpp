#include "layers/LabelPlaces.h"

#include <queue>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace tessaro {

namespace {

constexpr double kPrecision = 0.05; ///< of the shorter side of a part
constexpr int kMostSquares = 4096;  ///< a damaged ring must not keep the search busy for ever

struct Ring {
    const QPointF* first = nullptr;
    const QPointF* end = nullptr;
    MapBox box;
    double area = 0; ///< without a sign
};

Ring RingOf(const MapLayer& layer, int part) {
    Ring ring;
    ring.first = layer.FirstOf(part);
    ring.end = layer.EndOf(part);
    double twice = 0;
    if (ring.first == ring.end) return ring;
    const QPointF* before = ring.end - 1;
    for (const QPointF* point = ring.first; point != ring.end; before = point++) {
        ring.box.Add(*point);
        twice += before->x() * point->y() - point->x() * before->y();
    }
    ring.area = std::fabs(twice) / 2;
    return ring;
}

/// The largest ring of a feature first, then those that may be its holes.
std::vector<Ring> LargestWithHoles(const MapLayer& layer, const MapFeature& feature) {
    std::vector<Ring> rings;
    for (int part = feature.firstPart; part < feature.endPart; ++part)
        rings.push_back(RingOf(layer, part));
    std::erase_if(rings, [](const Ring& ring) { return ring.end - ring.first < 3; });
    if (rings.empty()) return rings;
    std::iter_swap(rings.begin(), std::max_element(rings.begin(), rings.end(),
                                                   [](const auto& a, const auto& b) { return a.area < b.area; }));
    const MapBox around = rings.front().box;
    std::erase_if(rings, [&](const Ring& ring) {
        return !around.Contains({ring.box.left, ring.box.bottom}) || !around.Contains({ring.box.right, ring.box.top});
    });
    return rings;
}

double SquareOfDistance(QPointF a, QPointF b, QPointF point) {
    const QPointF edge = b - a;
    const QPointF away = point - a;
    const double along = QPointF::dotProduct(away, edge);
    if (along <= 0) return QPointF::dotProduct(away, away);
    const double length = QPointF::dotProduct(edge, edge);
    if (along >= length) return QPointF::dotProduct(point - b, point - b);
    const double across = away.x() * edge.y() - away.y() * edge.x();
    return across * across / length;
}

/// The distance from the nearest edge; below 0 outside. As soon as it is known to be less than `least`, any value less
/// than that.
double DistanceInside(const std::vector<Ring>& rings, QPointF point, double least) {
    bool inside = false;
    double nearest = std::numeric_limits<double>::infinity();
    const double enough = least > 0 ? least * least : 0;
    for (const Ring& ring : rings) {
        const QPointF* before = ring.end - 1;
        for (const QPointF* corner = ring.first; corner != ring.end; before = corner++) {
            const bool crosses = (corner->y() > point.y()) != (before->y() > point.y());
            if (crosses &&
                point.x() <
                    (before->x() - corner->x()) * (point.y() - corner->y()) / (before->y() - corner->y()) + corner->x())
                inside = !inside;
            nearest = std::min(nearest, SquareOfDistance(*before, *corner, point));
            if (nearest < enough) return std::numeric_limits<double>::lowest();
        }
    }
    return inside ? std::sqrt(nearest) : -std::sqrt(nearest);
}

struct Square {
    QPointF middle;
    double half = 0;
    double distance = 0;

    /// No point of the square lies farther inside than this.
    [[nodiscard]] double Most() const { return distance + half * std::numbers::sqrt2; }
    bool operator<(const Square& other) const { return Most() < other.Most(); }
};

/// `least` is the distance inside that a point of the square must reach to be of use.
Square SquareAt(const std::vector<Ring>& rings, QPointF middle, double half, double least) {
    return {middle, half, DistanceInside(rings, middle, least - half * std::numbers::sqrt2)};
}

LabelPlace PoleOf(const std::vector<Ring>& rings) {
    const MapBox& box = rings.front().box;
    const QPointF middle((box.left + box.right) / 2, (box.bottom + box.top) / 2);
    const double side = std::min(box.Width(), box.Height());
    LabelPlace best{middle, side > 0 ? DistanceInside(rings, middle, 0) : 0};
    if (side <= 0) return best;
    std::priority_queue<Square> squares;
    const auto columns = static_cast<int>(std::clamp(std::ceil(box.Width() / side), 1.0, 64.0));
    const auto rows = static_cast<int>(std::clamp(std::ceil(box.Height() / side), 1.0, 64.0));
    const double half = std::max(box.Width() / columns, box.Height() / rows) / 2;
    for (int i = 0; i < columns * rows; ++i)
        squares.push(SquareAt(rings,
                              {box.left + box.Width() * (i % columns + 0.5) / columns,
                               box.bottom + box.Height() * (i / columns + 0.5) / rows},
                              half, best.room + kPrecision * side));
    for (int taken = 0; !squares.empty() && taken < kMostSquares; ++taken) {
        const Square square = squares.top();
        squares.pop();
        if (square.distance > best.room) best = {square.middle, square.distance};
        if (square.Most() - best.room <= kPrecision * side) break;
        const double quarter = square.half / 2;
        for (const QPointF& way : {QPointF(-1, -1), QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1)})
            squares.push(SquareAt(rings, square.middle + quarter * way, quarter, best.room + kPrecision * side));
    }
    best.room = std::max(best.room, 0.0);
    return best;
}

LabelPlace MiddleOfLongest(const MapLayer& layer, const MapFeature& feature) {
    const QPointF* longest = nullptr;
    std::ptrdiff_t most = 0;
    for (int part = feature.firstPart; part < feature.endPart; ++part) {
        if (layer.EndOf(part) - layer.FirstOf(part) <= most) continue;
        longest = layer.FirstOf(part);
        most = layer.EndOf(part) - longest;
    }
    if (longest == nullptr) return {};
    return {layer.kind == LayerKind::Line ? longest[most / 2] : *longest, 0};
}

} // namespace

std::vector<LabelPlace> LabelPlaces(const MapLayer& layer) {
    std::vector<LabelPlace> places;
    places.reserve(layer.features.size());
    for (const MapFeature& feature : layer.features) {
        const std::vector<Ring> rings =
            layer.kind == LayerKind::Polygon ? LargestWithHoles(layer, feature) : std::vector<Ring>();
        places.push_back(rings.empty() ? MiddleOfLongest(layer, feature) : PoleOf(rings));
    }
    return places;
}

} // namespace tessaro
