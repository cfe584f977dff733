#pragma once

#include "office/Error.h"

#include <QString>

#include <functional>

namespace tessaro {

/// What went wrong in the spreadsheet program, in the user's words.
[[nodiscard]] QString OfficeText(const office::Error& error);
/// Writes the failure to the log under a procedure's name and shows its text.
void ShowOfficeError(const office::Error& error, const char* procedureName);

/// Makes a workbook in TempFolder, with the wait pointer, and shows it in frmPrint; TempFolder is emptied afterwards.
/// `make` gives the file's path; an empty one shows nothing. What it throws as office::Error is shown under the
/// procedure's name.
void ShowMadeWorkbook(const char* procedureName, const std::function<QString()>& make);

} // namespace tessaro
