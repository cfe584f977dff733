#pragma once

#include <QString>
#include <QStringList>

/// The statements that read a printed list of indicators, by classification view and mode.
namespace tessaro::selection {

/// Caption keys of the sheet's columns.
[[nodiscard]] QStringList SheetHeads(int view, bool byCombination);
/// The statement: first the columns that show, in the order of the heads, then the GIds of the same columns. `idList`
/// is a list of numbers (by combination) or of GIds in single quotes. In the mode of indicators
/// the statement of the Goals view is invalid SQL, as it has always been.
[[nodiscard]] QString SheetStatement(int view, bool byCombination, const QString& idList);

} // namespace tessaro::selection
