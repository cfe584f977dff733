#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace tessaro {

/// The folder of finished presentations; where the application folder can't be written, the user's own in its place.
/// It is made when it is the product's own and missing.
[[nodiscard]] QString GalleryFolder();
/// The folder that is looked through: GalleryFolder, but the application's own as long as the user has nothing in its
/// place.
[[nodiscard]] QString BrowsedFolder();
/// Takes another folder into use, for this session and the preferences.
void SetGalleryFolder(const QString& folder);

/// One line of the browser's list.
struct GalleryEntry {
    QString key;  ///< "F" + name of a folder, "X" + name of a workbook without extension
    QString text; ///< name without ".xls", whatever its case
    QString file; ///< name on the disk
    QChar kind{}; ///< of a workbook, as PresentationKind gives it
    qint64 size = 0;
    QDateTime modified{};

    [[nodiscard]] bool IsFolder() const { return key.startsWith(QLatin1Char('F')); }
};

/// Subfolders and workbooks of a folder, folders first, by name; pipes, devices and links to such are left out. A
/// folder that can't be read gives nothing, and the log tells.
[[nodiscard]] std::vector<GalleryEntry> EntriesOf(const QString& folder);
/// Names of the workbooks of the folder without ".xls", whatever its case, sorted. Subfolders are left out.
[[nodiscard]] QStringList PresentationsOf(const QString& folder);

/// 'T', 'G' or 'M', told by the name of the file, in whatever case: " - table.xls", " - graph.xls", " - map.xls",
/// "table -", "graph -", "map -", the last of these that it holds. A name without any of them is looked through for the
/// words of the current language in the same way. Null when nothing tells.
[[nodiscard]] QChar PresentationKind(const QString& name);
/// All kinds whose words the name holds, each once; the one that decides first.
[[nodiscard]] QList<QChar> PresentationKinds(const QString& name);
/// The word that stands before the names of a kind ("Table", "Graph", "Map"), in the current language.
[[nodiscard]] QString KindWord(QChar type);

/// True when a presentation can have this name: not blank, without \ / : * ? " < > | and control characters, and short
/// enough for a file's name together with kind word and extension.
[[nodiscard]] bool IsPresentationName(const QString& name);
/// folder + kind word + " - " + name + ".Xls".
[[nodiscard]] QString PresentationFile(const QString& folder, QChar type, const QString& name);

/// The folder above one; of a folder that has gone, the nearest one that is there. Empty above the root.
[[nodiscard]] QString FolderAbove(const QString& folder);

} // namespace tessaro
