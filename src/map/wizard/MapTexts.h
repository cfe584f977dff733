#pragma once

#include "map/MapAreas.h"
#include "map/MapDraft.h"

namespace tessaro {

/// A draft with the texts and fonts that a new map begins with: fonts from MAP_FONT and MAP_FONT_SIZE, those of the
/// language where it isn't English; the disclaimer from the string table.
[[nodiscard]] MapDraft NewMapDraft();

/// Titles from the theme and the periods of its values, unless the user has typed some.
void SuggestTitles(MapDraft& draft, const MapAreas& areas);

/// "Population, persons" or what else tells a theme apart; empty for none.
[[nodiscard]] QString NameOf(const MapTheme& theme);
/// The period of the values, or the first and the last of them.
[[nodiscard]] QString PeriodsText(const MapAreas& areas);

/// A value as the map's texts show it: with its number format and, when periods differ, its period in brackets.
[[nodiscard]] QString ValueText(const MapArea& area, bool withPeriod);

} // namespace tessaro
