#pragma once

#include "shell/FrameParts.h"
#include "shell/Navigation.h"
#include "shell/StageScreens.h"

#include <QObject>

namespace tessaro {

class StageScreen;
class frmGALMain;
class frmSplash;

/// What is in front of the frame, and what it offers.
struct FrontState {
    bool home = false;
    bool gallery = false;
    bool screen = false; ///< a stage or the gallery
    bool data = false;   ///< the data view
    bool prints = false;
    bool savesAs = false;
    bool finds = false;
    bool loads = false; ///< something is being loaded, which can be stopped
};

/// The way between the home page, the four stages and the gallery.
class StageNavigator final : public QObject {
    Q_OBJECT

  public:
    explicit StageNavigator(const FrameParts& parts);
    ~StageNavigator() override;

    void ShowIndicatorScreen();
    /// Shows a stage; stage 3 as GoToDataView. Nothing without a database, or while the user stays in the gallery.
    void GoToStage(int stage);
    /// Shows the data view, unless one of the selections is empty, which is told.
    void GoToDataView();
    void GoToHome();
    /// The home page instead of what is shown; the bars stay as they are.
    void ShowSplash();
    /// Takes the stages down; the gallery stays.
    void UnloadStages();
    /// Takes all screens down.
    void UnloadForms();
    /// The home page with nothing loaded: the database in use has no texts in the current language.
    void ComeHomeWithoutLanguage();
    /// A picture button of the home page, or Search there.
    void EnterFromHome(int stage);
    /// Leaves the current stage; its screen stays loaded.
    void HideStage();

    void Back();
    void Forward();
    void Refresh();
    /// On the home page the way into the stages; on the screens with lists, the search in them.
    void Search();
    /// A command of the screen in front, if there is one.
    void OnScreen(void (StageScreen::*command)());

    /// The gallery over what is in front. 0: the folder of presentations; 1: that of the product's samples; 2: the
    /// folder of images, in the desktop's own program.
    void ShowGallery(int kind);
    /// Takes the gallery down. False when the user stays with changes that aren't saved, which `mayStay` offers.
    bool LeaveGallery(bool mayStay = true);

    /// The gallery when it is in front, otherwise the screen of the current stage; null on the home page.
    [[nodiscard]] StageScreen* ActiveScreen() const;
    [[nodiscard]] FrontState Front() const;
    [[nodiscard]] frmSplash* Home() const { return splash_; }
    [[nodiscard]] int SelectedIndicatorCount() const;

    void SetFormCaptions();
    /// Screens that are loaded, made anew from what is selected. The current one is shown again.
    void Reload(const QList<int>& stages);
    /// The screens that are loaded show the texts of the database anew, in another language: the lists are made again,
    /// the data view keeps its options and reads its rows when it is shown.
    void ShowTextsAnew();
    void ShowSummaries();
    void DisableHistory();
    /// Shows the current stage once more.
    void ShowCurrent();

  Q_SIGNALS:
    /// Something else is in front: menus and buttons offer other commands.
    void FrontChanged();
    /// A database was chosen on the home page, or another one is to be looked for.
    void DatabaseChosen(const QString& address);
    void OtherDatabaseChosen();
    /// A stage is wanted, but the database has no texts in the current language.
    void LanguageMissing();

  private:
    void Enter(int stage);
    void MakeSplash();
    void UnloadSplash();
    void ReturnFromGallery();
    void ShowStage(int stage);
    void ShowSummary(int stage);
    void ApplyButtons(const navigation::ButtonChange& change);

    FrameParts parts_;
    StageScreens screens_;
    frmSplash* splash_ = nullptr;
    frmGALMain* gallery_ = nullptr;
};

} // namespace tessaro
