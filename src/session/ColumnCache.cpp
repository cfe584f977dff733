#include "session/ColumnCache.h"

#include "jet/engine/ColumnImages.h"
#include "jet/engine/Connection.h"
#include "platform/Paths.h"
#include "session/Log.h"
#include "session/Session.h"

#include <QCoreApplication>

#include <algorithm>

namespace tessaro {

namespace {

// Called on the thread that makes the images; the log is written by the program's own.
void NoteLater(const std::string& line) {
    if (QCoreApplication* const program = QCoreApplication::instance())
        QMetaObject::invokeMethod(
            program, [line] { LogNote(QString::fromStdString(line)); }, Qt::QueuedConnection);
}

} // namespace

void UseColumnCache(jet::Connection& connection) {
    if (DataCacheFolder.isEmpty()) return;
    jet::ColumnImages::Settings settings;
    settings.folder = JoinPath({DataCacheFolder, QStringLiteral("Columns")}).toStdString();
    settings.log = NoteLater;
    connection.UseColumnImages(std::make_shared<jet::ColumnImages>(std::move(settings)));
}

// To translate a statement that wants the image is enough; nothing is run.
void PrepareColumnCache() {
    if (!Connection || !Connection->isOpen()) return;
    try {
        static_cast<void>(Connection->Explain("SELECT IUSNId, Count(*) AS Numbers FROM Data GROUP BY IUSNId"));
    } catch (const std::exception&) {
        return; // the statements of the view will tell what is wrong
    }
}

bool RunsOnColumns(const QString& sql) {
    if (!Connection || !Connection->isOpen()) return false;
    try {
        const std::vector<std::string> steps = Connection->Explain(sql.toStdString()).steps;
        return std::ranges::find(steps, "column-scans") != steps.end();
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace tessaro
