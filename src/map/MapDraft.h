#pragma once

#include "layers/LayerPainter.h"
#include "layers/MapLayer.h"
#include "map/MapData.h"
#include "map/MapLayerList.h"
#include "map/classes/ClassTable.h"
#include "sheets/SheetFont.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <optional>
#include <vector>

namespace tessaro {

/// The form of the map's page: the legend stands below the map, or beside it with Vertical.
enum class MapLayout { Square, Vertical, Horizontal };

/// A text of the page and its letters.
struct MapText {
    QString text;
    SheetFont font;

    bool operator==(const MapText&) const = default;
};

/// A layer on the map as the user has set it up.
struct LayerDraft {
    MapFile file;
    bool ofTheme = true; ///< drawn by the classes; otherwise all its features have `symbol`
    bool visible = true;
    LayerSymbol symbol;
    bool labelOn = false;
    QString labelField; ///< key of what labels show; empty for none
    QFont labelFont;
    QColor labelColor = Qt::black;
    bool labelHalo = true;
    bool labelsOverlap = false; ///< every label is drawn, even over another

    bool operator==(const LayerDraft&) const = default;
};

/// All that a user chooses in the map wizard. The pages edit it, and the outputs are made from it and the layers.
struct MapDraft {
    MapTheme theme;
    bool advanced = false;   ///< theme and base map are the user's own choice
    QString period;          ///< the map shows what was known by then; empty: the latest of each area
    bool sameClasses = true; ///< the classes stay when the period changes
    BreakChoice choice = BreakChoice::EqualCount;
    ClassTable classes;
    MapText title;
    MapText subTitle;
    MapText legendTitle;
    MapText disclaimer;
    bool titlesTyped = false; ///< the titles are the user's own; none is suggested any more
    MapLayout layout = MapLayout::Square;
    bool smallMaps = false;         ///< the workbook shows a small map for each of several periods
    QString labelFormula;           ///< AdvancedLabelFormula: what combined labels are made of
    std::vector<LayerDraft> layers; ///< from the lowest to the topmost
    MapBox extent;                  ///< what is seen; empty: everything
};

/// A draft as lines "name=value", in plain text whatever the titles hold.
[[nodiscard]] QString DraftText(const MapDraft& draft);
/// Reads such lines. What isn't named keeps its first value; names that are unknown are passed over. Nothing when a
/// line has no name, a value can't be read, or the classes and their looks don't match.
[[nodiscard]] std::optional<MapDraft> ReadMapDraft(const QString& text);

} // namespace tessaro
