#pragma once

#include "session/Presentations.h"

#include <QChar>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

/// What the gallery finds on the disk.
namespace tessaro {

/// The folder that the gallery shows first: GalleryFolder, or the samples of the application folder as long as the
/// user's own place is empty.
[[nodiscard]] QString BrowsedFolder();
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
/// folder that can't be read gives an empty list and a line in the log.
[[nodiscard]] std::vector<GalleryEntry> EntriesOf(const QString& folder);
/// The parent folder; for a folder that no longer exists, the nearest parent that does. Empty for the root.
[[nodiscard]] QString FolderAbove(const QString& folder);

} // namespace tessaro
