#pragma once

#include "office/Error.h"

#include <QString>

namespace tessaro {

/// What went wrong in the spreadsheet program, in the user's words.
[[nodiscard]] QString OfficeText(const office::Error& error);
/// Writes the failure to the log under a procedure's name and shows its text.
void ShowOfficeError(const office::Error& error, const char* procedureName);

} // namespace tessaro
