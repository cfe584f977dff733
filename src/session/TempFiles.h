#pragma once

#include <QString>

/// Names of files in TempFolder.
namespace tessaro {

/// Path of a free workbook in a folder (TempFolder when it is empty): stem + ".xls", where the stem grows by "_0", "_1"
/// … as long as such a file exists.
[[nodiscard]] QString GetFreeFileName(const QString& stem, const QString& folder = {});
/// Deletes the files of TempFolder one by one; those that can't be deleted stay.
void ClearTempFolder();

} // namespace tessaro
