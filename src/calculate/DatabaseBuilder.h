#pragma once

#include "calculate/DataEntry.h"

#include <QString>

/// Makes a database of the result of a calculation.
namespace tessaro {

/// What the builder did.
struct BuiltDatabase {
    bool made = false;
    QString message; ///< what to tell when it was not made, in the language of the program; empty when nothing is to be
                     ///< told
};

/// Writes a result into a new database at `target`: with `withDataView` a fresh one from the template that holds the
/// data in view as well, else a copy of the open database whose data are the result alone. The file is made beside its
/// name and put in place at the end, so that whatever fails leaves what stood there before. `what` says in a line what
/// was calculated from what, for the change log of the new file. The open database is refused ("012").
[[nodiscard]] BuiltDatabase BuildDatabase(const DataEntrySheet& result, bool withDataView, const QString& target,
                                          const QString& what);

} // namespace tessaro
