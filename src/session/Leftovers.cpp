#include "session/Leftovers.h"

#include "platform/Paths.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/JetCopies.h"
#include "session/Session.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace tessaro {

namespace {

/// What the engine puts beside a file while it writes.
const QString Companions = QStringLiteral("(\\.copying)?(-journal|-wal|-shm)?$");

/// True when no process has this id, or the name holds none.
bool IsProcessGone(const QString& id) {
    return id.isEmpty() || (::kill(static_cast<pid_t>(id.toLongLong()), 0) != 0 && errno == ESRCH);
}

/// Removes the files whose whole name matches; a group "pid" names the process that makes such a file.
void RemoveMatching(const QString& folder, const QString& pattern) {
    const QRegularExpression expression(QLatin1Char('^') + pattern, QRegularExpression::CaseInsensitiveOption);
    const QDir place(folder);
    const QStringList names = place.entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString& name : names) {
        const QRegularExpressionMatch match = expression.match(name);
        if (!match.hasMatch() || !IsProcessGone(match.captured(QStringLiteral("pid")))) continue;
        if (QFile::remove(place.filePath(name)))
            LogNote(QLatin1String("an earlier run left this half-made; it was removed: ") + place.filePath(name));
    }
}

/// The beginning of the names under which a file is made. Most disks take 255 bytes; the engine adds some of its own.
QString UnfinishedStem(const QString& file) {
    constexpr qsizetype most = 200;
    QString name = FileNameOf(file);
    while (QFile::encodeName(name).size() > most)
        name.chop(1);
    return name;
}

} // namespace

QString UnfinishedName(const QString& file) {
    return JoinPath({FolderOf(file), QStringLiteral("%1.%2.part").arg(UnfinishedStem(file)).arg(::getpid())});
}

void ClearUnfinished(const QString& file) {
    RemoveMatching(FolderOf(file), QRegularExpression::escape(UnfinishedStem(file)) +
                                       QStringLiteral("\\.(?<pid>\\d+)\\.part") + Companions);
}

void ClearLeftovers() {
    // Earlier versions named no process in the half-made files of favourites.
    RemoveMatching(FavoritesFolder, QStringLiteral(".*\\.mdb(\\.(?<pid>\\d+))?\\.part") + Companions);
    RemoveMatching(FolderOfJetCopies(), QStringLiteral(".*\\.mdb\\.(?<pid>\\d+)\\.part") + Companions);
    for (const QString& folder : {FindPath(DataFolder()), ReadablePlace(DataFolder(), AppPath, CacheFolder)})
        RemoveMatching(folder, QStringLiteral(".*\\.mdb\\.(?<pid>\\d+)\\.part") + Companions);
    RemoveMatching(CacheFolder,
                   QStringLiteral("(Pref\\.ini|UserSelections\\.mdb|InfoSel\\.mdb)\\.(new|[A-Za-z]{6})(?<pid>)$"));
}

} // namespace tessaro
