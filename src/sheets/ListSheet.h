#pragma once

#include "office/Workbook.h"

#include <QStringList>

#include <functional>
#include <optional>

/// Writes lists as workbooks.
namespace tessaro {

/// A row of a list; bit n of `global` says that cell n belongs to an item that all databases share.
struct ListRow {
    std::vector<office::Cell> cells;
    quint32 global = 0;
};

/// A list as a workbook shows it.
struct SheetList {
    QString name; ///< of its sheets, where it needs more than one
    QStringList heads;
    std::function<std::optional<ListRow>()> next; ///< the rows one after the other; nothing at the end
    int identifiers = 0;                          ///< so many columns at the left are texts whatever they look like
    std::function<void(int sheet)> sheetWritten = {};
};

/// Puts the colour of shared items into its slot of the palette while the user wants to see them.
void SetGlobalColor(office::Workbook& book);
/// Writes a list into a sheet and as many further ones as it needs, each with the heading; shared items have their
/// colour while the user wants to see them. Gives the number of sheets. Throws office::Error and what `next` throws.
int WriteList(office::Workbook& book, const office::Worksheet& first, const SheetList& list);

/// Writes a table at A1, its heading first, and dresses it: font, bold tinted heading, lines, columns as wide as their
/// texts, printed over the pages with its heading and page numbers, the heading kept in view. All rows have the
/// heading's length; an empty table does nothing.
void WriteTable(office::Worksheet& sheet, const office::Block& table);
/// The rows of a table that decide how wide its columns are: the first ones, and those with the longest texts.
[[nodiscard]] office::Block RowsToFit(const office::Block& table);

} // namespace tessaro
