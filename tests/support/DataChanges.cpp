#include "support/DataChanges.h"

#include "platform/Paths.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QTemporaryDir>

#include <sqlite3.h>

namespace tessaro::test {

namespace {

/// The session's working database once more, with every link open for writing.
std::shared_ptr<jet::Connection> WritableLinks(const QString& folder) {
    const std::string file = JoinPath({folder, QStringLiteral("Links.mdb")}).toStdString();
    jet::Database::Copy(Connection->path(), file);
    sqlite3* plain = nullptr;
    if (sqlite3_open(file.c_str(), &plain) == SQLITE_OK)
        sqlite3_exec(plain, "UPDATE MSysLinks SET Writable = 1", nullptr, nullptr, nullptr);
    sqlite3_close(plain);
    return jet::Connection::Open(file, DatabasePassword(), jet::Use::Working);
}

} // namespace

void ChangeData(const QString& sql) {
    try {
        Connection->Execute(sql.toStdString());
    } catch (const jet::Error& error) {
        if (error.number() != jet::ErrorNumber::ReadOnly) throw;
        const QTemporaryDir folder;
        WritableLinks(folder.path())->Execute(sql.toStdString());
    }
}

} // namespace tessaro::test
