#include "dataview/ViewExport.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "controls/WorkProgress.h"
#include "dataview/DataExport.h"
#include "dataview/RowReader.h"
#include "dataview/ViewRows.h"
#include "layers/AreaOutlines.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "view/SourcesAndNotes.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QScopeGuard>
#include <QStandardPaths>

#include <optional>

namespace tessaro {

namespace {

QString FilterLine(const char* key, const char* pattern) {
    return PlainText(QLatin1String(key)) + QStringLiteral(" (") + QLatin1String(pattern) + QLatin1Char(')');
}

/// Why an export ended early, in the user's words.
void TellStopped(ExportStopped reason) {
    if (reason == ExportStopped::ByUser) return TheFrame().SetStatusText(GetText(QStringLiteral("TS_ExportCancelled")));
    ShowMessage(GetText(QStringLiteral("TS_DataUnreadable")), MessageType::Ok, MessageIcon::Note, {}, false);
}

/// What a form can't hold is told before, not after.
void AskForLosses(const ValueLosses& losses) {
    const QString question = FilledText(QStringLiteral("TS_LossAsk"), {TextOf(losses)});
    if (AskBeforeLoss(question, MessageType::YesNo, {}, false) != MessageCode::Yes) throw ExportStopped::ByUser;
}

/// How an attempt to save has ended.
struct Outcome {
    int sheets = 0; ///< 1 for text and web page; 0: nothing was written
    std::optional<office::Error> failure;
    std::optional<ExportStopped> stopped;
};

void Tell(const Outcome& outcome, const QString& file) {
    if (outcome.stopped) return TellStopped(*outcome.stopped);
    if (outcome.failure) return ShowOfficeError(*outcome.failure, "SaveDataViewXls");
    if (outcome.sheets == 0) {
        LogNote(QLatin1String("SaveDataView: can't write ") + file);
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed")).replace(QStringLiteral("%1"), file), MessageType::Ok,
                    MessageIcon::Note, {}, false);
        return;
    }
    TheFrame().SetStatusText(
        GetText(outcome.sheets > 1 ? QStringLiteral("TS_ExportedSheets") : QStringLiteral("TS_Exported"))
            .replace(QStringLiteral("%1"), QDir::toNativeSeparators(file))
            .replace(QStringLiteral("%2"), QLocale::system().toString(outcome.sheets)));
}

} // namespace

void ViewExport::AskAndSave() {
    const QStringList filters =
        QStringList{FilterLine("TS_FilterWebPage", "*.htm *.html"), FilterLine("TS_FilterWorkbook", "*.xls"),
                    FilterLine("TS_FilterWorkbook", "*.xlsx"), FilterLine("TS_FilterWorkbook", "*.ods"),
                    FilterLine("TS_FilterText", "*.txt")} +
        ValueFormFilters();
    const QString file = AskForNewFile(owner_, {PlainText(QStringLiteral("TS_PageSaveAs")),
                                                QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                                                filters.join(QStringLiteral(";;")), QStringLiteral("DataView.htm")});
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
    const QString kind = QFileInfo(file).suffix().toLower();
    if (kind == QLatin1String("xls") || kind == QLatin1String("xlsx") || kind == QLatin1String("ods"))
        return SaveDataViewXls(file, rows);
    if (isValues) {
        AreaOutlines outlines;
        rows.beforeLoss = AskForLosses;
        rows.ringsOf = [&outlines](const QString& areaId) { return outlines.RingsOf(areaId); };
        return SaveDataViewValues(file, rows) ? 1 : 0;
    }
    const bool saved = kind == QLatin1String("txt") ? SaveDataViewTxt(file, rows) : SaveDataViewHtm(file, rows);
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
