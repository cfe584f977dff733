#include "exchange/DatabaseExport.h"

#include "controls/FileDialogs.h"
#include "controls/WorkProgress.h"
#include "exchange/DatabaseRows.h"
#include "layers/AreaOutlines.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QStandardPaths>

namespace tessaro {

namespace {

struct Stopped {};

enum class Saving { Saved, Failed, Stopped };

Saving Save(const QString& file, const ValueForm& form, WorkProgress& progress) {
    DatabaseRows rows;
    AreaOutlines outlines;
    const ValueTable table{rows.Count(),
                           [&](int number) {
                               if (!progress.Show(number, rows.Count())) throw Stopped();
                               return rows.At(number);
                           },
                           [](const ValueLosses& losses) {
                               const QString question = FilledText(QStringLiteral("TS_LossAsk"), {TextOf(losses)});
                               if (AskBeforeLoss(question, MessageType::YesNo, {}, false) != MessageCode::Yes)
                                   throw Stopped();
                           },
                           [&](const QString& areaId) { return outlines.RingsOf(areaId); }};
    try {
        return form.save(file, table) ? Saving::Saved : Saving::Failed;
    } catch (const Stopped&) {
        return Saving::Stopped;
    }
}

} // namespace

void ExportDatabase(QWidget* owner) {
    const ErrorTrap trap("ExportDatabase");
    const QString name = QFileInfo(CurrentDatabase).completeBaseName() + QStringLiteral(".csv");
    const QString file = AskForNewFile(owner, {PlainText(QStringLiteral("TS_ExportDatabase")),
                                               QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                                               ValueFormFilters().join(QStringLiteral(";;")), name});
    if (!file.isEmpty()) SaveDatabaseValues(file, owner);
}

bool SaveDatabaseValues(const QString& file, QWidget* owner) {
    ErrorTrap trap("SaveDatabaseValues");
    const ValueForm* const form = ValueFormOf(file);
    Saving saving = Saving::Failed;
    {
        TheFrame().StartProgress();
        const auto end = qScopeGuard([] { TheFrame().EndProgress(); });
        WorkProgress progress(PlainText(QStringLiteral("TS_Exporting")), owner);
        trap.Try([&] {
            if (form != nullptr) saving = Save(file, *form, progress);
        });
    }
    const QString shown = QDir::toNativeSeparators(file);
    if (saving == Saving::Failed) ShowFilledMessage(QStringLiteral("TS_ExportFailed"), {shown});
    if (saving == Saving::Stopped) TheFrame().SetStatusText(GetText(QStringLiteral("TS_ExportCancelled")));
    if (saving == Saving::Saved) TheFrame().SetStatusText(FilledText(QStringLiteral("TS_Exported"), {shown}));
    return saving == Saving::Saved;
}

} // namespace tessaro
