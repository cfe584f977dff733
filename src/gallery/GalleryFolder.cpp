#include "gallery/GalleryFolder.h"

#include "platform/NaturalOrder.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/FileNames.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace tessaro {

namespace {

constexpr qsizetype kLongestName = 200; ///< bytes of a name; kind word and extension come on top

const QString kExtension = QStringLiteral(".xls");

QString WithoutExtension(const QString& file) {
    return file.endsWith(kExtension, Qt::CaseInsensitive) ? file.chopped(kExtension.size()) : file;
}

/// The kinds in the order of their tests, each with its word.
using KindWords = std::array<std::pair<QChar, QString>, 3>;

const KindWords& FixedWords() {
    static const KindWords words{{{QLatin1Char('T'), QStringLiteral("table")},
                                  {QLatin1Char('G'), QStringLiteral("graph")},
                                  {QLatin1Char('M'), QStringLiteral("map")}}};
    return words;
}

KindWords WordsOfLanguage() {
    KindWords words = FixedWords();
    for (auto& [kind, word] : words)
        word = KindWord(kind).toLower();
    return words;
}

/// The kinds whose tests match, the last one first; words at the end of the name are tested before those at its
/// beginning.
QList<QChar> KindsBy(const KindWords& words, const QString& lowerName) {
    QList<QChar> found;
    const auto note = [&](QChar kind, const QString& part) {
        if (!lowerName.contains(part)) return;
        found.removeOne(kind);
        found.prepend(kind);
    };
    for (const auto& [kind, word] : words)
        note(kind, QStringLiteral(" - ") + word + kExtension);
    for (const auto& [kind, word] : words)
        note(kind, word + QStringLiteral(" -"));
    return found;
}

QList<QChar> KindsBy(const KindWords& wordsOfLanguage, const KindWords& fixedWords, const QString& name) {
    const QString lower = name.toLower();
    const QList<QChar> kinds = KindsBy(fixedWords, lower);
    return kinds.isEmpty() ? KindsBy(wordsOfLanguage, lower) : kinds;
}

} // namespace

QString GalleryFolder() {
    if (!GalleryCustomFolder.startsWith(AppPath, Qt::CaseInsensitive)) return GalleryCustomFolder; // the user's own
    // Asking for a place within the folder finds out whether the folder itself can be written.
    const QString probe = WritablePlace(JoinPath({GalleryCustomFolder, QStringLiteral("-")}), AppPath, CacheFolder);
    const QString folder = FolderOf(probe);
    return FolderExists(folder) ? FindPath(folder) : GalleryCustomFolder;
}

QString BrowsedFolder() {
    const QString own = GalleryFolder();
    const QString product = FindPath(GalleryCustomFolder);
    return own != product && EntriesOf(own).empty() ? product : own;
}

void SetGalleryFolder(const QString& folder) {
    GalleryCustomFolder = folder;
}

std::vector<GalleryEntry> EntriesOf(const QString& folder) {
    const QDir directory(FindPath(folder));
    if (folder.isEmpty() || !directory.exists() || !directory.isReadable()) {
        LogNote(QStringLiteral("GetPresentationsFromGallery: the folder \"%1\" can't be read").arg(folder));
        return {};
    }
    const KindWords words = WordsOfLanguage();
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
                               KindsBy(words, FixedWords(), name).value(0), info.size(), info.lastModified()});
    }
    const QCollator order = NaturalOrder();
    std::stable_sort(entries.begin(), entries.end(), [&](const GalleryEntry& a, const GalleryEntry& b) {
        return a.IsFolder() != b.IsFolder() ? a.IsFolder() : order.compare(a.file, b.file) < 0;
    });
    return entries;
}

QStringList PresentationsOf(const QString& folder) {
    QStringList names;
    for (const GalleryEntry& entry : EntriesOf(folder))
        if (!entry.IsFolder() && entry.file.endsWith(kExtension, Qt::CaseInsensitive)) names << entry.text;
    return names;
}

QChar PresentationKind(const QString& name) {
    return PresentationKinds(name).value(0);
}

QList<QChar> PresentationKinds(const QString& name) {
    return KindsBy(WordsOfLanguage(), FixedWords(), name);
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
    return GetText(key).remove(QLatin1Char('&'));
}

QString PresentationFile(const QString& folder, QChar type, const QString& name) {
    return JoinPath({folder, KindWord(type) + QStringLiteral(" - ") + name.trimmed() + QStringLiteral(".Xls")});
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
