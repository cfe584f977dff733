#include "map/output/LegendPlan.h"

#include "map/classes/ClassLabels.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "sheets/ColumnWidths.h"
#include "sheets/SheetLayout.h"

#include <algorithm>
#include <cmath>

namespace tessaro {

namespace {

constexpr double kUsualRow = 1.5;  ///< of a font's size
constexpr double kLineEnds = 0.1;  ///< the share of a line that stays empty because words don't break
constexpr double kSwatch = 24;     ///< width of a coloured rectangle
constexpr double kGap = 6;         ///< beside swatches, and between the two of polygons and points
constexpr double kMostMarker = 40; ///< larger ones become smaller in the legend, all by the same factor
constexpr double kLeastText = 110; ///< room of the texts of a legend beside the map
constexpr double kMostText = 190;
constexpr double kMostRow = 400;

SheetFont FontOf(const QFont& font) {
    const double size = font.pointSizeF() > 0 ? font.pointSizeF() : 10;
    return {font.family(), size, font.bold(), font.italic()};
}

LegendLine LineOf(const ClassLook& look, const QString& text) {
    return {text, FontOf(look.font), look.font.underline(), look};
}

double WidestText(const std::vector<LegendLine>& lines) {
    double widest = 0;
    for (const LegendLine& line : lines)
        widest = std::max(widest, TextPoints(line.text, line.font));
    return widest;
}

double HeightOf(const LegendLine& line, const LegendPlan& plan) {
    const double text = RowHeightOf(line.text, line.font, plan.textWidth);
    const double marker = line.look ? plan.MarkerSize(*line.look) + 4 : 0;
    return std::max(text, marker);
}

void SetSwatches(LegendPlan& plan, ThemeKind kind, double pointsOfPixel) {
    int largest = 0;
    if (kind == ThemeKind::Points || kind == ThemeKind::Both)
        for (const LegendLine& line : plan.lines)
            if (line.look) largest = std::max(largest, line.look->size);
    plan.markerScale = largest > 0 ? std::min(pointsOfPixel, kMostMarker / largest) : 0;
    const double marker = largest * plan.markerScale;
    const double width = kind == ThemeKind::Points ? marker
                         : kind == ThemeKind::Both ? kSwatch + kGap + marker
                                                   : kSwatch;
    plan.swatchWidth = std::max(width, kSwatch) + kGap;
}

/// Below the map the columns come in pairs of one width, of which texts may take several.
void SetColumnsBelow(LegendPlan& plan, const MapPlaces& places, double widest, int mostRows) {
    const int pairs = places.widestLegend;
    const double pair = places.room.width() / pairs;
    const int needed = std::clamp(static_cast<int>(std::ceil((widest + plan.swatchWidth + kGap) / pair)), 1, pairs);
    const int count = static_cast<int>(plan.lines.size());
    plan.blocks = std::clamp((count + mostRows - 1) / mostRows, 1, pairs / needed);
    const int pairsOfBlock = pairs / plan.blocks;
    plan.columnsOfBlock = 2 * pairsOfBlock;
    plan.textWidth = pairsOfBlock * pair - plan.swatchWidth - kGap;
}

void SetColumnsBeside(LegendPlan& plan, const MapPlaces& places, double widest, double mapHeight) {
    plan.textWidth = std::clamp(widest + kGap, kLeastText, kMostText);
    double height = 0;
    for (const LegendLine& line : plan.lines)
        height += HeightOf(line, plan);
    plan.blocks = std::clamp(static_cast<int>(std::ceil(height / mapHeight)), 1, places.widestLegend);
}

} // namespace

double TextPoints(const QString& text, const SheetFont& font) {
    return TextWidth(text, font) * MapPlaces::Digit;
}

double RowHeightOf(const QString& text, const SheetFont& font, double width) {
    const double line = std::max(TallRowHeight(font), font.size * kUsualRow);
    const double length = TextPoints(text, font);
    const double lines = length <= width ? 1 : std::ceil(length / width + kLineEnds);
    return std::min(line + (lines - 1) * std::max(TallRowHeight(font), font.size * 1.25), kMostRow);
}

std::vector<LegendLine> LegendLines(const ClassTable& table) {
    std::vector<LegendLine> lines;
    for (const ClassLook& look : table.looks)
        lines.push_back(LineOf(look, LegendInReadingOrder(look.legend)));
    lines.push_back({{}, FontOf(table.missing.font), false, {}});
    const QString& missing = table.missing.legend;
    lines.push_back(LineOf(table.missing, missing.isEmpty() ? PlainText(QStringLiteral("Missing Data")) : missing));
    return lines;
}

LegendPlan PlanLegend(const ClassTable& table, const MapPlaces& places, double pointsOfPixel, double mapHeight) {
    LegendPlan plan;
    plan.lines = LegendLines(table);
    SetSwatches(plan, table.kind, pointsOfPixel);
    const double widest = WidestText(plan.lines);
    if (places.LegendIsBeside())
        SetColumnsBeside(plan, places, widest, mapHeight);
    else
        SetColumnsBelow(plan, places, widest, places.sourceRow - places.legendRow - 2);
    const int count = static_cast<int>(plan.lines.size());
    plan.rows = (count + plan.blocks - 1) / plan.blocks;
    plan.heights.assign(static_cast<std::size_t>(plan.rows), 0);
    for (int line = 0; line < count; ++line) {
        double& height = plan.heights[static_cast<std::size_t>(plan.RowOf(line))];
        height = std::max(height, HeightOf(plan.lines[static_cast<std::size_t>(line)], plan));
    }
    return plan;
}

} // namespace tessaro
