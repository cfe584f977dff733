#pragma once

#include "map/MapAreas.h"
#include "map/classes/ClassTable.h"

#include <vector>

namespace tessaro {

/// The symbols of a theme's layer straight from values and classes, as SymbolsOfMapData gives them after SaveData: the
/// first for areas without a value, then one for each class, and the last for values in no class.
[[nodiscard]] LayerSymbols SymbolsOfClasses(const MapLayer& layer, const MapAreas& areas, const ClassTable& table);

/// Rows of the grid of classes: classes from 0, an empty row, missing data. The row of a feature with such symbols, and
/// the features of a row. Values in no class are with missing data.
[[nodiscard]] int RowOfFeature(const LayerSymbols& symbols, int feature);
[[nodiscard]] std::vector<int> FeaturesOfRow(const LayerSymbols& symbols, int row);

/// How many features of a layer have a value.
[[nodiscard]] int FeaturesWithValue(const MapLayer& layer, const MapAreas& areas);

/// Sizes for points whose area grows with the values: that of the top class is `largest` pixels wide, none smaller than
/// one can see. Classes get one colour, since the size tells them apart.
void SizeByClass(ClassTable& table, int largest);

/// True when a theme seems to be a total (persons, dollars, households) rather than a rate: by the words of its unit
/// and name in the current language, and when the largest value is many times the least. Colours mislead then, because
/// large areas look like much.
[[nodiscard]] bool LooksLikeTotal(const MapTheme& theme, const MapAreas& areas);

} // namespace tessaro
