#pragma once

#include "layers/LayerPainter.h"
#include "map/MapData.h"
#include "map/MapLayerList.h"
#include "map/classes/ClassBreaks.h"
#include "map/classes/ClassEditing.h"
#include "map/classes/PaletteFile.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <vector>

namespace tessaro {

/// How a class looks on the map and in the legend.
struct ClassLook {
    QString legend;
    QFont font;
    QColor color = Qt::white;
    int fill = 0;   ///< 0 to 10, see FillPattern
    int marker = 0; ///< 0 to 3, see Marker
    int size = 5;   ///< of the marker, 1 to 250

    bool operator==(const ClassLook&) const = default;
};

/// The grid of classes (grdClassBreaks): classes with their looks, and the look of areas without a value.
struct ClassTable {
    ThemeKind kind = ThemeKind::Polygons;
    int decimals = 0;
    ClassBreaks classes;
    std::vector<ClassLook> looks; ///< one for each class
    ClassLook missing;            ///< white until the user chooses another look
};

/// Puts computed classes into the table, with new legends. Colours and symbols of rows that were there stay; further
/// rows look like the last of them.
void SetClasses(ClassTable& table, ClassBreaks classes, int decimals);
/// EditBound, with new legends for the rows that changed.
[[nodiscard]] bool EditClass(ClassTable& table, int row, Bound bound, double value, BreakChoice choice,
                             const std::vector<double>& ascending);
/// Makes the first class begin, and the last one end, where both limits are in a class; legends of bounds that moved
/// follow, unless they are the user's own.
void WidenEnds(ClassTable& table, const ValueLimits& limits);
/// Counts the values of each class anew.
void CountClasses(ClassTable& table, const std::vector<double>& ascending);
/// Colours in equal steps between those of the first and the last class.
void SmoothColors(ClassTable& table);
/// The features of the theme less the values in classes; at least 0.
[[nodiscard]] int CountMissing(const ClassTable& table, int featuresOfTheme);

/// Writes the classes into `_MapData`, from the last to the first, so that the lower one gets a value on the bound of
/// two; rows in no class keep the look of missing data. All or nothing: False, after a report, leaves the table as it
/// was.
[[nodiscard]] bool SaveData(const ClassTable& table);

/// The table as rows of a palette file: classes, an empty white row, and missing data.
[[nodiscard]] PaletteRows PaletteOf(const ClassTable& table);
/// Takes what the mode asks for from a palette file, as ApplyPalette tells. Bounds that are no numbers or stand the
/// wrong way round are left out; the others are counted anew.
void TakePalette(ClassTable& table, const PaletteContents& file, PaletteMode mode,
                 const std::vector<double>& ascending);

/// How the features of a class are drawn: in its colour and pattern with a hairline around them.
[[nodiscard]] LayerSymbol SymbolOf(const ClassLook& look);
/// The same of values in no class: as missing data, but crosshatched.
[[nodiscard]] LayerSymbol SymbolOfUnclassed(const ClassLook& missing);
/// The symbols of a theme's layer from `_MapData`, by the ids of its features; those without a row look like missing
/// data. Polygons whose value is in no class have its colour, crosshatched.
[[nodiscard]] LayerSymbols SymbolsOfMapData(const MapLayer& layer, const ClassLook& missing);

} // namespace tessaro
