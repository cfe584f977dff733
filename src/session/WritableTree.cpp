#include "session/WritableTree.h"

#include "platform/Files.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "platform/Rights.h"
#include "session/ErrorSink.h"
#include "session/SelectionFile.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Templates.h"

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
    SettleSelectionFile();
    for (const char* name : {"Pref.ini", "UserSelections.mdb", "InfoSel.mdb"})
        Seed(QString::fromLatin1(name));
}

} // namespace tessaro
