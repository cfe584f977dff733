#pragma once

#include <QString>

namespace tessaro {

/// The state of a database before the last import into it, which is kept beside it under this name.
[[nodiscard]] QString FileBeforeImport(const QString& database);
/// Keeps the present state of a database for an undo, in place of an earlier one. False when the disk doesn't take it.
[[nodiscard]] bool KeepBeforeImport(const QString& database);
/// Whether a state is kept, without a look into the files.
[[nodiscard]] bool KeepsStateBeforeImport(const QString& database);
/// Whether the last change of the database is an import that can be taken back.
[[nodiscard]] bool CanUndoImport(const QString& database);
/// Puts the state before the last import in place. No connection may be open to the database. False when that can't be
/// done: it stays as it is.
[[nodiscard]] bool UndoImport(const QString& database);

} // namespace tessaro
