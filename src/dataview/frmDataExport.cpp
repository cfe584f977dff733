#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/OfficeErrors.h"
#include "dataview/DataExport.h"
#include "dataview/frmData.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"

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

int frmData::WriteDataView(const QString& file) {
    const QString kind = QFileInfo(file).suffix().toLower();
    const ExportRows rows{model_.ValueRows(), [this](int row) { return model_.RowAt(row); }};
    // The load goes on afterwards; while the spreadsheet works, its timer must not change the grid.
    paging_.PauseTimer();
    const auto resume = qScopeGuard([this] { paging_.ResumeTimer(); });
    if (kind == QLatin1String("xls")) return SaveDataViewXls(file, rows);
    const bool saved = kind == QLatin1String("txt") ? SaveDataViewTxt(file, rows) : SaveDataViewHtm(file, rows);
    return saved ? 1 : 0;
}

bool frmData::SaveDataView(const QString& file) {
    ErrorTrap trap("SaveDataView");
    int sheets = 0;
    std::optional<office::Error> failure;
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
                sheets = WriteDataView(file);
            } catch (const office::Error& error) {
                failure = error;
            }
        });
    }
    if (failure) {
        ShowOfficeError(*failure, "SaveDataViewXls");
    } else if (sheets == 0) {
        LogNote(QLatin1String("SaveDataView: can't write ") + file);
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed")).replace(QStringLiteral("%1"), file), MessageType::Ok,
                    102, {}, false);
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
    ShowMadeWorkbook("PrintDataView", [this] {
        const QString file = JoinPath({TempFolder, GetFreeFileName(QStringLiteral("DataView Print"))});
        WriteDataView(file);
        return file;
    });
}

} // namespace tessaro
