#pragma once

#include "office/Workbook.h"
#include "sheets/SheetFont.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// The values of a map as its data sheet lists them, under these heads; the fourth one is the value itself.
struct MapValues {
    QStringList heads;
    std::vector<QStringList> rows;
};
[[nodiscard]] QStringList MapValueHeads();
/// The values of `_MapData`.
[[nodiscard]] MapValues ReadMapValues();
/// The sources of the values of `_MapData`, each once.
[[nodiscard]] QStringList SourcesOfMapData();

/// Lists values on a sheet below their indicator, and on further sheets when it is full. `decimals` is what values are
/// shown with. Throws office::Error.
void WriteMapData(office::Workbook& book, int sheet, const MapValues& values, const QString& indicator, int decimals);
/// The list of sources. Throws office::Error.
void WriteMapSources(office::Worksheet sheet, const QStringList& sources);

} // namespace tessaro
