#include "shell/SettingsChange.h"

#include "controls/Captions.h"
#include "controls/StageScreen.h"
#include "database/Links.h"
#include "platform/Paths.h"
#include "selection/IndicatorSelection.h"
#include "selection/KeptSelection.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/UserPreferences.h"
#include "shell/AddressBar.h"
#include "shell/DatabaseOpener.h"
#include "shell/MainMenu.h"
#include "shell/Navigation.h"
#include "shell/Preferences.h"
#include "shell/StageBanner.h"
#include "shell/StageNavigator.h"
#include "shell/StandardToolBar.h"
#include "shell/StatusBar.h"
#include "shell/frmDocument.h"
#include "shell/frmLanguage.h"
#include "shell/frmProperties.h"

#include <QApplication>
#include <QMainWindow>
#include <QToolTip>

namespace tessaro {

SettingsChange::SettingsChange(const FrameParts& parts, StageNavigator& stages, DatabaseOpener& databases)
    : parts_(parts), stages_(stages), databases_(databases) {}

void SettingsChange::ShowInLanguage() {
    toolkitTexts_.Load();
    // For menus and dialogs of Qt. Bars and screens set their font themselves.
    QApplication::setFont(LanguageFont());
    QToolTip::setFont(LanguageFont());
    QApplication::setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    parts_.menu.SetMenuCaptions();
    parts_.toolBar.SetToolTips();
    parts_.toolBar.ChangeToolBar();
    parts_.address.SetCaptions();
    parts_.banner.SetFormCaptions();
    parts_.status.SetFormCaptions();
    parts_.status.ShowNow();
    stages_.SetFormCaptions();
    ShowPagesInLanguage();
}

void SettingsChange::StartSound() {
    sound_.Load(SoundFile);
    sound_.SetMuted(Mute);
}

void SettingsChange::SwitchSound() {
    Mute = !Mute;
    sound_.SetMuted(Mute);
    parts_.status.ShowSound(Mute);
}

void SettingsChange::mnuFilemnu_Properties_Click() {
    const QString before = Language;
    MakeProperties()->exec();
    if (Language != before && !LanguageInDatabase && FileExists(CurrentDatabase)) ShowLanguageDialog();
}

std::unique_ptr<frmProperties> SettingsChange::MakeProperties() {
    auto form = std::make_unique<frmProperties>(sound_.Volume(), &parts_.window);
    connect(form.get(), &frmProperties::Applied, this, [this](const Preferences& before, int volume) {
        sound_.SetVolume(volume);
        ApplyTheSettings(before);
    });
    connect(form.get(), &frmProperties::LanguageImported, this, &SettingsChange::TakeImportedLanguage);
    return form;
}

/// Adds the language to the menu; when it is the current one, shows the new texts.
void SettingsChange::TakeImportedLanguage(const QString& file) {
    parts_.menu.FillLanguages();
    if (FileNameOf(FileOfLanguage(Language)).compare(FileNameOf(file), Qt::CaseInsensitive) != 0) return;
    ReadTranslateFile();
    ShowInLanguage();
}

void SettingsChange::ShowLanguageDialog() {
    frmLanguage dialog(&parts_.window);
    connect(&dialog, &frmLanguage::PropertiesWanted, &dialog, [&] {
        MakeProperties()->exec();
        if (LanguageInDatabase)
            dialog.accept();
        else
            dialog.ShowLanguages();
    });
    dialog.exec();
    if (!dialog.Chosen().isEmpty()) OpenInLanguage(dialog.Chosen());
}

/// Changes to a language that the open database has, then opens the database again.
void SettingsChange::OpenInLanguage(const QString& label) {
    ChangeLanguage(label);
    if (LanguageInDatabase) databases_.LoadNewMDB(CurrentDatabase);
}

void SettingsChange::ApplyTheSettings(const Preferences& before) {
    const ErrorTrap trap("ApplyTheSettings");
    const Preferences now = Preferences::OfSession();
    const bool languageChanged = now.language != before.language;
    const bool haveDatabase = Connection && FileExists(CurrentDatabase);
    const bool home = stages_.Front().home;
    if (languageChanged) ReadTranslateFile();
    DataExistsCriterion = CriterionOfDataExists(DataExistsMode);
    ShowInLanguage();
    if (languageChanged) ShowMessage(QStringLiteral("048"), MessageType::Ok, MessageIcon::Note);
    parts_.banner.SetCurrent(home ? navigation::kHomePage : CurrentStage);
    if (now.sound != before.sound) sound_.Load(SoundFile);
    sound_.SetMuted(Mute);
    parts_.status.ShowSound(Mute);
    const bool relink = languageChanged && haveDatabase;
    // The selection tables hold texts of the previous language.
    if (relink) databases_.RestoreBlanks();
    if (home) CurrentStage = navigation::kHomePage;
    if (FileExists(CurrentDatabase)) LanguageInDatabase = IsLanguageInDatabase(CurrentDatabase);
    databases_.ShowAddress();
    if (relink && LanguageInDatabase)
        databases_.SelectDataBase();
    else if (relink)
        Relink();
    else if (LanguageInDatabase)
        ReloadScreens(now, before);
    Q_EMIT databases_.Changed();
}

/// Links the open database in the current language. When it has no texts in it, the home page is shown.
void SettingsChange::Relink() {
    DatabaseOpen = LinkAllTablesinInfoSel() == LinkResult::Made;
    if (!LanguageInDatabase) stages_.ComeHomeWithoutLanguage();
}

/// Rebuilds the screens that a change concerns. The data view is refreshed only when it is in front.
void SettingsChange::ReloadScreens(const Preferences& now, const Preferences& before) {
    const bool lists = now.ChangesLists(before);
    if (!lists && !now.ChangesIndicatorViews(before)) return;
    const bool otherKeys = Connection && now.byCombination != before.byCombination;
    if (otherKeys) selection::RemoveAllIndicators(); // the list's keys change their form
    stages_.Reload(lists ? QList<int>{0, 1, 2} : QList<int>{0});
    const FrontState front = stages_.Front();
    if (front.home || front.gallery) return;
    if (!front.data)
        stages_.ShowCurrent();
    else if (StageScreen* screen = stages_.ActiveScreen(); screen && (lists || otherKeys))
        screen->Refresh();
}

/// Keeps the selection after a change of language: its keys are the same in all languages, its texts are updated.
void SettingsChange::KeepSelection(int stage) {
    if (selection::FitKeptSelection()) SelectionChanged = true;
    stages_.ShowTextsAnew();
    if (stage != navigation::kHomePage && !stages_.Front().gallery) stages_.GoToStage(stage);
}

void SettingsChange::ChangeLanguage(const QString& label) {
    const ErrorTrap trap("ChangeLanguage");
    if (label.compare(Language, Qt::CaseInsensitive) == 0) return;
    const bool haveDatabase = Connection && FileExists(CurrentDatabase);
    {
        const WaitPointer wait;
        const int stage = CurrentStage;
        Language = label;
        ReadTranslateFile();
        const LanguageFace face = FaceOfLanguage(Language);
        if (!face.font.isEmpty()) ProductFont = face.font;
        if (face.size > 0) ProductFontSize = face.size;
        if (haveDatabase) stages_.HideStage();
        ShowInLanguage();
        if (haveDatabase) Relink();
        if (haveDatabase && DatabaseOpen)
            KeepSelection(stage);
        else if (haveDatabase)
            stages_.UnloadStages();
    }
    Q_EMIT databases_.Changed();
    if (haveDatabase && !LanguageInDatabase) ShowLanguageDialog();
}

} // namespace tessaro
