#pragma once

#include "exchange/FileSample.h"
#include "exchange/ImportDraft.h"

#include <QString>

namespace tessaro {

/// How a file is to be read and what its columns mean, by looking at its kind, its beginning and its heads. What
/// nothing tells gets a constant: the unit "Number", the subgroup "Total", the file's name as source, sector and class.
/// `sheet` is that of a workbook, empty for its first. Throws ReadError, office::Error.
[[nodiscard]] ImportDraft GuessDraft(const QString& file, const QString& sheet = {});
/// The same for the first of a workbook's sheets that has columns of values (of at most five, since each takes a
/// moment); for its first sheet when none has.
[[nodiscard]] ImportDraft GuessDraftOfSheets(const QString& file, const QStringList& sheets);
/// The same for rows that are at hand: where the heads are, the roles of columns, the form of numbers.
void GuessColumns(const FileSample& sample, ImportDraft& draft);
/// The same without where the heads are: the draft says that.
void GuessHeadedColumns(const FileSample& sample, ImportDraft& draft);

} // namespace tessaro
