#pragma once

#include "exchange/ImportDraft.h"
#include "formats/TableReader.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace tessaro {

/// The kind of a file by its beginning and its name.
[[nodiscard]] FileKind KindOf(const QString& file);
/// The names of the sheets of a workbook. Throws office::Error.
[[nodiscard]] QStringList SheetsOf(const QString& file);
/// A file as a table, as the draft says how to read it. A sheet of a workbook is read by the spreadsheet program, into
/// a text that lies in TempFolder as long as the reader lives. Throws ReadError, office::Error.
[[nodiscard]] std::unique_ptr<TableReader> OpenSource(const QString& file, const ImportDraft& draft);

} // namespace tessaro
