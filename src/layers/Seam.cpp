#include "layers/Seam.h"

#include <algorithm>

namespace tessaro {

namespace {

constexpr double kSlack = 0.001; ///< degrees by which rounded coordinates may pass the ends of the world
constexpr double kBeyond = 6;    ///< degrees by which circles around places may pass them
constexpr double kTurn = 360;
constexpr double kHalfTurn = 180;

MapBox BoxOfPart(const MapLayer& layer, int part) {
    MapBox box;
    for (const QPointF* point = layer.FirstOf(part); point != layer.EndOf(part); ++point)
        box.Add(*point);
    return box;
}

void MovePart(MapLayer& layer, int part, double by) {
    const int end = layer.partStarts[static_cast<std::size_t>(part) + 1];
    for (int i = layer.partStarts[static_cast<std::size_t>(part)]; i < end; ++i)
        layer.points[static_cast<std::size_t>(i)].rx() += by;
}

void MeasureAgain(MapLayer& layer) {
    layer.extent = {};
    for (MapFeature& feature : layer.features) {
        feature.box = {};
        for (int part = feature.firstPart; part < feature.endPart; ++part)
            feature.box.Add(BoxOfPart(layer, part));
        layer.extent.Add(feature.box);
    }
}

struct Band {
    double left = 0;
    double right = 0;

    [[nodiscard]] double Width() const { return right - left; }
};

/// The widest band between the spans that none of them covers. Sorts the spans.
Band WidestBand(std::vector<LongitudeSpan>& spans) {
    std::sort(spans.begin(), spans.end(),
              [](const LongitudeSpan& a, const LongitudeSpan& b) { return a.left < b.left; });
    Band widest;
    double covered = spans.front().right;
    for (const LongitudeSpan& span : spans) {
        if (span.left - covered > widest.Width()) widest = {covered, span.left};
        covered = std::max(covered, span.right);
    }
    return widest;
}

} // namespace

bool IsInDegrees(const MapBox& extent) {
    return !extent.IsEmpty() && extent.left >= -kHalfTurn - kBeyond && extent.right <= kHalfTurn + kBeyond &&
           extent.bottom >= -kHalfTurn / 2 - kBeyond && extent.top <= kHalfTurn / 2 + kBeyond;
}

std::vector<LongitudeSpan> SpansOf(const MapLayer& layer) {
    std::vector<LongitudeSpan> spans;
    for (int part = 0; part < layer.PartCount(); ++part) {
        const MapBox box = BoxOfPart(layer, part);
        if (!box.IsEmpty()) spans.push_back({std::max(box.left, -kHalfTurn), std::min(box.right, kHalfTurn)});
    }
    return spans;
}

std::optional<double> SeamOf(std::vector<LongitudeSpan> spans) {
    if (spans.empty()) return std::nullopt;
    const Band widest = WidestBand(spans);
    double right = spans.front().right;
    for (const LongitudeSpan& span : spans)
        right = std::max(right, span.right);
    const double acrossTheEnd = spans.front().left + kTurn - right;
    return widest.Width() > acrossTheEnd ? std::optional(widest.right) : std::nullopt;
}

void ApplySeam(MapLayer& layer, std::optional<double> seam) {
    for (int part = 0; part < layer.PartCount(); ++part) {
        const MapBox box = BoxOfPart(layer, part);
        if (box.IsEmpty()) continue;
        // By its middle: a circle around a place near the end of the world reaches beyond it.
        const bool moved = (box.left + box.right) / 2 < -kHalfTurn - kSlack;
        const double left = moved ? box.left + kTurn : box.left;
        const bool move = seam && left >= *seam;
        if (move != moved) MovePart(layer, part, move ? -kTurn : kTurn);
    }
    MeasureAgain(layer);
}

double WithinWorld(double longitude) {
    return longitude < -kHalfTurn - kSlack && longitude >= -kHalfTurn - kTurn ? longitude + kTurn : longitude;
}

MapBox BoxAround(const MapLayer& layer, const std::vector<int>& features) {
    std::vector<MapBox> boxes;
    std::vector<LongitudeSpan> spans;
    for (const int each : features) {
        const MapFeature& feature = layer.features[static_cast<std::size_t>(each)];
        for (int part = feature.firstPart; part < feature.endPart; ++part) {
            boxes.push_back(BoxOfPart(layer, part));
            if (!boxes.back().IsEmpty()) spans.push_back({boxes.back().left, boxes.back().right});
        }
    }
    const auto seam = IsInDegrees(layer.extent) ? SeamOf(spans) : std::nullopt;
    MapBox sides[2];
    double areas[2] = {0, 0};
    for (const MapBox& box : boxes) {
        const std::size_t side = seam && box.left >= *seam ? 1 : 0;
        sides[side].Add(box);
        areas[side] += box.Width() * box.Height();
    }
    return areas[1] > areas[0] || sides[0].IsEmpty() ? sides[1] : sides[0];
}

} // namespace tessaro
