#pragma once

#include "map/MapPage.h"
#include "wizards/WizardProgress.h"

#include <QString>

namespace tessaro {

struct MapSheetContents;
struct MapValues;

/// Writes the workbook of a map into TempFolder, from the template of its layout: the sheet of the map, the values of
/// `_MapData`, their sources. Gives the path of the closed file; an empty one where the template is missing. Whatever
/// goes wrong, no file is left. Throws office::Error, and WorkGivenUp where the user gives it up.
[[nodiscard]] QString MakeMapWorkbook(const MapPage& page, const WizardProgress& progress = {});

/// The same of contents that are at hand.
[[nodiscard]] QString WriteMapWorkbook(const MapSheetContents& contents, const MapValues& values,
                                       const WizardProgress& progress);
/// What a page shows: all layers where it doesn't say.
[[nodiscard]] MapBox ShownExtent(const MapPage& page);
/// The size on the screen, or a usual one.
[[nodiscard]] QSize ShownSize(const MapPage& page);

} // namespace tessaro
