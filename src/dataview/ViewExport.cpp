#include "dataview/ViewExport.h"

#include "controls/Captions.h"
#include "controls/OfficeErrors.h"
#include "controls/SaveDialog.h"
#include "controls/SaveRun.h"
#include "controls/WorkProgress.h"
#include "dataview/DataExport.h"
#include "dataview/RowReader.h"
#include "dataview/ViewRows.h"
#include "formats/ExportKinds.h"
#include "layers/AreaOutlines.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "session/WriteFailure.h"
#include "view/SourcesAndNotes.h"

#include <QScopeGuard>

#include <optional>

namespace tessaro {

namespace {

/// Why an export ended early, in the user's words.
void TellStopped(ExportStopped reason) {
    if (reason == ExportStopped::ByUser) return TheFrame().SetStatusText(GetText(QStringLiteral("TS_ExportCancelled")));
    ShowMessage(GetText(QStringLiteral("TS_DataUnreadable")), MessageType::Ok, MessageIcon::Note, {}, false);
}

/// What a form can't hold is told before, not after.
void AskForLosses(const ValueLosses& losses) {
    if (!AsksToLose(losses)) throw ExportStopped::ByUser;
}

/// How an attempt to save has ended.
struct Outcome {
    int sheets = 0; ///< 1 for text and web page; 0: nothing was written
    std::optional<office::Error> failure;
    std::optional<ExportStopped> stopped;
};

void Tell(const Outcome& outcome, const QString& file) {
    if (outcome.stopped) return TellStopped(*outcome.stopped);
    if (outcome.failure && WhyNotWritable(file).isEmpty()) return ShowOfficeError(*outcome.failure, "SaveDataViewXls");
    if (outcome.sheets == 0) return TellNotWritten(file);
    TheFrame().SetStatusText(SavedText(file, AllKinds(), outcome.sheets));
}

} // namespace

void ViewExport::AskAndSave() {
    const QString file =
        AskWhereToSave(owner_, {PlainText(QStringLiteral("TS_PageSaveAs")), QStringLiteral("DataView"), AllKinds()});
    if (!file.isEmpty()) Save(file);
}

// Gives the number of sheets (1 for text and web page), 0 when the file can't be written. Throws what ends it early.
// The timer of the load must not change the grid meanwhile.
int ViewExport::Write(const QString& file, const char* textKey) {
    rows_.Paging().PauseTimer();
    const auto resume = qScopeGuard([this] { rows_.Paging().ResumeTimer(); });
    WorkProgress progress(PlainText(QLatin1String(textKey)), owner_);
    if (!rows_.Paging().CountRowsUnless([&](qint64 rows) { return progress.Show(rows, 0); }))
        throw ExportStopped::ByUser;
    RowReader reader(rows_.Grid(), rows_.Paging());
    ExportRows rows{reader.Count(), [&](int row) {
                        if (!progress.Show(row, reader.Count())) throw ExportStopped::ByUser;
                        const GridRow* values = reader.At(row);
                        if (values == nullptr) throw ExportStopped::Unreadable;
                        return values;
                    }};
    const bool isValues = ValueFormOf(file) != nullptr;
    if ((ShowFootnotes || isValues) && rows_.HasFootnotes())
        rows.footnoteOf = [this](const GridRow& row) { return rows_.Grid().FootnoteText(row.footNId); };
    rows.aboutSource = [texts = TextsOfSources()](const QString& source) { return texts.value(source); };
    if (IsWorkbookName(file)) return SaveDataViewXls(file, rows);
    if (isValues) {
        AreaOutlines outlines;
        rows.beforeLoss = AskForLosses;
        rows.ringsOf = [&outlines](const QString& areaId) { return outlines.RingsOf(areaId); };
        return SaveDataViewValues(file, rows) ? 1 : 0;
    }
    const bool isText = file.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive);
    const bool saved = isText ? SaveDataViewTxt(file, rows) : SaveDataViewHtm(file, rows);
    return saved ? 1 : 0;
}

bool ViewExport::Save(const QString& file) {
    ErrorTrap trap("SaveDataView");
    Outcome outcome;
    {
        const WaitPointer wait;
        TheFrame().SetStatusText(GetText(QStringLiteral("TS_Exporting")));
        TheFrame().StartProgress();
        const auto end = qScopeGuard([] {
            TheFrame().EndProgress();
            TheFrame().SetStatusText({});
        });
        trap.Try([&] {
            try {
                outcome.sheets = Write(file, "TS_Exporting");
            } catch (const office::Error& error) {
                outcome.failure = error;
            } catch (ExportStopped reason) {
                outcome.stopped = reason;
            }
        });
    }
    Tell(outcome, file);
    return outcome.sheets > 0;
}

void ViewExport::Print() {
    std::optional<ExportStopped> stopped;
    ShowMadeWorkbook("PrintDataView", [&] {
        QString file = GetFreeFileName(QStringLiteral("DataView Print"));
        try {
            Write(file, "TS_PreparingPages");
        } catch (ExportStopped reason) {
            stopped = reason;
            file.clear();
        }
        return file;
    });
    if (stopped) TellStopped(*stopped);
}

} // namespace tessaro
