#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

/// Texts for files that spreadsheets read as well.
namespace tessaro {

/// The mark with which files in UTF-8 begin, so that spreadsheets read them so.
inline const QByteArray kUtf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");

/// A text for a file that spreadsheets read as well: an apostrophe before everything that they would take for a
/// formula (=, +, -, @ after blanks and marks that don't show). Numbers stay as they are.
[[nodiscard]] QString WithoutFormula(const QString& text);
/// A row of separated values in UTF-8, with its line end: fields with the delimiter, quotation marks or line ends in
/// them stand between quotation marks, and none becomes a formula.
[[nodiscard]] QByteArray CsvLine(const QStringList& fields, char delimiter = ',');

/// Writes many rows of separated values: texts that come again and again are put into their form once.
class CsvWriter final {
  public:
    [[nodiscard]] QByteArray Line(const QStringList& fields);

  private:
    std::vector<QHash<QString, QByteArray>> known_; ///< of each column
};

} // namespace tessaro
