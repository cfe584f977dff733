#pragma once

#include "formats/CsvReader.h"

#include <QString>

namespace tessaro {

/// Encoding and delimiter of a text file by looking at its beginning: the delimiter that cuts most lines into the same
/// number of fields. Throws ReadError when the file can't be read.
[[nodiscard]] CsvForm FindCsvForm(const QString& path);
/// The same for a beginning that is at hand, in UTF-8. The comma when nothing tells.
[[nodiscard]] char FindDelimiter(const std::string& beginning);
[[nodiscard]] std::unique_ptr<TableReader> OpenCsv(const QString& path, const CsvForm& form);

} // namespace tessaro
