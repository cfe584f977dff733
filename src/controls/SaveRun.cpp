#include "controls/SaveRun.h"

#include "controls/OfficeErrors.h"
#include "controls/SaveDialog.h"
#include "controls/WorkProgress.h"
#include "office/Error.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Strings.h"
#include "session/WriteFailure.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QScopeGuard>

#include <optional>

namespace tessaro {

namespace {

struct Outcome {
    int sheets = 0;
    bool cancelled = false;
    std::optional<office::Error> failure;
};

Outcome Written(const QString& text, QWidget* owner, const std::function<int(WorkProgress&)>& write) {
    Outcome outcome;
    const WaitPointer wait;
    TheFrame().StartProgress();
    const auto end = qScopeGuard([] { TheFrame().EndProgress(); });
    WorkProgress progress(text, owner);
    progress.setWindowTitle(PlainText(QStringLiteral("TS_PageSaveAs")));
    try {
        outcome.sheets = write(progress);
    } catch (const SaveCancelled&) {
        outcome.cancelled = true;
    } catch (const office::Error& error) {
        outcome.failure = error;
    }
    return outcome;
}

} // namespace

bool SaveWithProgress(const SaveTask& task, QWidget* owner, const std::function<int(WorkProgress&)>& write) {
    ErrorTrap trap(task.procedure);
    Outcome outcome;
    trap.Try([&] { outcome = Written(PlainText(QStringLiteral("TS_ExportingValues")), owner, write); });
    if (outcome.cancelled)
        TheFrame().SetStatusText(GetText(QStringLiteral("TS_ExportCancelled")));
    else if (outcome.failure && WhyNotWritable(task.file).isEmpty())
        ShowOfficeError(*outcome.failure, task.procedure);
    else if (outcome.sheets == 0)
        TellNotWritten(task.file);
    else
        TheFrame().SetStatusText(SavedText(task.file, task.kinds, outcome.sheets));
    return outcome.sheets > 0;
}

QString SavedText(const QString& file, const std::vector<SaveKind>& kinds, int sheets) {
    const QString shown = QDir::toNativeSeparators(file);
    if (sheets > 1) return FilledText(QStringLiteral("TS_ExportedSheets"), {shown, QLocale::system().toString(sheets)});
    QStringList names;
    const QStringList beside = FilesBesideName(kinds, file, KindOfName(kinds, file, 0));
    for (const QString& each : beside)
        if (QFileInfo::exists(each)) names << QFileInfo(each).fileName();
    if (names.isEmpty()) return FilledText(QStringLiteral("TS_Exported"), {shown});
    return FilledText(QStringLiteral("TS_ExportedBeside"), {shown, names.join(QStringLiteral(", "))});
}

} // namespace tessaro
