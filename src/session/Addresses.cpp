#include "session/Addresses.h"

#include "platform/NaturalOrder.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QSet>

namespace tessaro {

namespace {

const QString Extension = QStringLiteral(".mdb");

bool IsMdb(const QString& name) {
    return name.endsWith(Extension, Qt::CaseInsensitive);
}

/// "Local://Product": what every address of the product begins with.
QString AddressHead() {
    return Setting(QStringLiteral("CAPTION FOR LOCAL ADDRESS")) + QLatin1String("://") +
           Setting(QStringLiteral("PRODUCT NAME"));
}

/// The same with the version: what the addresses of this installation begin with.
QString AddressHeadWithVersion() {
    return AddressHead() + QLatin1Char(' ') + Setting(QStringLiteral("PRODUCT VERSION"));
}

/// The file of the data folder with this name in any case; empty when there is none.
QString NameInDataFolder(const QString& name) {
    const QStringList files = FilesOfDataFolder();
    for (const QString& file : files)
        if (file.compare(name, Qt::CaseInsensitive) == 0) return file;
    return {};
}

} // namespace

QString DataFolder() {
    return JoinPath({AppPath, Setting(QStringLiteral("Data Folder"))});
}

QString FileInDataFolder(const QString& fileName) {
    return ReadablePlace(JoinPath({DataFolder(), fileName}), AppPath, CacheFolder);
}

QStringList FilesOfDataFolder() {
    QStringList names = FilesOf(DataFolder());
    const QString own = ReadablePlace(DataFolder(), AppPath, CacheFolder);
    if (own == FindPath(DataFolder())) return names;
    const QStringList ownNames = FilesOf(own);
    for (const QString& name : ownNames)
        if (!names.contains(name, Qt::CaseInsensitive)) names << name;
    return InNaturalOrder(names);
}

QString AddressOfDatabase(const QString& fileName) {
    return AddressHeadWithVersion() + QLatin1Char('/') + fileName;
}

QString PathOfAddress(const QString& address) {
    return FileInDataFolder(FileNameOf(address));
}

bool IsAddress(const QString& text) {
    return text.contains(AddressHead(), Qt::CaseInsensitive);
}

bool IsInDataFolder(const QString& path) {
    const QString folder = FolderOf(path);
    return SamePath(folder, DataFolder()) ||
           SamePath(FindPath(folder), ReadablePlace(DataFolder(), AppPath, CacheFolder));
}

QString ShownAddress(const QString& database) {
    return IsInDataFolder(database) ? AddressOfDatabase(FileNameOf(database)) : database;
}

bool IsNoDatabase(const QString& text) {
    return text.compare(Setting(QStringLiteral("DEFAULT DATABASE")), Qt::CaseInsensitive) == 0;
}

QStringList ListOfDatabases() {
    QStringList addresses;
    const QStringList names = FilesOfDataFolder();
    for (const QString& name : names) {
        const QString upper = name.toUpper();
        if (!upper.contains(QLatin1String("MDB")) || upper == QLatin1String("INFOSEL.MDB") ||
            upper == QLatin1String("GALLERY.MDB"))
            continue;
        addresses << AddressOfDatabase(name);
    }
    return addresses;
}

AddressChanges RescanDataFolder(const QStringList& items) {
    AddressChanges changes;
    QSet<QString> shown;
    for (const QString& item : items)
        shown.insert(item.toLower());
    QSet<QString> present;
    const QStringList names = FilesOfDataFolder();
    for (const QString& name : names) {
        const QString address = AddressOfDatabase(name);
        present.insert(name.toLower());
        if (IsMdb(name) && !shown.contains(address.toLower())) changes.added << address;
    }
    const QString head = AddressHeadWithVersion();
    for (const QString& item : items)
        if (item.startsWith(head, Qt::CaseInsensitive) && !present.contains(FileNameOf(item).toLower()))
            changes.removed << item;
    return changes;
}

TypedDatabase ResolveTypedDatabase(const QString& typed) {
    QString text = typed.trimmed();
    if (text.isEmpty()) return {};
    if (!IsMdb(text)) text += Extension;
    if (IsAddress(text)) return {TypedDatabase::Action::Load, PathOfAddress(text)};
    const QString name = NameInDataFolder(text);
    if (!name.isEmpty()) return {TypedDatabase::Action::SelectAddress, AddressOfDatabase(name)};
    return {TypedDatabase::Action::Load, text};
}

SelectedFile CheckSelectedFile(const QString& path, const QStringList& items) {
    if (!IsMdb(path)) return {SelectedFile::Verdict::NoDatabaseFile, path, {}};
    if (FileExists(path)) return {SelectedFile::Verdict::Good, FindPath(path), {}};
    const QString name = NameInDataFolder(FileNameOf(path));
    if (!name.isEmpty() && items.contains(AddressOfDatabase(name)))
        return {SelectedFile::Verdict::Good, FileInDataFolder(name), AddressOfDatabase(name)};
    return {SelectedFile::Verdict::Missing, path, {}};
}

QString DefaultDatabaseFile() {
    const QString name = Setting(QStringLiteral("DEFAULT DATABASE NAME")).trimmed();
    if (name.isEmpty()) return {};
    const QString path = FileInDataFolder(name);
    return FileExists(path) ? path : QString();
}

} // namespace tessaro
