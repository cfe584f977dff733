#include "database/UnfinishedDatabase.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Rights.h"
#include "session/Leftovers.h"
#include "session/Query.h"

#include <QFile>
#include <QFileInfo>

namespace tessaro {

namespace {

/// What the engine puts beside a file while it writes.
constexpr const char* kCompanions[] = {"-journal", "-wal", "-shm"};

QString ResolvedFile(const QString& target) {
    const QFileInfo info(FindPath(target));
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

/// A file that nobody may write to was put there to stay.
bool MayBeReplaced(const QString& target) {
    constexpr auto anyWriter = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QFileInfo info(target);
    return !info.exists() || (info.isFile() && (info.permissions() & anyWriter) != 0);
}

/// Journals that an interrupted run left beside the old file belong to it. They are applied by opening it, so that it
/// is valid if the new file isn't put in place, and then deleted, so that SQLite doesn't apply them to the new file.
void SettleCompanions(const QString& target) {
    bool any = false;
    for (const char* companion : kCompanions)
        any = QFile::exists(target + QLatin1String(companion)) || any;
    if (!any) return;
    (void)CreateTheConnection(target);
    for (const char* companion : kCompanions)
        QFile::remove(target + QLatin1String(companion));
}

} // namespace

UnfinishedDatabase::UnfinishedDatabase(const QString& target)
    : target_(ResolvedFile(target)), path_(UnfinishedName(target_)) {
    ClearUnfinished(target_);
    Remove();
}

UnfinishedDatabase::~UnfinishedDatabase() {
    Remove();
}

bool UnfinishedDatabase::Finish() {
    if (!MayBeReplaced(target_)) return false;
    GiveUsersRights(path_);
    SettleCompanions(target_);
    return PutInPlace(path_, target_);
}

void UnfinishedDatabase::Remove() const {
    for (const char* beside : {"", ".copying", ".new"}) {
        const QString file = path_ + QLatin1String(beside);
        QFile::remove(file);
        for (const char* companion : kCompanions)
            QFile::remove(file + QLatin1String(companion));
    }
}

} // namespace tessaro
