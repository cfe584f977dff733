#pragma once

#include "session/Frame.h"
#include "shell/Navigation.h"
#include "shell/SoundLoop.h"
#include "shell/ToolkitTexts.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace Ui {
class frmMain;
}

namespace tessaro {

class MainMenu;
struct Preferences;
class SingleInstance;
class StageScreen;
class StageScreens;
class frmGALMain;
class frmSplash;

/// The main frame: start and exit of the session, the way between home page and stages, the change of the database. It
/// wires the bars to these and knows no more of a screen than StageScreen tells.
class frmMain final : public QMainWindow, public Frame {
    Q_OBJECT

  public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Start (frmMainStart.cpp).
    /// All start-up work; shows the frame. False when the program is to end: another instance runs, or TS.ini is
    /// missing.
    [[nodiscard]] bool MDIForm_Load(const QString& commandLine);
    /// Before the start: takes the whole of a screen that has no room for the usual size and a title above it.
    void FitToScreen();

    // The database (frmMainDatabase.cpp).
    /// Opens what cmbAddress names.
    void SelectDataBase();
    void LoadNewMDB(const QString& path);
    /// Empties the selection and takes the stages down.
    void RestoreBlanks();
    /// The file dialog of the File menu.
    void mnuFileOpen_Click();
    /// The go button: opens what is typed, and tells when the database lacks the language.
    void picGo_Click();
    void cmbAddress_Click();

    // Preferences and language (frmMainSettings.cpp).
    void mnuFilemnu_Properties_Click();
    /// Brings the running session into line with its values; `before` is what they were.
    void ApplyTheSettings(const Preferences& before);
    /// Takes another language into use: captions, fonts, links of the open database.
    void ChangeLanguage(const QString& label);
    [[nodiscard]] SoundLoop& Sound() { return sound_; }

    // What is made of the open database (frmMainReports.cpp).
    /// Makes or removes favourites; only while the data view is in front.
    void AddFavorites();
    /// Opens a favourite by its path.
    void OpenFavourite(const QString& path);
    void mnuDBSummReport_Click();

    // The stages (frmMainStages.cpp).
    void GoToStage(int stage) override;
    void GoToDataView() override;
    void GoToHome() override;
    void UnloadForms() override;
    [[nodiscard]] int SelectedIndicatorCount() const override;
    void ShowIndicatorScreen();
    /// A picture button of the home page.
    void EnterFromHome(int stage);
    /// An item of Toolbar1.
    void Toolbar1_Click(int item);
    /// The gallery over what is in front. 0: the folder of presentations; 1: that of the product's samples; 2: the
    /// folder of images, in the desktop's own program (frmMainPresentations.cpp).
    void ShowGallery(int kind);
    /// The gallery when it is in front, otherwise the screen of the current stage; null on the home page.
    [[nodiscard]] StageScreen* ActiveScreen() const;

    // Frame: status bar and pointer.
    void SetStatusText(const QString& text) override;
    void StartProgress() override;
    void SetProgress(int percent) override;
    void EndProgress() override;
    void SetBusy(bool busy) override;
    void ShowStatusTextFor(const QString& text, int milliseconds) override;
    void ShowWorkbook(const QString& file) override;
    void StartPresentation(QChar type) override;
    [[nodiscard]] bool OffersPresentation(QChar type) const override;

    /// Each second: clock, sound, the list of databases.
    void Timer1_Timer();

  protected:
    /// Takes the keyboard back when a dialog has gone; not every desktop does that by itself.
    bool event(QEvent* event) override;
    /// MDIForm_QueryUnload: asks, saves the preferences, ends the session.
    void closeEvent(QCloseEvent* event) override;

  private:
    void ConnectBars();
    void mnu_Click(const QString& name, bool checked);
    void ShowInformationSheets(const char* code);
    void OnScreen(void (StageScreen::*command)());
    void OfferCommands();
    void EditCommand(const char* onField, void (StageScreen::*onScreen)());
    // Start
    void ShowProduct();
    void SetFormFont();
    void OpenStartPage();
    void OpenRememberedDatabase();
    void OpenDefaultDatabase();
    bool OpenAtStart(const QString& file);
    void FillAddresses();
    void WarnOfMissingSpreadsheet();
    // Database
    [[nodiscard]] bool OpenInPlace(const QString& path);
    [[nodiscard]] QString CheckedFile(const QString& path);
    void ShowLanguageDialog();
    void RescanAddresses();
    void ShowDatabases();
    void SetCaptions();
    // Settings
    void ApplySound(bool otherSound);
    void ShowInLanguage();
    void ReloadScreens(const Preferences& now, const Preferences& before);
    // Stages
    void ShowSplash();
    void UnloadSplash();
    bool LeaveGallery(bool mayStay = true);
    void ReturnFromGallery();
    void ShowStage(int stage);
    void ShowSummary(int stage);
    void ShowSummaries();
    void Record(int stage);
    void Back();
    void Forward();
    void Refresh();
    void Search();
    void ApplyButtons(const navigation::ButtonChange& change);
    void DisableHistory();

    std::unique_ptr<Ui::frmMain> ui_;
    std::unique_ptr<SingleInstance> instance_;
    std::unique_ptr<StageScreens> screens_;
    MainMenu* menu_ = nullptr;
    frmSplash* splash_ = nullptr;
    frmGALMain* gallery_ = nullptr;
    SoundLoop sound_;
    ToolkitTexts toolkitTexts_;
    QTimer Timer1_;
    int ticks_ = 0;
    bool clockPanels_ = false;
    int busy_ = 0;
    bool started_ = false;
};

} // namespace tessaro
