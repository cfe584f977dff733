#include "platform/Paths.h"

#include "platform/NaturalOrder.h"

#include <QDir>
#include <QFileInfo>

namespace tessaro {

namespace {

QString WithForwardSlashes(QString path) {
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    qsizetype doubled = 0;
    while ((doubled = path.indexOf(QLatin1String("//"), doubled)) >= 0)
        path.remove(doubled, 1);
    return path;
}

QString WithoutFinalSlash(QString path) {
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

/// The entry of `folder` that is spelt `name` in some case; `name` itself when there is none.
QString EntryOf(const QString& folder, const QString& name) {
    if (QFileInfo::exists(folder + name)) return name;
    const QStringList entries =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return entry;
    return name;
}

/// The part of `path` below `folder`; a null text when the path does not lie below it.
QString RelativeTo(const QString& folder, const QString& path) {
    const QString base = WithoutFinalSlash(WithForwardSlashes(folder)) + QLatin1Char('/');
    const QString whole = WithForwardSlashes(path);
    if (folder.isEmpty() || !whole.startsWith(base, Qt::CaseInsensitive)) return {};
    return whole.mid(base.size());
}

/// True when a file of this path can be made or written over: it, or the nearest folder above that exists, takes
/// writes.
bool CanBeWritten(const QString& path) {
    QFileInfo info(path);
    while (!info.exists()) {
        const QString above = info.path();
        if (above == info.filePath()) return false;
        info.setFile(above);
    }
    return info.isWritable();
}

void MakeFolderOf(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
}

} // namespace

QString JoinPath(const QStringList& parts) {
    QString joined;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (parts[i].isEmpty() && i > 0) continue;
        joined += i == 0 ? parts[i] : QLatin1Char('/') + parts[i];
    }
    return WithForwardSlashes(joined);
}

QString FindPath(const QString& path) {
    QString plain = WithForwardSlashes(path);
    if (plain.isEmpty() || QFileInfo::exists(plain)) return plain;
    QString found = plain.startsWith(QLatin1Char('/')) ? QStringLiteral("/") : QString();
    const QStringList components = plain.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < components.size(); ++i) {
        if (i > 0) found += QLatin1Char('/');
        const QString base = found.isEmpty() ? QStringLiteral("./") : found;
        found += EntryOf(base, components[i]);
    }
    return plain.endsWith(QLatin1Char('/')) ? found + QLatin1Char('/') : found;
}

bool FileExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(FindPath(path)).isFile();
}

bool FolderExists(const QString& path) {
    return !path.isEmpty() && QFileInfo(FindPath(path)).isDir();
}

QStringList FilesOf(const QString& folder) {
    if (folder.isEmpty()) return {};
    return InNaturalOrder(QDir(FindPath(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted));
}

bool SamePath(const QString& a, const QString& b) {
    return WithoutFinalSlash(WithForwardSlashes(a))
               .compare(WithoutFinalSlash(WithForwardSlashes(b)), Qt::CaseInsensitive) == 0;
}

QString FileNameOf(const QString& path) {
    const QString plain = WithForwardSlashes(path);
    return plain.mid(plain.lastIndexOf(QLatin1Char('/')) + 1);
}

QString FolderOf(const QString& path) {
    const QString plain = WithForwardSlashes(path);
    const qsizetype last = plain.lastIndexOf(QLatin1Char('/'));
    return last == 0 ? QStringLiteral("/") : plain.left(qMax<qsizetype>(last, 0));
}

QString WritablePlace(const QString& path, const QString& appPath, const QString& cacheFolder) {
    QString place = FindPath(path);
    const QString relative = RelativeTo(appPath, path);
    const bool ours = !relative.isEmpty() && RelativeTo(cacheFolder, path).isEmpty();
    if (!ours || cacheFolder.isEmpty() || CanBeWritten(place)) {
        MakeFolderOf(place);
        return place;
    }
    QString copy = FindPath(JoinPath({cacheFolder, relative}));
    MakeFolderOf(copy);
    return copy;
}

QString ReadablePlace(const QString& path, const QString& appPath, const QString& cacheFolder) {
    const QString relative = RelativeTo(appPath, path);
    if (!relative.isEmpty() && !cacheFolder.isEmpty() && RelativeTo(cacheFolder, path).isEmpty()) {
        QString copy = FindPath(JoinPath({cacheFolder, relative}));
        if (QFileInfo::exists(copy)) return copy;
    }
    return FindPath(path);
}

} // namespace tessaro
