#include "gallery/GalleryFolder.h"

#include "platform/NaturalOrder.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <QDir>

#include <algorithm>

namespace tessaro {

QString BrowsedFolder() {
    const QString own = GalleryFolder();
    const QString product = FindPath(GalleryCustomFolder);
    return own != product && EntriesOf(own).empty() ? product : own;
}

std::vector<GalleryEntry> EntriesOf(const QString& folder) {
    const QDir directory(FindPath(folder));
    if (folder.isEmpty() || !directory.exists() || !directory.isReadable()) {
        LogNote(QStringLiteral("GetPresentationsFromGallery: the folder \"%1\" can't be read").arg(folder));
        return {};
    }
    const KindTeller kinds;
    const QFileInfoList found =
        directory.entryInfoList(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
    std::vector<GalleryEntry> entries;
    entries.reserve(static_cast<std::size_t>(found.size()));
    for (const QFileInfo& info : found) {
        const QString name = info.fileName();
        if (info.isDir())
            entries.push_back({QLatin1Char('F') + name, name, name});
        else if (info.isFile() && name.right(3).compare(QLatin1String("xls"), Qt::CaseInsensitive) == 0)
            entries.push_back({QLatin1Char('X') + info.completeBaseName(), WithoutExtension(name), name,
                               kinds.KindOf(name), info.size(), info.lastModified()});
    }
    const QCollator order = NaturalOrder();
    std::stable_sort(entries.begin(), entries.end(), [&](const GalleryEntry& a, const GalleryEntry& b) {
        return a.IsFolder() != b.IsFolder() ? a.IsFolder() : order.compare(a.file, b.file) < 0;
    });
    return entries;
}

QString FolderAbove(const QString& folder) {
    QDir directory(FindPath(folder));
    if (folder.isEmpty() || directory.isRoot()) return {};
    QString above = FolderOf(directory.absolutePath());
    while (!above.isEmpty() && !FolderExists(above))
        above = FolderOf(above);
    return above.isEmpty() ? QDir::rootPath() : above;
}

} // namespace tessaro
