#include "controls/StageScreen.h"
#include "database/Database.h"
#include "gallery/frmGALMain.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "selection/IndicatorSelection.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/MainMenu.h"
#include "shell/Preferences.h"
#include "shell/StageScreens.h"
#include "shell/frmLanguage.h"
#include "shell/frmMain.h"
#include "shell/frmProperties.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <QScopedValueRollback>

// Preferences and language while the program runs.

namespace tessaro {

namespace {

constexpr int HomeFontSize = 12;

} // namespace

void frmMain::mnuFilemnu_Properties_Click() {
    const QString before = Language;
    frmProperties form(*this);
    form.exec();
    if (Language != before && !LanguageInDatabase && FileExists(CurrentDatabase)) ShowLanguageDialog();
}

void frmMain::ShowLanguageDialog() {
    frmLanguage dialog(this);
    connect(&dialog, &frmLanguage::PropertiesWanted, &dialog, [&] {
        frmProperties form(*this);
        form.exec();
        if (LanguageInDatabase)
            dialog.accept();
        else
            dialog.ShowLanguages();
    });
    dialog.exec();
}

void frmMain::ApplyTheSettings(const Preferences& before) {
    const ErrorTrap trap("ApplyTheSettings");
    const Preferences now = Preferences::OfSession();
    const bool languageChanged = now.language != before.language;
    const bool haveDatabase = Connection && FileExists(CurrentDatabase);
    if (languageChanged) ReadTranslateFile();
    DataExistsCriterion = CriterionOfDataExists(DataExistsMode);
    ShowInLanguage();
    if (languageChanged) ShowMessage(QStringLiteral("048"), MessageType::Ok, 102);
    ui_->picBanner_1->SetCurrent(splash_ ? navigation::HomePage : CurrentStage);
    ApplySound(now.sound != before.sound);
    if (HomeIsShown && splash_) {
        const QScopedValueRollback size(ProductFontSize, HomeFontSize);
        splash_->SetFormCaptions();
    }
    // What is chosen carries texts of the language of before.
    const bool wasHome = splash_ != nullptr;
    if (languageChanged && haveDatabase) RestoreBlanks();
    if (wasHome) CurrentStage = navigation::HomePage;
    if (FileExists(CurrentDatabase)) LanguageInDatabase = IsLanguageInDatabase(CurrentDatabase);
    ui_->frmAddressBar->Show(ShownAddress(CurrentDatabase));
    if (!LanguageInDatabase) {
        if (languageChanged && haveDatabase) LinkAllTablesinInfoSel(); // takes the stages down and comes home
    } else if (languageChanged && haveDatabase) {
        SelectDataBase();
    } else {
        ReloadScreens(now, before);
    }
    ShowDatabases();
}

void frmMain::ApplySound(bool otherSound) {
    if (otherSound) sound_.Load(SoundFile);
    sound_.SetMuted(Mute);
    ui_->sbStatusBar->ShowSound(Mute);
}

/// Fonts and captions of everything that stands, without touching what the screens hold.
void frmMain::ShowInLanguage() {
    SetFormFont();
    SetCaptions();
    if (gallery_) gallery_->SetFormCaptions();
    ui_->sbStatusBar->ShowNow(clockPanels_);
}

/// The screens that a change concerns, filled anew. The data view keeps its rows unless it is in front.
void frmMain::ReloadScreens(const Preferences& now, const Preferences& before) {
    const bool lists = now.ChangesLists(before);
    if (!lists && !now.ChangesIndicatorViews(before)) return;
    const bool otherKeys = Connection && now.byCombination != before.byCombination;
    if (otherKeys) selection::RemoveAllIndicators(); // the keys of the list take another form
    // A screen that takes over what is chosen already changes nothing of it.
    const bool changed = SelectionChanged;
    screens_->Reload(lists ? QList<int>{0, 1, 2} : QList<int>{0});
    SelectionChanged = changed;
    ShowSummaries();
    if (splash_ || gallery_) return;
    if (CurrentStage != navigation::DataStage)
        ShowStage(CurrentStage);
    else if (StageScreen* screen = ActiveScreen(); screen && (lists || otherKeys))
        screen->Refresh();
}

void frmMain::ChangeLanguage(const QString& label) {
    const ErrorTrap trap("ChangeLanguage");
    if (label.compare(Language, Qt::CaseInsensitive) == 0) return;
    SetBusy(true);
    const bool home = CurrentStage == navigation::HomePage;
    const bool haveDatabase = Connection && FileExists(CurrentDatabase);
    Language = label;
    ReadTranslateFile();
    const LanguageFace face = FaceOfLanguage(Language);
    if (!face.font.isEmpty()) ProductFont = face.font;
    if (face.size > 0) ProductFontSize = face.size;
    // What is chosen carries texts of the language of before.
    if (haveDatabase) RestoreBlanks();
    ShowInLanguage();
    if (haveDatabase) DatabaseOpen = LinkAllTablesinInfoSel();
    if (haveDatabase && DatabaseOpen && !home) ShowIndicatorScreen();
    if (home) CurrentStage = navigation::HomePage;
    SetBusy(false);
    ShowDatabases();
    if (haveDatabase && !LanguageInDatabase) ShowLanguageDialog();
}

} // namespace tessaro
