#pragma once

#include "exchange/ImportDraft.h"
#include "formats/TableReader.h"

#include <QString>

#include <vector>

namespace tessaro {

/// The first rows of a file, without what they mean.
struct FileSample {
    static constexpr std::size_t kRows = 300;
    static constexpr std::size_t kCells = 200'000; ///< fewer rows of very wide tables
    std::vector<std::vector<std::string>> rows;
};

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
/// The first rows of a file as the draft says how to read it.
[[nodiscard]] FileSample SampleOf(TableReader& reader);

} // namespace tessaro
