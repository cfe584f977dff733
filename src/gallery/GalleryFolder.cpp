#include "gallery/GalleryFolder.h"

#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QDir>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qsizetype kLongestName = 200; ///< bytes of a name; kind word and extension come on top

bool IsForbidden(QChar c) {
    return c.unicode() < 32 || c.unicode() == 127 || QStringLiteral("\\/:*?\"<>|").contains(c);
}

} // namespace

QString GalleryFolder() {
    if (!GalleryCustomFolder.startsWith(AppPath, Qt::CaseInsensitive)) return GalleryCustomFolder; // the user's own
    // Asking for a place within the folder finds out whether the folder itself can be written.
    const QString probe = WritablePlace(JoinPath({GalleryCustomFolder, QStringLiteral("-")}), AppPath, CacheFolder);
    const QString folder = FolderOf(probe);
    return FolderExists(folder) ? FindPath(folder) : GalleryCustomFolder;
}

void SetGalleryFolder(const QString& folder) {
    GalleryCustomFolder = folder;
}

QStringList PresentationsOf(const QString& folder) {
    QStringList names;
    for (const QString& file : FilesOf(folder))
        if (file.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive)) names << file.chopped(4);
    return names;
}

bool IsPresentationName(const QString& name) {
    const QString trimmed = name.trimmed();
    return !trimmed.isEmpty() && trimmed.toUtf8().size() <= kLongestName &&
           std::none_of(trimmed.begin(), trimmed.end(), IsForbidden);
}

QString KindWord(QChar type) {
    const QString key = type == QLatin1Char('G')   ? QStringLiteral("Graph")
                        : type == QLatin1Char('M') ? QStringLiteral("GALLERY Map")
                                                   : QStringLiteral("Table");
    return GetText(key).remove(QLatin1Char('&'));
}

QString PresentationFile(const QString& folder, QChar type, const QString& name) {
    return JoinPath({folder, KindWord(type) + QStringLiteral(" - ") + name.trimmed() + QStringLiteral(".Xls")});
}

} // namespace tessaro
