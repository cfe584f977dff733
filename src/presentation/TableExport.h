#pragma once

#include "formats/ValueTable.h"
#include "presentation/TableWorkbook.h"
#include "session/SaveKind.h"

#include <QString>
#include <QStringList>

#include <vector>

/// A table of the wizard as files for other programs.
namespace tessaro {

/// What the sheet of a table shows: its rows and columns with titles, notes and sources.
struct ShownTable {
    PivotTable table;
    TableOptions options;
    QStringList sources;
    std::function<QString(const QString&)> aboutSource = {};
};
/// Reads it, in the order of the sheet; what isn't Built leaves it empty.
[[nodiscard]] ShowOutcome ReadShownTable(RowsColumns arrangement, const TableOptions& options, ShownTable& shown);

/// A web page in one file: titles, the table with its notes, the sources. Like all of these it gives False when the
/// file can't be written; the old one stays then.
[[nodiscard]] bool SaveTablePage(const QString& file, const ShownTable& shown);
/// The same as lines with tabs between the cells.
[[nodiscard]] bool SaveTableText(const QString& file, const ShownTable& shown);
/// The heads and rows of the table, with values as they are stored. Titles and notes stand beside it
/// ("Name.notes.csv"), and so do the sources ("Name.sources.csv").
[[nodiscard]] bool SaveTableCsv(const QString& file, const ShownTable& shown);

/// All values that the table is made of, each with everything that it belongs to, for the forms of values.
class TableValues final {
  public:
    /// Throws nothing; a statement that fails is reported and leaves it empty.
    TableValues();
    [[nodiscard]] int Count() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] const ValueRow& At(int number) const { return rows_[static_cast<std::size_t>(number)]; }

  private:
    std::vector<ValueRow> rows_;
};

/// The kinds of files that a table can be saved as.
[[nodiscard]] std::vector<SaveKind> TableKinds();
/// True for the name of a CSV that has the table as it stands.
[[nodiscard]] bool IsTableCsvName(const QString& file);

} // namespace tessaro
