#pragma once

#include "shell/FrameParts.h"
#include "shell/Navigation.h"
#include "shell/StageScreens.h"

#include <QObject>

namespace tessaro {

class StageScreen;
class frmGALMain;
class frmSplash;

/// Which page is in front, and which commands can be used on it.
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

/// Moves between the home page, the four stages and the gallery.
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
    /// Shows the home page; banner and toolbar stay as they are.
    void ShowSplash();
    /// Unloads the four stage screens; the gallery stays.
    void UnloadStages();
    /// Unloads the stage screens and the gallery.
    void UnloadForms();
    /// Unloads all screens and shows the home page, because the database has no texts in the current language.
    void ComeHomeWithoutLanguage();
    /// Opens a stage from the home page, by its picture button or by Search. Says why when it can't.
    void EnterFromHome(int stage);
    /// Tells the current stage's screen that it is left; it stays loaded.
    void HideStage();

    void Back();
    void Forward();
    void Refresh();
    /// On the home page opens stage 0; in the gallery and on stages 0 and 2 searches.
    void Search();
    /// Calls a command of the screen in front, if there is one.
    void OnScreen(void (StageScreen::*command)());

    /// Shows the gallery on top of the current page. `kind` 0: the folder of presentations; 1: that of the product's
    /// samples; 2 opens the folder of images in the desktop's file manager instead.
    void ShowGallery(int kind);
    /// Closes the gallery, if it is open. With unsaved changes the user is asked; False when they choose to stay, which
    /// is offered only with `mayStay`.
    bool LeaveGallery(bool mayStay = true);

    /// The gallery when it is in front, otherwise the screen of the current stage; null on the home page.
    [[nodiscard]] StageScreen* ActiveScreen() const;
    [[nodiscard]] FrontState Front() const;
    [[nodiscard]] frmSplash* Home() const { return splash_; }
    [[nodiscard]] int SelectedIndicatorCount() const;

    void SetFormCaptions();
    /// Makes those of the screens that are loaded anew from the selection tables. The current one stays in front.
    void Reload(const QList<int>& stages);
    /// The screens that are loaded show the texts of the database anew, in another language: the lists are made again,
    /// the data view keeps its options and reads its rows when it is shown.
    void ShowTextsAnew();
    void ShowSummaries();
    void DisableHistory();
    /// Enters the current stage again.
    void ShowCurrent();

  Q_SIGNALS:
    /// Another page is in front; Front() tells which commands can be used now.
    void FrontChanged();
    /// Chosen on the home page: a database of the list, or to look for another file.
    void DatabaseChosen(const QString& address);
    void OtherDatabaseChosen();
    /// A stage can't open because the database has no texts in the current language.
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
