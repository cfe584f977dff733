#pragma once

#include "office/Workbook.h"
#include "sheets/SheetFont.h"

#include <QString>
#include <QStringList>

namespace tessaro {

/// The sources of the values on the map, each once.
[[nodiscard]] QStringList SourcesOfMapData();

/// The values of `_MapData` on a sheet, below the indicator; further sheets when one is full. `decimals` is what values
/// are shown with. Throws office::Error.
void WriteMapData(office::Workbook& book, int sheet, const QString& indicator, int decimals);
/// The list of sources. Throws office::Error.
void WriteMapSources(office::Worksheet sheet, const QStringList& sources);

} // namespace tessaro
