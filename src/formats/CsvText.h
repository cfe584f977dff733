#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Texts for files that spreadsheets read as well.
namespace tessaro {

/// A text for a file that spreadsheets read as well: an apostrophe before everything that they would take for a
/// formula (=, +, -, @ after blanks and marks that don't show). Numbers stay as they are.
[[nodiscard]] QString WithoutFormula(const QString& text);
/// A row of separated values in UTF-8, with its line end: fields with the delimiter, quotation marks or line ends in
/// them stand between quotation marks, and none becomes a formula.
[[nodiscard]] QByteArray CsvLine(const QStringList& fields, char delimiter = ',');

} // namespace tessaro
