#pragma once

#include "map/classes/ClassTable.h"
#include "map/output/MapPlaces.h"
#include "sheets/SheetFont.h"

#include <QString>

#include <optional>
#include <vector>

namespace tessaro {

/// One line of the legend; the empty one between the classes and missing data has neither text nor look.
struct LegendLine {
    QString text;
    SheetFont font;
    bool underline = false;
    std::optional<ClassLook> look;
};
/// The classes, an empty line, and missing data.
[[nodiscard]] std::vector<LegendLine> LegendLines(const ClassTable& table);

/// How the legend is laid out: its lines go down, then on in further columns where they would be too many. Lengths are
/// points.
struct LegendPlan {
    std::vector<LegendLine> lines;
    int rows = 0;                ///< of lines, below the title
    int blocks = 1;              ///< side by side
    int columnsOfBlock = 2;      ///< of the sheet: one for swatches, the others for texts
    double swatchWidth = 0;      ///< of the column, with the gap beside the text
    double textWidth = 0;        ///< room of a text
    double markerScale = 1;      ///< points of the sheet for a pixel of a marker's size
    std::vector<double> heights; ///< of the rows

    [[nodiscard]] int RowOf(int line) const { return line % rows; }
    [[nodiscard]] int BlockOf(int line) const { return line / rows; }
    [[nodiscard]] double MarkerSize(const ClassLook& look) const { return look.size * markerScale; }
};

/// `pointsOfPixel`: on the sheet, for a pixel of the map on the screen; `mapHeight`: of the map on the sheet.
[[nodiscard]] LegendPlan PlanLegend(const ClassTable& table, const MapPlaces& places, double pointsOfPixel,
                                    double mapHeight);

/// Points that a text takes in one line, and the height of a row of it when it is wrapped to this width.
[[nodiscard]] double TextPoints(const QString& text, const SheetFont& font);
[[nodiscard]] double RowHeightOf(const QString& text, const SheetFont& font, double width);

} // namespace tessaro
