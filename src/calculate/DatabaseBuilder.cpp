#include "calculate/DatabaseBuilder.h"

#include "calculate/BuildingStop.h"
#include "calculate/NewFile.h"
#include "calculate/ResultCheck.h"
#include "database/DataExists.h"
#include "database/LanguageTables.h"
#include "database/TargetDatabase.h"
#include "database/UnfinishedDatabase.h"
#include "database/UseOfFile.h"
#include "jet/engine/BulkLoad.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/JetCopies.h"
#include "session/Messages.h"
#include "session/Session.h"

#include <stdexcept>
#include <utility>

namespace tessaro {

namespace {

/// A step of the work failed, and was reported.
struct StepFailed {};

/// Does one step of the work; what fails is reported under the procedure's name and ends all of it.
template <class Work> void DoStep(const char* procedure, Work&& work) {
    ErrorTrap trap(procedure);
    if (!trap.Try(std::forward<Work>(work))) throw StepFailed();
}

/// Makes the file from which the work starts: the empty template, or a copy of the open database.
void MakeStart(const QString& path, bool withDataView) {
    if (!withDataView) return jet::Database::Copy(FileToOpen(CurrentDatabase).toStdString(), path.toStdString());
    if (!CopyPassingFile(DatabaseTemplate(), path))
        throw std::runtime_error("The template can't be copied to " + path.toStdString());
}

void Fill(const QString& path, const DataEntrySheet& result, bool withDataView, const QString& target,
          const QString& what) {
    TargetDatabase database(path, LanguageSuffix);
    database.AddLaterTables();
    DoStep("Write_New_File", [&] { Write_New_File(database, result, withDataView); });
    const QString texts = withDataView ? FileToOpen(CurrentDatabase) : QString();
    DoStep("CopyLanguageTables", [&] { CompleteLanguages(database, texts); });
    database.LogAction(target, what);
}

void Make(const QString& path, const DataEntrySheet& result, bool withDataView, const QString& target,
          const QString& what) {
    DoStep("BuildDatabase", [&] { MakeStart(path, withDataView); });
    TheFrame().SetProgress(10);
    DoStep("BuildDatabase", [&] { Fill(path, result, withDataView, target, what); });
    if (!MarkDataExists(path, [](int percent) { TheFrame().SetProgress(10 + percent * 8 / 10); })) throw StepFailed();
    DoStep("BuildDatabase", [&] {
        jet::Analyze(path.toStdString());
        // The rows of the open database that a copy doesn't have have left their room in it.
        if (!withDataView) jet::Database::Compact(path.toStdString());
    });
}

BuiltDatabase NotMade(const QString& target) {
    return {false, FilledText(QStringLiteral("TS_NewDatabaseFailed"), {FolderOf(target)})};
}

} // namespace

BuiltDatabase BuildDatabase(const DataEntrySheet& result, bool withDataView, const QString& target,
                            const QString& what) {
    const ErrorTrap trap("BuildDatabase");
    if (IsDatabaseInUse(target)) return {false, FilledText(QStringLiteral("012"), {})};
    if (QString problem = ProblemOf(result); !problem.isEmpty()) return {false, problem};
    if (!Connection || (withDataView && !FileExists(DatabaseTemplate())))
        return {false, FilledText(QStringLiteral("011"), {})};
    const WaitState wait;
    UnfinishedDatabase file(target);
    try {
        Make(file.Path(), result, withDataView, target, what);
    } catch (const StepFailed&) {
        return NotMade(target);
    } catch (const BuildingStopped&) {
        return {};
    }
    if (file.Finish()) return {true, {}};
    ReportError(FileError::PermissionDenied, QLatin1String("The new database can't be put in place: ") + target,
                QStringLiteral("BuildDatabase"));
    return NotMade(target);
}

} // namespace tessaro
