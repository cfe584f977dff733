#include "shell/DatabaseCommands.h"

#include "controls/OfficeErrors.h"
#include "controls/StageScreen.h"
#include "dataview/frmData.h"
#include "exchange/ImportUndo.h"
#include "exchange/frmImport.h"
#include "metadata/frmInformationSheets.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/DatabaseOpener.h"
#include "shell/MainMenu.h"
#include "shell/StageNavigator.h"
#include "shell/SummaryReport.h"
#include "shell/frmFavourites.h"

#include <QMainWindow>
#include <QScopeGuard>

namespace tessaro {

DatabaseCommands::DatabaseCommands(const FrameParts& parts, StageNavigator& stages, DatabaseOpener& databases)
    : parts_(parts), stages_(stages), databases_(databases) {}

void DatabaseCommands::AddFavorites() {
    const ErrorTrap trap("mnumnu_Favoritesmnu_AddFavorites_Click");
    auto* screen = qobject_cast<frmData*>(stages_.ActiveScreen());
    if (!screen || !screen->MayKeep()) return;
    frmFavourites form(&parts_.window, screen->ShownRows());
    form.exec();
    parts_.menu.FillFavourites();
    screen->setFocus();
    if (!form.Wanted().isEmpty()) databases_.OpenFavourite(form.Wanted());
}

void DatabaseCommands::mnuDBSummReport_Click() {
    const ErrorTrap trap("ValidationReportXLS");
    if (!DatabaseOpen || !Connection) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    ShowMadeWorkbook("ValidationReportXLS", [] {
        Frame& frame = TheFrame();
        frame.SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
        frame.StartProgress();
        const auto done = qScopeGuard([&frame] {
            frame.EndProgress();
            frame.SetStatusText({});
        });
        return WriteSummaryReport([&frame](int sheet) { frame.SetProgress(100 * sheet / kSummarySheets); });
    });
}

void DatabaseCommands::mnuFilemnu_ImportExport_Click() {
    const ErrorTrap trap("mnuFilemnu_ImportExport_Click");
    QString written;
    {
        frmImport wizard(&parts_.window);
        wizard.exec();
        written = wizard.WrittenFile();
    }
    if (!written.isEmpty()) databases_.LoadNewMDB(written);
}

void DatabaseCommands::UndoLastImport() {
    const ErrorTrap trap("mnuFileUndoImport_Click");
    const QString database = CurrentDatabase;
    if (!CanUndoImport(database)) {
        ShowMessage(QStringLiteral("TS_WhyNoUndo"));
        return;
    }
    const QString question = FilledText(QStringLiteral("TS_UndoImportAsk"), {FileNameOf(database)});
    if (AskBeforeLoss(question, MessageType::YesNo, {}, false) != MessageCode::Yes) return;
    if (UndoImport(database))
        databases_.LoadNewMDB(database);
    else
        ShowFilledMessage(QStringLiteral("TS_NewDatabaseFailed"), {FolderOf(database)});
}

void DatabaseCommands::ShowInformationSheets(const char* code) {
    // Without the language, the working database still shows the one that was open before.
    if (!Connection || !DatabaseOpen || !LanguageInDatabase) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    frmInformationSheets(QLatin1String(code), &parts_.window).exec();
}

} // namespace tessaro
