#include "controls/OfficeErrors.h"
#include "controls/StageScreen.h"
#include "dataview/frmData.h"
#include "metadata/frmInformationSheets.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/DatabaseOpener.h"
#include "shell/Favourite.h"
#include "shell/MainMenu.h"
#include "shell/SettingsChange.h"
#include "shell/StageNavigator.h"
#include "shell/SummaryReport.h"
#include "shell/frmFavourites.h"
#include "shell/frmMain.h"

#include <QScopeGuard>

// What is made of the open database: favourites and the summary report.

namespace tessaro {

void frmMain::AddFavorites() {
    const ErrorTrap trap("mnumnu_Favoritesmnu_AddFavorites_Click");
    auto* screen = qobject_cast<frmData*>(stages_->ActiveScreen());
    if (!screen || !screen->MayKeep()) return;
    frmFavourites form(this, screen->ShownRows());
    form.exec();
    menu_->FillFavourites();
    screen->setFocus();
    if (!form.Wanted().isEmpty()) databases_->OpenFavourite(form.Wanted());
}

void frmMain::mnuDBSummReport_Click() {
    const ErrorTrap trap("ValidationReportXLS");
    if (!DatabaseOpen || !Connection) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    ShowMadeWorkbook("ValidationReportXLS", [this] {
        SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
        StartProgress();
        const auto done = qScopeGuard([this] {
            EndProgress();
            SetStatusText({});
        });
        return WriteSummaryReport([this](int sheet) { SetProgress(100 * sheet / SummarySheets); });
    });
}

void frmMain::ShowInformationSheets(const char* code) {
    // Without the language, the working database still shows the one that was open before.
    if (!Connection || !DatabaseOpen || !LanguageInDatabase) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    frmInformationSheets(QLatin1String(code), this).exec();
}

} // namespace tessaro
