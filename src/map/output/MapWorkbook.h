#pragma once

#include "map/MapPage.h"
#include "wizards/WizardProgress.h"

#include <QString>

namespace tessaro {

/// Writes the workbook of a map into TempFolder, from the template of its layout: the sheet of the map, the values of
/// `_MapData`, their sources. Gives the path of the closed file; an empty one where the template is missing. Whatever
/// goes wrong, no file is left. Throws office::Error, and WorkGivenUp where the user gives it up.
[[nodiscard]] QString MakeMapWorkbook(const MapPage& page, const WizardProgress& progress = {});

} // namespace tessaro
