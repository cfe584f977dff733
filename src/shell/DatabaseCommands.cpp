#include "shell/DatabaseCommands.h"

#include "controls/OfficeErrors.h"
#include "controls/StageScreen.h"
#include "dataview/frmData.h"
#include "metadata/frmInformationSheets.h"
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

void DatabaseCommands::ShowInformationSheets(const char* code) {
    // Without the language, the working database still shows the one that was open before.
    if (!Connection || !DatabaseOpen || !LanguageInDatabase) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    frmInformationSheets(QLatin1String(code), &parts_.window).exec();
}

} // namespace tessaro
