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
#include <QStandardPaths>

// What leaves the data view: files and paper.

namespace tessaro {

namespace {

QString FilterLine(const char* key, const char* pattern) {
    return PlainText(QLatin1String(key)) + QStringLiteral(" (") + QLatin1String(pattern) + QLatin1Char(')');
}

} // namespace

void frmData::SaveAs() {
    if (model_.ValueRows() == 0) {
        ShowMessage(QStringLiteral("041"));
        return;
    }
    const QString filter = QStringList{FilterLine("TS_FilterWebPage", "*.htm *.html"),
                                       FilterLine("TS_FilterWorkbook", "*.xls"), FilterLine("TS_FilterText", "*.txt")}
                               .join(QStringLiteral(";;"));
    const QString file = AskForNewFile(this, {PlainText(QStringLiteral("TS_PageSaveAs")),
                                              QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                                              filter, QStringLiteral("DataView.htm")});
    if (!file.isEmpty()) SaveDataView(file);
}

bool frmData::SaveDataView(const QString& file) {
    ErrorTrap trap("SaveDataView");
    TheFrame().SetBusy(true);
    TheFrame().SetStatusText(GetText(QStringLiteral("TS_Exporting")));
    TheFrame().StartProgress();
    const ExportRows rows{model_.ValueRows(), [this](int row) { return model_.RowAt(row); }};
    const QString kind = QFileInfo(file).suffix().toLower();
    bool saved = false;
    int sheets = 1;
    bool told = false;
    // The load goes on afterwards; while the spreadsheet works, its timer must not change the grid.
    paging_.PauseTimer();
    try {
        if (kind == QLatin1String("xls")) {
            sheets = SaveDataViewXls(file, rows);
            saved = true;
        } else {
            saved = kind == QLatin1String("txt") ? SaveDataViewTxt(file, rows) : SaveDataViewHtm(file, rows);
        }
    } catch (const office::Error& error) {
        told = true;
        TheFrame().SetBusy(false);
        ShowOfficeError(error, "SaveDataViewXls");
        TheFrame().SetBusy(true);
    }
    paging_.ResumeTimer();
    TheFrame().EndProgress();
    TheFrame().SetStatusText({});
    TheFrame().SetBusy(false);
    if (saved) {
        const char* key = sheets > 1 ? "TS_ExportedSheets" : "TS_Exported";
        TheFrame().SetStatusText(GetText(QLatin1String(key))
                                     .replace(QStringLiteral("%1"), QDir::toNativeSeparators(file))
                                     .replace(QStringLiteral("%2"), QLocale::system().toString(sheets)));
    } else if (!told) {
        ShowMessage(GetText(QStringLiteral("TS_ExportFailed")).replace(QStringLiteral("%1"), file), MessageType::Ok,
                    102, {}, false);
    }
    return saved;
}

void frmData::Print() {
    if (model_.ValueRows() == 0) {
        ShowMessage(QStringLiteral("041"));
        return;
    }
    const QString file = JoinPath({TempFolder, GetFreeFileName(QStringLiteral("DataView Print"))});
    if (!SaveDataView(file)) return;
    TheFrame().SetStatusText({});
    TheFrame().ShowWorkbook(file);
    ClearTempFolder();
}

} // namespace tessaro
