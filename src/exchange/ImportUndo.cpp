#include "exchange/ImportUndo.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Query.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace tessaro {

namespace {

/// The number of the last line of the change log; -1 when the file can't be read.
qint64 LastLogLine(const QString& database) {
    ErrorTrap trap("CanUndoImport");
    const auto connection = CreateTheConnection(database);
    if (!connection) return -1;
    const Records rows =
        Select(QStringLiteral("SELECT Max(Databaseid) FROM Database_Log"), jet::CursorType::Static, connection.get());
    return rows.isOpen() && !rows.atEnd() ? rows.Number(std::size_t{0}) : -1;
}

/// The file itself where the path leads to it by links, or in another case.
QString FileItself(const QString& database) {
    const QString found = FindPath(database);
    const QString real = QFileInfo(found).canonicalFilePath();
    return real.isEmpty() ? found : real;
}

} // namespace

QString FileBeforeImport(const QString& database) {
    return FileItself(database) + QStringLiteral(".before-import");
}

bool KeepBeforeImport(const QString& database) {
    const QString kept = FileBeforeImport(database);
    QFile::remove(kept);
    // A second name costs nothing: the new file takes the first one.
    const QString file = FileItself(database);
    if (::link(QFile::encodeName(file).constData(), QFile::encodeName(kept).constData()) == 0) return true;
    return CopyFileOver(file, kept);
}

bool KeepsStateBeforeImport(const QString& database) {
    return QFile::exists(FileBeforeImport(database));
}

// An import adds one line to the log: what was kept is the state before it when it lacks just that line.
bool CanUndoImport(const QString& database) {
    if (!KeepsStateBeforeImport(database)) return false;
    const qint64 before = LastLogLine(FileBeforeImport(database));
    return before >= 0 && LastLogLine(database) == before + 1;
}

bool UndoImport(const QString& database) {
    return CanUndoImport(database) && PutInPlace(FileBeforeImport(database), FileItself(database));
}

} // namespace tessaro
