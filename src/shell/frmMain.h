#pragma once

#include "session/Frame.h"
#include "shell/FrameParts.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace Ui {
class frmMain;
}

namespace tessaro {

class DatabaseCommands;
class DatabaseOpener;
class HeldScreens;
class MainMenu;
class SettingsChange;
class SingleInstance;
class StageNavigator;

/// The main window: start and exit of the program. It owns the bars and the classes that do the work, connects them,
/// and implements what other rooms may ask of the window (session/Frame.h).
class frmMain final : public QMainWindow, public Frame {
    Q_OBJECT

  public:
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // Start (frmMainStart.cpp).
    /// All start-up work; shows the frame. False when the program is to end: another instance runs, or TS.ini is
    /// missing.
    [[nodiscard]] bool MDIForm_Load(const QString& commandLine);
    /// Maximises the window where the screen is too small for its usual size. To be called before MDIForm_Load.
    void FitToScreen();

    [[nodiscard]] StageNavigator& Stages() { return *stages_; }
    [[nodiscard]] DatabaseOpener& Databases() { return *databases_; }
    [[nodiscard]] SettingsChange& Settings() { return *settings_; }

    // Frame: the way between the stages.
    void GoToStage(int stage) override;
    void GoToDataView() override;
    void GoToHome() override;
    void UnloadForms() override;
    [[nodiscard]] int SelectedIndicatorCount() const override;
    // Frame: status bar, pointer, windows.
    void SetStatusText(const QString& text) override;
    void StartProgress() override;
    void SetProgress(int percent) override;
    void EndProgress() override;
    [[nodiscard]] bool IsStopAsked() override;
    void HoldScreens(bool hold) override;
    void SetBusy(bool busy) override;
    void ShowStatusTextFor(const QString& text, int milliseconds) override;
    void ShowWorkbook(const QString& file) override;
    void StartCalculation(int calcType) override;
    [[nodiscard]] bool OffersCalculation(int calcType) const override;
    void StartPresentation(QChar type) override;
    [[nodiscard]] bool OffersPresentation(QChar type) const override;

    /// Each second: clock, sound, the list of databases.
    void Timer1_Timer();

  protected:
    /// Activates the window when a modal dialog has closed, which not every window manager does.
    bool event(QEvent* event) override;
    /// MDIForm_QueryUnload: asks, saves the preferences, ends the session.
    void closeEvent(QCloseEvent* event) override;

  private:
    [[nodiscard]] FrameParts Parts();
    void ConnectParts();
    void ConnectBars();
    void Toolbar1_Click(int item);
    void ShowFront();
    void ShowProduct();

    std::unique_ptr<Ui::frmMain> ui_;
    std::unique_ptr<SingleInstance> instance_;
    MainMenu* menu_ = nullptr;
    std::unique_ptr<HeldScreens> held_;
    std::unique_ptr<StageNavigator> stages_;
    std::unique_ptr<DatabaseOpener> databases_;
    std::unique_ptr<SettingsChange> settings_;
    std::unique_ptr<DatabaseCommands> commands_;
    QTimer Timer1_;
    int busy_ = 0;
    bool started_ = false;
    bool stopAsked_ = false; ///< by the user, since StartProgress
};

} // namespace tessaro
