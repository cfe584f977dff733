#pragma once

#include "calculate/CalculationDraft.h"
#include "calculate/WorkingTables.h"
#include "office/CellStyle.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// What a calculation gives: the rows, formulas and remarks of its log, as data that a workbook is written from.
namespace tessaro {

/// Cells that are written at once, from this place on. Rows and columns are counted from 1.
struct LogBlock {
    int row = 1;
    int column = 1;
    office::Block cells;
};

/// Formulas in a column of the area rows, from the first of these rows on.
struct LogFormulas {
    int column = 1;
    std::vector<QString>
        formulas;         ///< one that is filled down, or one for each row, where an empty one leaves the value
    QString numberFormat; ///< of the whole column, in English codes; empty: as it is
    bool rounded = false; ///< each is wrapped in ROUND to the draft's decimals once all are filled
};

/// What one sheet of a log holds below its header.
struct LogSheet {
    std::vector<LogBlock> blocks; ///< headings and rows, values computed by the program
    int headRow = 0;              ///< first row of the headings
    int firstRow = 0;             ///< the rows of areas; 0 when there are none
    int lastRow = 0;
    int lastColumn = 0;
    int printedColumns = 0; ///< those that come on paper; 0: all
    std::vector<LogFormulas> formulas;
    std::vector<int> textColumns;                          ///< number format "@", set before the values come
    std::vector<std::pair<int, office::Align>> alignments; ///< by column

    /// The cells that stand in a column of the area rows.
    [[nodiscard]] office::Cell Value(int row, int column) const;
};

/// One result, as the data-entry sheet has it and the new database takes it.
struct DataEntryRow {
    QString timePeriod;
    QString areaId;
    QString areaName;
    QString value; ///< with a decimal point
    QString subpop;
    QString source;

    bool operator==(const DataEntryRow&) const = default;
};
/// What a result is of: its time, area, subgroup and source, without regard to case. Of several results of the same the
/// first one counts.
[[nodiscard]] QString KeyOf(const DataEntryRow& row);

/// A result whose value is read back from the first sheet of the log, where the user may have changed it.
struct LogResult {
    DataEntryRow row; ///< with the value that the program computed; an empty one was left out, and counts only when
                      ///< the log holds a number other than 0 by now
    int sheetRow = 0; ///< where it stands in the log's first sheet; 0: nowhere, the computed value counts
    int sheetColumn = 0;
};

/// A calculation: the two sheets that show the working, and its results. Made from the working tables and a draft,
/// without a spreadsheet program.
struct CalculationLog {
    LogSheet working;
    LogSheet detail;
    /// Composite index: the ranks of the first areas by index, now and after each change of a weight by ten points, as
    /// formulas. Columns 1 and 2 are the area, 3 to 5 its rank now and the best and the worst of all its ranks.
    std::optional<LogSheet> ranks;
    std::vector<LogResult> results;
    /// Areas (or totals) that need a word, with the reason: left out, or made from unlike parts. Id, name, reason.
    std::vector<QStringList> remarks;
    QString failure; ///< why there is none, in the language of the program; empty when there is one
};

/// Calculates from `_Data`. A statement that fails is reported, and `failure` names the value or the cause. Leaves no
/// working table of its own behind.
[[nodiscard]] CalculationLog Calculate(const CalculationDraft& draft, const Progress& progress = {});

} // namespace tessaro
