#include "shell/Favourite.h"

#include "database/DataExists.h"
#include "database/UnfinishedDatabase.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/FileNames.h"
#include "session/Frame.h"
#include "session/JetCopies.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace tessaro {

namespace {

const QString Extension = QStringLiteral(".mdb");

/// A database of links for the statement that fills the copy. The session's own working database can't be used: a query
/// may still be open on Connection, and its links are for reading only.
std::shared_ptr<jet::Connection> MakeLinks(const QString& folder, const QString& copy) {
    const std::string file = JoinPath({folder, QStringLiteral("Links.mdb")}).toStdString();
    jet::Database::Create(file, DatabasePassword());
    auto links = jet::Connection::Open(file, DatabasePassword(), jet::Use::Working);
    const std::string selections = JoinPath({CacheFolder, QStringLiteral("UserSelections.mdb")}).toStdString();
    for (const char* table : {"_SelIUSNId", "_SelArea", "_SelTimePeriod"})
        links->CreateLink(table, FindPath(QString::fromStdString(selections)).toStdString(), DatabasePassword(), table);
    links->CreateLink("Data", FileToOpen(CurrentDatabase).toStdString(), DatabasePassword(), "Data");
    links->CreateLink("_FavouriteData", copy.toStdString(), DatabasePassword(), "Data", jet::LinkAccess::Write);
    return links;
}

void EmptyData(const QString& copy) {
    jet::Connection::Open(copy.toStdString(), DatabasePassword())->Execute("DELETE * FROM Data");
}

void CopyRows(const QString& copy, const RowsInView& rows) {
    const QTemporaryDir folder(JoinPath({TempFolder, QStringLiteral("Favourite-XXXXXX")}));
    const auto links = MakeLinks(folder.path(), copy);
    if (rows.filters.MissingDataOn && !MakeMissingDataTable(links.get()))
        throw std::runtime_error("The cells without a value can't be listed.");
    links->Execute((QStringLiteral("INSERT INTO [_FavouriteData] (TimePeriodNId, IUSNId, AreaNId, SourceNId, "
                                   "FootnoteNId, Datavalue) ") +
                    FavouriteStatement(rows))
                       .toStdString());
}

void MakeCopy(const QString& copy, const RowsInView& rows) {
    Frame& frame = TheFrame();
    jet::Database::Copy(FileToOpen(CurrentDatabase).toStdString(), copy.toStdString());
    frame.SetProgress(30);
    EmptyData(copy);
    frame.SetProgress(40);
    CopyRows(copy, rows);
    frame.SetProgress(90);
}

/// Marks what has data, then compacts the file: the deleted rows have left free pages.
bool Complete(const QString& copy, ErrorTrap& trap) {
    const auto progress = [](int percent) { TheFrame().SetProgress(90 + percent / 10); };
    const bool made = MarkDataExists(copy, progress) && trap.Try([&] { jet::Database::Compact(copy.toStdString()); });
    TheFrame().SetProgress(100);
    return made;
}

QString ShippedFolder() {
    const QString name = Setting(QStringLiteral("Favorite Folder"));
    return name.trimmed().isEmpty() ? QString() : JoinPath({AppPath, name});
}

} // namespace

QStringList FavouriteFiles() {
    QStringList names = FilesOf(FavoritesFolder);
    names.removeIf([](const QString& name) { return !name.endsWith(Extension, Qt::CaseInsensitive); });
    return names;
}

QString FavouritePath(const QString& name) {
    const bool complete = name.endsWith(Extension, Qt::CaseInsensitive); // "x.mdb copy" becomes "x.mdb copy.mdb"
    return JoinPath({FavoritesFolder, complete ? name : QString(name + Extension)});
}

QStringList FavouritePaths() {
    QStringList paths;
    const QStringList own = FavouriteFiles();
    for (const QString& name : own)
        paths << FavouritePath(name);
    const QString shipped = ShippedFolder();
    const QStringList names = FilesOf(shipped);
    for (const QString& name : names)
        if (name.endsWith(Extension, Qt::CaseInsensitive)) paths << FindPath(JoinPath({shipped, name}));
    return paths;
}

bool IsOpenFavourite(const QString& fileName) {
    return SamePath(FavouritePath(fileName), CurrentDatabase);
}

bool RemoveFavourite(const QString& fileName) {
    const QString path = FavouritePath(fileName);
    return !FileExists(path) || QFile::remove(path);
}

FavouriteResult MakeFavourite(const QString& name, const RowsInView& rows) {
    ErrorTrap trap("cmdOk_Click");
    const QString wanted = name.trimmed();
    if (wanted.isEmpty() || CleanFileName(wanted) != wanted) return FavouriteResult::BadName;
    const QString path = FavouritePath(wanted);
    if (FileExists(path) || FolderExists(path)) return FavouriteResult::Taken;
    UnfinishedDatabase file(path);
    TheFrame().StartProgress();
    const bool copied = trap.Try([&] { MakeCopy(file.Path(), rows); });
    const bool made = copied && Complete(file.Path(), trap) && file.Finish();
    TheFrame().EndProgress();
    return made ? FavouriteResult::Made : FavouriteResult::Failed;
}

} // namespace tessaro
