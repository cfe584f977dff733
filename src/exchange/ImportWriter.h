#pragma once

#include "exchange/ImportCheck.h"

namespace tessaro {

/// What became of an import.
struct WrittenImport {
    bool made = false;
    QString message; ///< why not, in the language of the program; empty when the user gave it up
};

/// Writes a checked import: the database is made beside its name and put in place at the end, so that whatever fails
/// leaves what stood there. Marks are made anew, the change log is told. Into the open database itself nothing is
/// written while it is read: its file is replaced, and whoever has it open must open it again. What is out of date
/// since the check is refused.
[[nodiscard]] WrittenImport WriteImport(CheckedImport& checked, const ImportProgress& progress = {});

} // namespace tessaro
