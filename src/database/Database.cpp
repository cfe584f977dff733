#include "database/Database.h"

#include "database/JetImport.h"
#include "database/Links.h"
#include "database/OpenRefusal.h"
#include "database/Schema.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/JetCopies.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Templates.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace tessaro {

namespace {

/// The code of the language that the Language table marks as default; empty when no row does.
QString DefaultLanguageCode(jet::Connection& connection) {
    Records rows = Select(QStringLiteral("SELECT LanguageCode FROM [Language] WHERE LanguageDefault = True"),
                          jet::CursorType::Static, &connection);
    return rows.atEnd() ? QString() : rows.Text(std::size_t{0});
}

/// The required tables that the database lacks. Tables of the program's own ("_Data") stand in for none.
QStringList MissingTables(const jet::Connection& connection, const QString& code) {
    const std::vector<jet::TableInfo> tables = connection.Tables();
    QStringList missing;
    for (const std::string& name : schema::RequiredTables(code.toStdString())) {
        const bool isThere = std::ranges::any_of(tables, [&](const jet::TableInfo& table) {
            return table.type == jet::TableType::Table && jet::SameName(name, table.name);
        });
        if (!isThere) missing << QString::fromStdString(name);
    }
    return missing;
}

/// A file that was asked for as a data database: a connection to it, or why it is refused.
struct Candidate {
    std::shared_ptr<jet::Connection> connection;
    QString reason;
    bool stopped = false; ///< the user has stopped its copying: nothing is told
};

Candidate Refused(const QString& reason) {
    return {nullptr, reason, false};
}

/// Whether the open database has what a data database must have.
Candidate Checked(std::shared_ptr<jet::Connection> connection) {
    const QString code = DefaultLanguageCode(*connection);
    if (code.isEmpty()) return Refused(FilledText(QStringLiteral("TS_NoDefaultLanguage"), {}));
    QStringList missing;
    if (!ErrorTrap("InValidFile").Try([&] { missing = MissingTables(*connection, code); })) return Refused({});
    if (missing.isEmpty()) return {std::move(connection), {}, false};
    return Refused(FilledText(QStringLiteral("TS_TablesMissing"), {missing.join(QStringLiteral(", "))}));
}

Candidate OpenDataDatabase(const QString& path, const CopyProgress& goOn) {
    const ErrorTrap trap("InValidFile");
    if (IsGenuineJetFile(path)) {
        const JetImportResult import = ImportJetFile(path, goOn);
        if (import.outcome == JetImport::Stopped) return {nullptr, {}, true};
        if (import.outcome == JetImport::Refused) return Refused(import.reason);
    }
    OpenedFile file = OpenFile(path);
    if (file.connection) return Checked(std::move(file.connection));
    return Refused(file.refusal ? ReasonInWords(*file.refusal) : FilledText(QStringLiteral("TS_NotADatabase"), {}));
}

void Refuse(const QString& path, const Candidate& candidate) {
    if (candidate.stopped) return LogNote(QLatin1String("the user stopped the copying of ") + path);
    LogNote(QStringLiteral("refused as a data database: %1: %2").arg(path, candidate.reason));
    ShowMessageWithReason(QStringLiteral("316"), candidate.reason, MessageIcon::Refused);
}

bool ConnectionIsOpen() {
    return Connection && Connection->isOpen();
}

/// Replaces the working database by a fresh copy of the template; False when it can't be written. The old file stays
/// while Connection is open on it (the caller then replaces its links), and when there is no template.
bool RenewWorkingDatabase() {
    if (ConnectionIsOpen()) return true;
    const QString target = FindPath(JoinPath({CacheFolder, QStringLiteral("InfoSel.mdb")}));
    const QString source = TemplateFile(QStringLiteral("InfoSel.mdb"));
    if (!FileExists(source)) {
        LogNote(QLatin1String("the template of the working database is missing: ") + source);
        return true;
    }
    // What a broken run left beside the old file must not be taken for the new one's.
    for (const char* companion : {"-journal", "-wal", "-shm"})
        QFile::remove(target + QLatin1String(companion));
    if (CopyPassingFile(source, target)) return true;
    ReportError(FileError::PermissionDenied, QLatin1String("The working database can't be written: ") + target,
                QStringLiteral("OpenDatabaseFile"));
    return false;
}

/// Takes CurrentDatabase into use. False when the working database can't be written; Connection stays as it was.
bool UseDatabase(std::shared_ptr<jet::Connection> data) {
    if (!RenewWorkingDatabase()) return false;
    const bool wasOpen = ConnectionIsOpen();
    std::shared_ptr<jet::Connection> working = wasOpen ? Connection : ConnectWorkingDatabase();
    if (!working || LinkAllTablesinInfoSel(std::move(data), working) == LinkResult::NotWritten) return false;
    if (wasOpen) working = ConnectWorkingDatabase();
    if (!working) return false;
    Connection = std::move(working);
    return true;
}

} // namespace

bool InValidFile(const QString& path, const CopyProgress& goOn) {
    const Candidate candidate = OpenDataDatabase(path, goOn);
    if (candidate.connection) return false;
    Refuse(path, candidate);
    return true;
}

bool OpenDatabaseFile(const QString& path, const CopyProgress& goOn) {
    Candidate candidate = OpenDataDatabase(path, goOn);
    if (!candidate.connection) {
        Refuse(path, candidate);
        return false;
    }
    const ErrorTrap trap("OpenDatabaseFile");
    const QString before = CurrentDatabase;
    CurrentDatabase = path; // which may be CurrentDatabase itself
    if (UseDatabase(std::move(candidate.connection))) return true;
    CurrentDatabase = before;
    ShowFilledMessage(QStringLiteral("TS_NoRoomToOpen"), {CacheFolder}, MessageIcon::Note);
    return false;
}

} // namespace tessaro
