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

/// Language, fonts and preferences while the program runs.
class SettingsChange final : public QObject {
    Q_OBJECT

  public:
    SettingsChange(const FrameParts& parts, StageNavigator& stages, DatabaseOpener& databases);

    /// Fonts, direction and captions of everything that stands, without touching what the screens hold.
    void ShowInLanguage();
    /// Brings the running session into line with its values; `before` is what they were.
    void ApplyTheSettings(const Preferences& before);
    /// Takes another language into use: captions, fonts, links of the open database.
    void ChangeLanguage(const QString& label);
    /// Loads the sound of the session and plays it unless it is muted.
    void StartSound();
    void SwitchSound();
    [[nodiscard]] SoundLoop& Sound() { return sound_; }

    void mnuFilemnu_Properties_Click();
    /// The form of the preferences: what it applies takes effect at once.
    [[nodiscard]] std::unique_ptr<frmProperties> MakeProperties();
    /// The languages that the open database has, when it lacks the current one.
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
