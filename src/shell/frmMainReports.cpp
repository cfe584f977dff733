#include "controls/OfficeErrors.h"
#include "controls/StageScreen.h"
#include "dataview/frmData.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/Favourite.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/SummaryReport.h"
#include "shell/frmFavourites.h"
#include "shell/frmMain.h"
#include "ui_frmMain.h"

#include <QScopeGuard>

// What is made of the open database: favourites and the summary report.

namespace tessaro {

void frmMain::AddFavorites() {
    const ErrorTrap trap("mnumnu_Favoritesmnu_AddFavorites_Click");
    auto* screen = qobject_cast<frmData*>(ActiveScreen());
    if (!screen || !screen->MayKeep()) return;
    frmFavourites form(this, screen->ShownRows());
    form.exec();
    menu_->FillFavourites();
    screen->setFocus();
    if (!form.Wanted().isEmpty()) OpenFavourite(form.Wanted());
}

void frmMain::OpenFavourite(const QString& path) {
    const ErrorTrap trap("mnuCustomFavorites_Click");
    if (!FileExists(path)) {
        // A favourite that is gone is no reason to leave what is on the screen.
        ShowMessage(QStringLiteral("025"));
        menu_->FillFavourites();
        return;
    }
    LoadNewMDB(path);
    if (!LanguageInDatabase && FileExists(CurrentDatabase)) ShowLanguageDialog();
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

} // namespace tessaro
