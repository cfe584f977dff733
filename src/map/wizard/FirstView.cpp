#include "map/wizard/FirstView.h"

#include "layers/MapFiles.h"
#include "map/MapLayerList.h"

#include <algorithm>
#include <set>

namespace tessaro {

namespace {

constexpr double kLeastBand = 0.05;  ///< of the side of what remains
constexpr double kMostOutside = 0.1; ///< of the areas with a value
constexpr double kMostOfFull = 0.5;  ///< of the full extent, for a view that is worth it
constexpr double kMargin = 0.02;     ///< of a side, around the view

/// A part of an area's shape.
struct Part {
    MapBox box;
    int area = 0;         ///< row of the area
    bool largest = false; ///< of its area
};

/// A span of coordinates along one side of the map.
struct Span {
    double from = 0;
    double to = 0;
};

Span SpanOf(const MapBox& box, bool across) {
    return across ? Span{box.left, box.right} : Span{box.bottom, box.top};
}

void AddParts(std::vector<Part>& parts, const MapLayer& layer, const MapFeature& feature, int area) {
    const std::size_t first = parts.size();
    std::size_t largest = first;
    double most = -1;
    for (int part = feature.firstPart; part < feature.endPart; ++part) {
        Part added{{}, area};
        for (const QPointF* point = layer.FirstOf(part); point != layer.EndOf(part); ++point)
            added.box.Add(*point);
        if (added.box.IsEmpty()) continue;
        if (const double size = added.box.Width() * added.box.Height(); size > most) {
            most = size;
            largest = parts.size();
        }
        parts.push_back(added);
    }
    if (parts.size() > first) parts[largest].largest = true;
}

std::vector<Part> PartsWithValue(const LayerStack& map, const MapAreas& areas) {
    std::vector<Part> parts;
    for (int i = 0; i < map.Count(); ++i) {
        const MapLayer& layer = map.At(i).data;
        if (!IsOfTheme(map.At(i))) continue;
        const std::vector<QString> ids = AreaIdsOf(layer);
        for (std::size_t feature = 0; feature < ids.size(); ++feature)
            if (const int area = areas.RowOf(ids[feature]); area >= 0)
                AddParts(parts, layer, layer.features[feature], area);
    }
    return parts;
}

int AreasIn(std::vector<Part>::const_iterator first, std::vector<Part>::const_iterator end) {
    return static_cast<int>(std::count_if(first, end, [](const Part& part) { return part.largest; }));
}

/// Leaves out one side of the parts, the one with the fewest areas; false when no empty band is wide enough, or `may`
/// areas at most must not be exceeded.
bool LeaveOutSide(std::vector<Part>& parts, bool across, int& may) {
    std::sort(parts.begin(), parts.end(), [across](const Part& a, const Part& b) {
        return SpanOf(a.box, across).from < SpanOf(b.box, across).from;
    });
    const double begin = SpanOf(parts.front().box, across).from;
    double end = begin;
    for (const Part& part : parts)
        end = std::max(end, SpanOf(part.box, across).to);
    const int all = AreasIn(parts.begin(), parts.end());
    double covered = SpanOf(parts.front().box, across).to;
    int before = parts.front().largest ? 1 : 0;
    for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
        const auto [from, to] = SpanOf(part->box, across);
        const bool lowGoes = before <= all - before;
        const int lost = lowGoes ? before : all - before;
        const double remains = lowGoes ? end - from : covered - begin;
        if (lost <= may && from > covered && from - covered >= kLeastBand * remains) {
            lowGoes ? parts.erase(parts.begin(), part) : parts.erase(part, parts.end());
            may -= lost;
            return true;
        }
        covered = std::max(covered, to);
        before += part->largest ? 1 : 0;
    }
    return false;
}

/// With polygons and points an area stands on the map twice.
int DifferentAreas(const std::vector<Part>& parts) {
    std::set<int> areas;
    for (const Part& part : parts)
        if (part.largest) areas.insert(part.area);
    return static_cast<int>(areas.size());
}

MapBox BoxOf(const std::vector<Part>& parts) {
    MapBox box;
    for (const Part& part : parts)
        box.Add(part.box);
    return box;
}

MapBox WithMargin(const MapBox& box) {
    const double x = kMargin * box.Width();
    const double y = kMargin * box.Height();
    return {box.left - x, box.bottom - y, box.right + x, box.top + y};
}

/// Along the longer side only: what lies beside it is seen anyway.
bool LeaveOut(std::vector<Part>& parts, double xScale, int& may) {
    const MapBox box = BoxOf(parts);
    return LeaveOutSide(parts, box.Width() * xScale > box.Height(), may);
}

} // namespace

FirstView FirstViewOf(const LayerStack& map, const MapAreas& areas) {
    std::vector<Part> parts = PartsWithValue(map, areas);
    if (parts.empty()) return {};
    const int all = DifferentAreas(parts);
    int may = static_cast<int>(kMostOutside * AreasIn(parts.begin(), parts.end()));
    while (LeaveOut(parts, map.XScale(), may)) {
    }
    const MapBox box = WithMargin(BoxOf(parts));
    const MapBox& full = map.FullExtent();
    if (box.Width() * box.Height() >= kMostOfFull * full.Width() * full.Height()) return {};
    return {box, all - DifferentAreas(parts)};
}

} // namespace tessaro
