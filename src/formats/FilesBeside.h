#pragma once

#include "formats/ValueTable.h"

#include <QByteArray>

/// Files beside a file of values, for what that has no room for.
namespace tessaro {

/// "Name.notes.csv" for "Name.wide.csv" and "notes": in the same folder.
[[nodiscard]] QString NameBeside(const QString& file, const char* what);
/// The same table; lines of the rows that have footnotes are added to `notes` as it is read. Both are borrowed.
[[nodiscard]] ValueTable WithNotesIn(const ValueTable& table, QByteArray& notes);
/// Writes them with heads into the file of notes beside this one. Without any it writes none.
[[nodiscard]] bool SaveNotes(const QString& file, const QByteArray& notes);

} // namespace tessaro
