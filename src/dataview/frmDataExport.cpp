#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "dataview/DataExport.h"
#include "dataview/GridQuery.h"
#include "dataview/RowReader.h"
#include "dataview/WorkProgress.h"
#include "dataview/frmData.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "view/InView.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QScopeGuard>
#include <QStandardPaths>

#include <optional>

// What leaves the data view: files and paper.

namespace tessaro {

namespace {

QString FilterLine(const char* key, const char* pattern) {
    return PlainText(QLatin1String(key)) + QStringLiteral(" (") + QLatin1String(pattern) + QLatin1Char(')');
}

} // namespace

void frmData::SaveAs() {
    if (!MayGiveAway()) return;
    const QString filter = QStringList{FilterLine("TS_FilterWebPage", "*.htm *.html"),
                                       FilterLine("TS_FilterWorkbook", "*.xls"), FilterLine("TS_FilterText", "*.txt")}
                               .join(QStringLiteral(";;"));
    const QString file = AskForNewFile(this, {PlainText(QStringLiteral("TS_PageSaveAs")),
                                              QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                                              filter, QStringLiteral("DataView.htm")});
    if (!file.isEmpty()) SaveDataView(file);
}

// What leaves the view are all its rows, however many of them the grid has loaded. The load goes on afterwards from
// where it is; meanwhile its timer must not change the grid.
int frmData::WriteDataView(const QString& file, const char* textKey) {
    paging_.PauseTimer();
    const auto resume = qScopeGuard([this] { paging_.ResumeTimer(); });
    WorkProgress progress(PlainText(QLatin1String(textKey)), this);
    if (!paging_.CountRowsUnless([&](qint64 rows) { return progress.Show(rows, 0); })) throw ExportStopped::ByUser;
    RowReader reader(model_, paging_);
    ExportRows rows{reader.Count(), [&](int row) {
                        if (!progress.Show(row, reader.Count())) throw ExportStopped::ByUser;
                        const GridRow* values = reader.At(row);
                        if (values == nullptr) throw ExportStopped::Unreadable;
                        return values;
                    }};
    if (ShowFootnotes && AnyFootnotes(filters_.MissingDataOn ? QString() : RowFilter))
        rows.footnoteOf = [this](const GridRow& row) { return model_.FootnoteText(row.footNId); };
    const QString kind = QFileInfo(file).suffix().toLower();
    if (kind == QLatin1String("xls")) return SaveDataViewXls(file, rows);
    const bool saved = kind == QLatin1String("txt") ? SaveDataViewTxt(file, rows) : SaveDataViewHtm(file, rows);
    return saved ? 1 : 0;
}

/// Why an export ended early, in the user's words.
void frmData::TellStopped(ExportStopped reason) {
    if (reason == ExportStopped::ByUser) return TheFrame().SetStatusText(GetText(QStringLiteral("TS_ExportCancelled")));
    ShowMessage(GetText(QStringLiteral("TS_DataUnreadable")), MessageType::Ok, MessageIcon::Note, {}, false);
}

bool frmData::SaveDataView(const QString& file) {
    ErrorTrap trap("SaveDataView");
    int sheets = 0;
    std::optional<office::Error> failure;
    std::optional<ExportStopped> stopped;
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
                sheets = WriteDataView(file, "TS_Exporting");
            } catch (const office::Error& error) {
                failure = error;
            } catch (ExportStopped reason) {
                stopped = reason;
            }
        });
    }
    if (stopped) {
        TellStopped(*stopped);
    } else if (failure) {
        ShowOfficeError(*failure, "SaveDataViewXls");
    } else if (sheets == 0) {
        LogNote(QLatin1String("SaveDataView: can't write ") + file);
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed")).replace(QStringLiteral("%1"), file), MessageType::Ok,
                    MessageIcon::Note, {}, false);
    } else {
        TheFrame().SetStatusText(
            GetText(sheets > 1 ? QStringLiteral("TS_ExportedSheets") : QStringLiteral("TS_Exported"))
                .replace(QStringLiteral("%1"), QDir::toNativeSeparators(file))
                .replace(QStringLiteral("%2"), QLocale::system().toString(sheets)));
    }
    return sheets > 0;
}

void frmData::Print() {
    if (!MayGiveAway()) return;
    std::optional<ExportStopped> stopped;
    ShowMadeWorkbook("PrintDataView", [&] {
        QString file = GetFreeFileName(QStringLiteral("DataView Print"));
        try {
            WriteDataView(file, "TS_PreparingPages");
        } catch (ExportStopped reason) {
            stopped = reason;
            file.clear();
        }
        return file;
    });
    if (stopped) TellStopped(*stopped);
}

} // namespace tessaro
