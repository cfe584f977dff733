#pragma once

#include "office/Workbook.h"
#include "presentation/RowsColumns.h"
#include "wizards/WizardProgress.h"

#include <QString>

/// How the making of a table or graph went, and the name of its file.
namespace tessaro {

/// How ShowXLS ended. Anything but Built leaves no workbook.
enum class ShowResult {
    Built,
    NoRows,           ///< nothing stands on the rows: key "253"
    NoYAxis,          ///< nothing is left for the Y axis
    NoData,           ///< key "256"
    TemplateMissing,  ///< key "011"
    TooManyColumns,   ///< the crosstab would have `count` columns; `field` is the one to move to the rows
    NothingToCompare, ///< a scatter chart without two columns of values or times along its axis
    GivenUp,          ///< the user would rather not have it; nothing is told
    TooManyRows       ///< the table would have `count` rows
};
struct ShowOutcome {
    ShowResult result = ShowResult::Built;
    QString WorkbookFile = {};
    int count = 0;
    PivotField field = PivotField::Indicator;
    /// Values that share a cell with one that is shown, since the data tells them apart in no field. Only the list of
    /// all values has them.
    int hidden = 0;
    QString SuggestedName = {}; ///< for the gallery, where the file's own name says too little

    /// The key of the message for the user; empty for Built and for what Message tells.
    [[nodiscard]] QString MessageKey() const;
    /// The text of a message with numbers in it (also for Built, when values are hidden); empty for all others.
    [[nodiscard]] QString Message() const;
};

/// A title as part of a file's name: without ".xls", with "_" for characters that names can't have, not too long for
/// any disk; `fallback` when nothing is left.
[[nodiscard]] QString CleanedTitle(const QString& title, const QString& fallback);
/// Most rows of a table; below it notes and sources must find room.
constexpr int kMostTableRows = 60000;

} // namespace tessaro
