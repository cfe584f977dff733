#pragma once

#include <QChar>
#include <QString>
#include <QStringList>

namespace tessaro {

/// The folder of finished presentations; where the application folder can't be written, the user's own in its place.
/// It is made when it is the product's own and missing.
[[nodiscard]] QString GalleryFolder();
/// Takes another folder into use, for this session and the preferences.
void SetGalleryFolder(const QString& folder);

/// Names of the workbooks of the folder without ".xls", whatever its case, sorted. Subfolders are left out.
[[nodiscard]] QStringList PresentationsOf(const QString& folder);
/// True when a presentation can have this name: not blank, without \ / : * ? " < > | and control characters, and short
/// enough for a file's name together with kind word and extension.
[[nodiscard]] bool IsPresentationName(const QString& name);
/// The key of the word that stands before the names of a kind: 'T' "Table", 'G' "Graph", 'M' "Map".
[[nodiscard]] QString KindWord(QChar type);
/// folder + kind word + " - " + name + ".Xls".
[[nodiscard]] QString PresentationFile(const QString& folder, QChar type, const QString& name);

} // namespace tessaro
