#pragma once

#include "dataview/PageBuilder.h"

#include <QString>

#include <functional>

namespace tessaro {

/// The rows that leave the view: those that stand in the grid.
struct ExportRows {
    int count = 0;
    std::function<const GridRow*(int)> rowAt; ///< from 0; nullptr is passed over
};

/// A web page that reads alone: header row, right to left when the language is. False when it can't be written (the old
/// file stays). A blank name does nothing.
[[nodiscard]] bool SaveDataViewHtm(const QString& file, const ExportRows& rows);
/// Header and rows, tab between cells, line feed between rows, UTF-8.
[[nodiscard]] bool SaveDataViewTxt(const QString& file, const ExportRows& rows);
/// A workbook with the sheet "DataView"; rows beyond what a sheet holds go on on further ones, each with the header.
/// Gives the number of sheets. Throws office::Error; the old file stays then.
int SaveDataViewXls(const QString& file, const ExportRows& rows);

} // namespace tessaro
