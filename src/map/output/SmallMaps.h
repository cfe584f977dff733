#pragma once

#include "map/MapPage.h"
#include "wizards/WizardProgress.h"

#include <QString>
#include <QStringList>

namespace tessaro {

constexpr int kMostSmallMaps = 6;

/// At most six of a theme's periods, spread from the first to the last.
[[nodiscard]] QStringList SpreadPeriods(const QStringList& periods);

/// The workbook of MakeMapWorkbook with a small map for each period (the first six of them) instead of the one map, in
/// one picture: each with its period above it, all with the draft's classes, one legend and one extent. A map shows
/// what was known by its period; periods without any value are left out. `_MapData` is afterwards as before. Results
/// and errors are those of MakeMapWorkbook.
[[nodiscard]] QString MakeSmallMaps(const MapPage& page, const QStringList& periods,
                                    const WizardProgress& progress = {});

} // namespace tessaro
