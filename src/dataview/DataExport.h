#pragma once

#include "dataview/PageBuilder.h"
#include "formats/ValueTable.h"

#include <QString>

#include <functional>

/// Writes the data view's rows as a page (.htm), a text (.txt) or a workbook (.xls).
namespace tessaro {

/// The rows that leave the view.
struct ExportRows {
    int count = 0;
    std::function<const GridRow*(int)> rowAt; ///< from 0; nullptr is left out. An exception ends the export.
    /// Text of a row's footnote. With it the rows have a ninth column, headed "Footnotes".
    std::function<QString(const GridRow&)> footnoteOf = {};
    /// What is known of a source. With it a page lists the sources of its rows below them.
    std::function<QString(const QString&)> aboutSource = {};
    std::function<void(const ValueLosses&)> beforeLoss = {}; ///< of forms of values: see ValueTable
    std::function<AreaRings(const QString&)> ringsOf = {};
};

/// Why the rows end early. Thrown by rowAt; the export leaves no file then.
enum class ExportStopped { ByUser, Unreadable };

/// A web page in one file: header row, rows and sources, right to left if the language is. False when it can't be
/// written (the old file stays). A blank name does nothing.
[[nodiscard]] bool SaveDataViewHtm(const QString& file, const ExportRows& rows);
/// Header and rows, tab between cells, line feed between rows, UTF-8.
[[nodiscard]] bool SaveDataViewTxt(const QString& file, const ExportRows& rows);
/// The rows in the form that the name says (see ValueFormOf), with values as they are stored.
[[nodiscard]] bool SaveDataViewValues(const QString& file, const ExportRows& rows);
/// A workbook (.xls, .xlsx or .ods, by its name) with the sheet "DataView"; rows beyond what a sheet holds go on on
/// further ones, each with the header. Gives the number of sheets. Throws office::Error; the old file stays then.
int SaveDataViewXls(const QString& file, const ExportRows& rows);

} // namespace tessaro
