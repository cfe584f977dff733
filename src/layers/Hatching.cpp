#include "layers/Hatching.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tessaro {

namespace {

constexpr double kMostLines = 20000; ///< of one polygon; a picture as large as that is damage

/// A family of parallel lines: those where x * acrossX + y * acrossY is a multiple of the spacing.
struct Direction {
    double acrossX;
    double acrossY;

    [[nodiscard]] double Across(QPointF p) const { return p.x() * acrossX + p.y() * acrossY; }
    [[nodiscard]] double Along(QPointF p) const { return p.x() * acrossY - p.y() * acrossX; }
    [[nodiscard]] QPointF At(double across, double along) const {
        const double square = acrossX * acrossX + acrossY * acrossY;
        return {(across * acrossX + along * acrossY) / square, (across * acrossY - along * acrossX) / square};
    }
};

std::vector<Direction> DirectionsOf(FillPattern pattern) {
    constexpr Direction kHorizontal{0, 1};
    constexpr Direction kVertical{1, 0};
    constexpr Direction kUpward{1, 1};
    constexpr Direction kDownward{1, -1};
    switch (pattern) {
    case FillPattern::Horizontal:
        return {kHorizontal};
    case FillPattern::Vertical:
        return {kVertical};
    case FillPattern::UpwardDiagonal:
        return {kUpward};
    case FillPattern::DownwardDiagonal:
        return {kDownward};
    case FillPattern::Cross:
        return {kHorizontal, kVertical};
    case FillPattern::DiagonalCross:
        return {kUpward, kDownward};
    default:
        return {};
    }
}

/// Where the edges of the rings cross each line of a family, by the line's number.
std::map<int, std::vector<double>> Crossings(const Direction& direction, const std::vector<QPolygonF>& rings,
                                             double spacing) {
    std::map<int, std::vector<double>> crossings;
    for (const QPolygonF& ring : rings) {
        QPointF before = ring.isEmpty() ? QPointF() : ring.back();
        for (const QPointF& point : ring) {
            const double from = direction.Across(before) / spacing;
            const double to = direction.Across(point) / spacing;
            // A line through a corner belongs to the edge below it only.
            const double first = std::floor(std::min(from, to)) + 1;
            const double last = std::floor(std::max(from, to));
            for (double line = first; line <= last && last - first < kMostLines; ++line) {
                const double share = (line - from) / (to - from);
                crossings[static_cast<int>(line)].push_back(direction.Along(before) +
                                                            share * (direction.Along(point) - direction.Along(before)));
            }
            before = point;
        }
    }
    return crossings;
}

} // namespace

std::vector<QLineF> HatchLines(FillPattern pattern, const std::vector<QPolygonF>& rings, double spacing) {
    std::vector<QLineF> lines;
    for (const Direction& direction : DirectionsOf(pattern))
        for (auto& [line, along] : Crossings(direction, rings, spacing)) {
            std::sort(along.begin(), along.end());
            for (std::size_t i = 0; i + 1 < along.size(); i += 2)
                lines.emplace_back(direction.At(line * spacing, along[i]), direction.At(line * spacing, along[i + 1]));
        }
    return lines;
}

double HatchWidth(FillPattern pattern) {
    const std::vector<Direction> directions = DirectionsOf(pattern);
    if (directions.empty()) return 1;
    return 1 / std::hypot(directions.front().acrossX, directions.front().acrossY);
}

QBrush ToneBrush(FillPattern pattern, const QColor& color) {
    QColor tone = color;
    switch (pattern) {
    case FillPattern::Solid:
        break;
    case FillPattern::LightGray:
        tone.setAlphaF(0.125F);
        break;
    case FillPattern::Gray:
        tone.setAlphaF(0.5F);
        break;
    case FillPattern::DarkGray:
        tone.setAlphaF(0.875F);
        break;
    default:
        return Qt::NoBrush;
    }
    return tone;
}

} // namespace tessaro
