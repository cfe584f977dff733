#include "session/WritableTree.h"

#include "jet/engine/Connection.h"
#include "platform/Files.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "platform/Rights.h"
#include "session/DatabasePassword.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Templates.h"

#include <QFile>
#include <QFileInfo>

namespace tessaro {

namespace {

void MakeFolder(const QString& folder) {
    if (!MakePrivateFolder(folder))
        ReportError(FileError::PathNotFound,
                    QLatin1String("The folder can't be made, or belongs to another user: ") + folder,
                    QStringLiteral("LocalizeApp"));
}

void Seed(const QString& fileName) {
    const QString target = JoinPath({CacheFolder, fileName});
    if (FileExists(target)) return;
    const QString source = TemplateFile(fileName);
    if (!CopyFileOver(source, target))
        ReportError(FileError::NotFound, QLatin1String("The template can't be copied: ") + source,
                    QStringLiteral("LocalizeApp"));
}

/// The file of the selection is never replaced later on, so a damaged one (a crash of the machine) would take the
/// stages away for good. It is put aside, not deleted.
void PutAsideWhenDamaged(const QString& fileName) {
    const QString path = FindPath(JoinPath({CacheFolder, fileName}));
    if (!FileExists(path)) return;
    try {
        (void)jet::Connection::Open(path.toStdString(), DatabasePassword());
    } catch (const jet::Error& error) {
        const bool damaged =
            error.number() == jet::ErrorNumber::NotADatabase || error.number() == jet::ErrorNumber::WrongPassword;
        if (!damaged) return;
        LogNote(QStringLiteral("%1 is no database and was put aside as %1.damaged").arg(path));
        QFile::remove(path + QLatin1String(".damaged"));
        QFile::rename(path, path + QLatin1String(".damaged"));
    }
}

} // namespace

void LocalizeApp() {
    CacheFolder = JoinPath({WritableRoot(), Setting(QStringLiteral("PRODUCT NAME")) + QLatin1Char(' ') +
                                                Setting(QStringLiteral("PRODUCT VERSION"))});
    TempFolder = JoinPath({CacheFolder, QStringLiteral("Temp")});
    DataCacheFolder = JoinPath({CacheFolder, QStringLiteral("Data")});
    FavoritesFolder = JoinPath({CacheFolder, QStringLiteral("Favorites")});
    for (const QString& folder : {OwnFolder(), CacheFolder, TempFolder, DataCacheFolder, FavoritesFolder})
        MakeFolder(folder);
    NarrowRights(OwnFolder());
    PutAsideWhenDamaged(QStringLiteral("UserSelections.mdb"));
    for (const char* name : {"Pref.ini", "UserSelections.mdb", "InfoSel.mdb"})
        Seed(QString::fromLatin1(name));
}

} // namespace tessaro
