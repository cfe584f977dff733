#include "session/Presentations.h"

#include "platform/Paths.h"
#include "session/FileNames.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

constexpr qsizetype kLongestName = 200; ///< bytes of a name; kind word and extension come on top

const QString kExtension = QStringLiteral(".xls");

/// The kinds in the order of their tests, and the words that tell them.
constexpr std::array<char, 3> kKinds{'T', 'G', 'M'};
const QStringList& FixedWords() {
    static const QStringList words{QStringLiteral("table"), QStringLiteral("graph"), QStringLiteral("map")};
    return words;
}

/// The kinds found in a file name, the likeliest first. "X -" at the beginning is tested last and so comes before
/// " - X.xls" at the end.
QList<QChar> KindsBy(const QStringList& words, const QString& lowerName) {
    QList<QChar> found;
    const auto test = [&](const QString& before, const QString& after) {
        for (qsizetype n = 0; n < words.size(); ++n) {
            const QChar kind = QLatin1Char(kKinds.at(static_cast<std::size_t>(n)));
            if (!lowerName.contains(before + words.at(n) + after)) continue;
            found.removeOne(kind);
            found.prepend(kind);
        }
    };
    test(QStringLiteral(" - "), kExtension);
    test({}, QStringLiteral(" -"));
    return found;
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
    const QDir directory(FindPath(folder));
    QStringList names;
    for (const QString& file : FilesOf(folder))
        if (file.endsWith(kExtension, Qt::CaseInsensitive) && QFileInfo(directory, file).isFile())
            names << WithoutExtension(file);
    return names;
}

KindTeller::KindTeller() {
    for (const char kind : kKinds)
        words_ << KindWord(QLatin1Char(kind)).toLower();
}

QList<QChar> KindTeller::KindsOf(const QString& name) const {
    const QString lower = name.toLower();
    const QList<QChar> kinds = KindsBy(FixedWords(), lower);
    return kinds.isEmpty() ? KindsBy(words_, lower) : kinds;
}

QChar PresentationKind(const QString& name) {
    return KindTeller().KindOf(name);
}

QList<QChar> PresentationKinds(const QString& name) {
    return KindTeller().KindsOf(name);
}

QString WithoutExtension(const QString& file) {
    return file.endsWith(kExtension, Qt::CaseInsensitive) ? file.chopped(kExtension.size()) : file;
}

bool IsPresentationName(const QString& name) {
    const QString trimmed = name.trimmed();
    return !trimmed.isEmpty() && trimmed.toUtf8().size() <= kLongestName &&
           std::none_of(trimmed.begin(), trimmed.end(), IsForbiddenInFileName);
}

QString KindWord(QChar type) {
    const QString key = type == QLatin1Char('G')   ? QStringLiteral("Graph")
                        : type == QLatin1Char('M') ? QStringLiteral("GALLERY Map")
                                                   : QStringLiteral("Table");
    return PlainText(key);
}

QString PresentationFile(const QString& folder, QChar type, const QString& name) {
    return JoinPath({folder, KindWord(type) + QStringLiteral(" - ") + name.trimmed() + QStringLiteral(".Xls")});
}

} // namespace tessaro
