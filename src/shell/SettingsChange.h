#pragma once

#include "shell/FrameParts.h"
#include "shell/SoundLoop.h"
#include "shell/ToolkitTexts.h"

#include <QObject>

#include <memory>

namespace tessaro {

struct Preferences;
class DatabaseOpener;
class StageNavigator;
class frmProperties;

/// Applies changes of language, fonts and preferences to the running program.
class SettingsChange final : public QObject {
    Q_OBJECT

  public:
    SettingsChange(const FrameParts& parts, StageNavigator& stages, DatabaseOpener& databases);

    /// Gives the whole window the fonts, direction and captions of the language. Lists and selections stay.
    void ShowInLanguage();
    /// Applies the session's preferences to the window; `before` are the values before the change.
    void ApplyTheSettings(const Preferences& before);
    /// Changes to a language by its label: texts, font, links of the open database. The selection is kept.
    void ChangeLanguage(const QString& label);
    /// Loads the sound of the session and plays it unless it is muted.
    void StartSound();
    void SwitchSound();
    [[nodiscard]] SoundLoop& Sound() { return sound_; }

    void mnuFilemnu_Properties_Click();
    /// The form of the preferences: what it applies takes effect at once.
    [[nodiscard]] std::unique_ptr<frmProperties> MakeProperties();
    /// Lists the languages of a database that lacks the current one, and opens it in the one that is chosen.
    void ShowLanguageDialog();

  private:
    void TakeImportedLanguage(const QString& file);
    void Relink();
    void OpenInLanguage(const QString& label);
    void KeepSelection(int stage);
    void ReloadScreens(const Preferences& now, const Preferences& before);

    FrameParts parts_;
    StageNavigator& stages_;
    DatabaseOpener& databases_;
    SoundLoop sound_;
    ToolkitTexts toolkitTexts_;
};

} // namespace tessaro
