#pragma once

#include "map/MapDraft.h"

#include <QSize>
#include <QSizeF>

namespace tessaro {

/// Where things stand on the sheet of a map. Rows and columns are counted from 1, lengths are points.
struct MapPlaces {
    static constexpr int TitleRow = 1;
    static constexpr int SubTitleRow = 2;
    static constexpr int MapRow = 4;
    static constexpr int MapColumn = 2;
    static constexpr int LastMapColumn = 9;
    static constexpr double Digit = 5.25; ///< a unit of column widths

    const char* templateName;
    double scale;     ///< of the map, against its size on the screen
    int legendRow;    ///< of its title; the classes follow below
    int legendColumn; ///< of the title and the swatches, whose texts stand in the next column
    int sourceRow;    ///< of the label; the sources follow below
    int widestLegend; ///< so many classes side by side
    bool landscape;   ///< of the printed page
    QSizeF room;      ///< for the map

    [[nodiscard]] bool LegendIsBeside() const { return legendRow == MapRow; }
};
[[nodiscard]] const MapPlaces& PlacesOf(MapLayout layout);

/// The size of the map on the sheet: so many times that on the screen, 96 pixels to the inch, as the layout says, or as
/// large as the page has room for.
[[nodiscard]] QSizeF MapSizeOn(const MapPlaces& places, QSize onScreen);

/// How much smaller than on the sheet everything is printed, so that it fits on a page of A4; at most 1.
[[nodiscard]] double PrintScale(const MapPlaces& places, QSizeF sheet);

} // namespace tessaro
