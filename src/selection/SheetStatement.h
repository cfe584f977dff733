#pragma once

#include <QString>
#include <QStringList>

/// What a printed list of indicators reads, by classification view and mode.
namespace tessaro::selection {

/// Caption keys of the sheet's columns.
[[nodiscard]] QStringList SheetHeads(int view, bool byCombination);
/// The statement: first the columns that show, in the order of the heads, then the GIds of the same columns. `idList`
/// is a list of numbers (by combination) or of GIds in single quotes. The Goals statement of the mode of indicators is
/// one that the engine refuses.
[[nodiscard]] QString SheetStatement(int view, bool byCombination, const QString& idList);

} // namespace tessaro::selection
