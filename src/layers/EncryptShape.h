#pragma once

#include <QString>

namespace tessaro {

/// Scrambles a shapefile (mode 'E') or restores it ('D') by changing the sign of its first word, when
/// ENCRYPT_DECRYPT_FILES is on. Files whose second word isn't 1, plain files in mode D and scrambled ones in mode E
/// stay as they are. True when the file was rewritten.
bool EncryptShape(char mode, const QString& path);

/// Deletes TempFolder/MData_ and makes MapFilesFolder anew, empty. False when that fails.
bool MakeMapFilesFolder();

/// A restored copy of a layer in MapFilesFolder, with table, index and the name of its code page. Gives the path of the
/// copy's .shp; empty when that can't be copied.
[[nodiscard]] QString WorkingCopy(const QString& shapeFile);

} // namespace tessaro
