#include "controls/OfficeErrors.h"
#include "controls/StageScreen.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "session/TempFiles.h"
#include "shell/Favourite.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/SummaryReport.h"
#include "shell/frmFavourites.h"
#include "shell/frmMain.h"
#include "shell/frmProperties.h"
#include "ui_frmMain.h"

namespace tessaro {

void frmMain::mnuFilemnu_Properties_Click() {
    frmProperties([this](const PropertyValues& before, const PropertyValues& now) { ApplyTheSettings(before, now); },
                  this)
        .exec();
}

void frmMain::ApplyTheSettings(const PropertyValues& before, const PropertyValues& now) {
    const ErrorTrap trap("ApplyTheSettings");
    SetBusy(true);
    const bool languageChanged = now.language.compare(before.language, Qt::CaseInsensitive) != 0;
    if (languageChanged) ChangeLanguage(now.language);
    const bool fontChanged =
        now.font != before.font || now.fontSize != before.fontSize || now.fontStyle != before.fontStyle;
    if (languageChanged || fontChanged) {
        ProductFont = now.font;
        ProductFontSize = now.fontSize;
        ProductFontStyle = now.fontStyle;
        SetFormFont();
        SetCaptions();
    }
    if (now.sound != before.sound) sound_.Load(SoundFile);
    sound_.SetMuted(Mute);
    ui_->sbStatusBar->ShowNow(clockPanels_);
    const bool listsChanged = now.dataExists != before.dataExists || now.selectBy != before.selectBy ||
                              now.views != before.views || now.showGlobalColor != before.showGlobalColor ||
                              now.globalColor != before.globalColor || now.openWith != before.openWith;
    if (!languageChanged && listsChanged) ReloadStages(now.selectBy != before.selectBy);
    StageScreen* screen = ActiveScreen();
    if (screen && !languageChanged && !listsChanged) screen->SetFormCaptions();
    SetBusy(false);
    if (languageChanged && LanguageInDatabase) ShowMessage(QStringLiteral("048"), MessageType::Ok, 102);
}

// The screens are made anew from the selection tables, which tell them all they need.
void frmMain::ReloadStages(bool modeChanged) {
    const int stage = CurrentStage;
    const bool shown = ActiveScreen() != nullptr;
    screens_->UnloadAll();
    // What was chosen in one mode can't stand in the lists of the other.
    if (modeChanged && Connection) {
        Execute(QStringLiteral("DELETE * FROM _SelIUSNId"));
        ui_->picBanner_1->ClearSummaries();
    }
    SelectionChanged = true;
    if (!shown || !Connection) return;
    if (stage == navigation::DataStage && modeChanged) return ShowIndicatorScreen();
    CurrentStage = stage;
    ShowStage(stage);
}

void frmMain::AddFavorites() {
    if (CurrentStage != navigation::DataStage || !ActiveScreen()) return;
    frmFavourites(this).exec();
    FillFavourites();
    if (StageScreen* screen = ActiveScreen()) screen->setFocus();
}

void frmMain::FillFavourites() {
    menu_->FillFavourites(FavouriteFiles());
}

void frmMain::OpenFavourite(const QString& file) {
    const ErrorTrap trap("mnuCustomFavorites_Click");
    const QString path = FavouritePath(file);
    if (!FileExists(path)) {
        ShowMessage(QStringLiteral("025"));
        FillFavourites();
        return;
    }
    LoadNewMDB(path);
}

void frmMain::mnuDBSummReport_Click() {
    const ErrorTrap trap("ValidationReportXLS");
    if (!DatabaseOpen || !Connection) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    SetBusy(true);
    SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
    StartProgress();
    QString file;
    try {
        file = WriteSummaryReport([this](int sheet) { SetProgress(100 * sheet / SummarySheets); });
    } catch (const office::Error& error) {
        SetBusy(false);
        ShowOfficeError(error, "ValidationReportXLS");
        SetBusy(true);
    }
    EndProgress();
    SetStatusText({});
    SetBusy(false);
    if (file.isEmpty()) return;
    ShowWorkbook(file);
    ClearTempFolder();
}

} // namespace tessaro
