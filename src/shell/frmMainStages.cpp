#include "controls/StageScreen.h"
#include "gallery/frmGALMain.h"
#include "platform/SingleInstance.h"
#include "selection/KeptSelection.h"
#include "selection/ScreenParts.h"
#include "selection/SelectionGuard.h"
#include "selection/frmIndicators.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/frmLanguage.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <array>

namespace tessaro {

void frmMain::ShowIndicatorScreen() {
    UnloadSplash();
    ui_->picBanner_1->show();
    CurrentStage = 0;
    Record(0);
    ShowStage(0);
}

void frmMain::GoToStage(int stage) {
    if (stage == navigation::DataStage) return GoToDataView();
    if (!navigation::IsStage(stage) || !Connection) return;
    const ErrorTrap trap("GoToStage");
    if (!LeaveGallery()) return;
    screens_->HideStage(CurrentStage);
    UnloadSplash();
    ui_->picBanner_1->show();
    CurrentStage = stage;
    Record(stage);
    ShowStage(stage);
}

void frmMain::GoToDataView() {
    if (!Connection) return;
    const ErrorTrap trap("GoToDataView");
    if (!selection::MayOpenDataView() || !LeaveGallery()) return;
    const WaitPointer wait;
    screens_->HideStage(CurrentStage);
    UnloadSplash();
    ui_->picBanner_1->show();
    CurrentStage = navigation::DataStage;
    Record(navigation::DataStage);
    ShowStage(navigation::DataStage);
}

void frmMain::GoToHome() {
    const ErrorTrap trap("GoToHome");
    if (!LeaveGallery()) return;
    if (LanguageInDatabase) screens_->HideStage(CurrentStage);
    CurrentStage = navigation::HomePage;
    ShowSplash();
    ui_->picBanner_1->hide();
    HomeIsShown = true;
    DisableHistory();
    OfferCommands();
}

void frmMain::UnloadForms() {
    LeaveGallery(false);
    screens_->UnloadAll();
    ui_->picBanner_1->ClearSummaries();
}

int frmMain::SelectedIndicatorCount() const {
    if (!VisitedStages.contains(navigation::FormNameOf(0), Qt::CaseInsensitive)) return 0;
    const auto* screen = qobject_cast<const frmIndicators*>(screens_->Loaded(0));
    return screen ? screen->SelectedCount() : 0;
}

void frmMain::EnterFromHome(int stage) {
    const ErrorTrap trap("picIndicators_Click");
    if (IsNoDatabase(ui_->frmAddressBar->Text())) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    if (!LanguageInDatabase) {
        ShowLanguageDialog();
        return;
    }
    if (!DatabaseOpen || !Connection) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    GoToStage(stage);
}

StageScreen* frmMain::ActiveScreen() const {
    if (gallery_) return gallery_;
    return splash_ ? nullptr : screens_->Loaded(CurrentStage);
}

void frmMain::ShowSplash() {
    if (!splash_) {
        splash_ = new frmSplash(ui_->stkChildren);
        ui_->stkChildren->addWidget(splash_);
        connect(splash_, &frmSplash::StageChosen, this, &frmMain::EnterFromHome);
        connect(splash_, &frmSplash::DataChosen, this, [this] { Search(); });
        connect(splash_, &frmSplash::GalleryChosen, this, &frmMain::ShowGallery);
        connect(splash_, &frmSplash::OtherDatabaseChosen, this, &frmMain::mnuFileOpen_Click);
        connect(splash_, &frmSplash::DatabaseChosen, this, [this](const QString& address) {
            ui_->frmAddressBar->Show(address);
            cmbAddress_Click();
        });
    }
    ui_->stkChildren->setCurrentWidget(splash_);
    ui_->picBanner_1->SetCurrent(navigation::HomePage);
    ShowDatabases();
    splash_->setFocus();
}

void frmMain::UnloadSplash() {
    if (!splash_) return;
    frmSplash* gone = splash_;
    splash_ = nullptr;
    gone->Unload();
    ui_->stkChildren->removeWidget(gone);
    gone->deleteLater();
}

void frmMain::ShowStage(int stage) {
    screens_->ShowStage(stage);
    ui_->picBanner_1->SetCurrent(stage);
    OfferCommands();
}

/// What is chosen in a stage, on its button of the banner. A stage that nobody has opened may have a selection of an
/// earlier run.
void frmMain::ShowSummary(int stage) {
    constexpr std::array<const char*, 3> keys{"TS_IndicatorCount", "TS_TimePeriodCount", "TS_AreaCount"};
    QString summary;
    if (const StageScreen* screen = screens_->Loaded(stage))
        summary = screen->SelectionSummary();
    else if (stage < navigation::DataStage)
        summary = SummaryOf(QLatin1String(keys.at(static_cast<std::size_t>(stage))),
                            selection::CountOfSelection(static_cast<selection::Stage>(stage)));
    ui_->picBanner_1->SetSummary(stage, summary);
}

void frmMain::ShowSummaries() {
    for (int stage = 0; stage < navigation::StageCount; ++stage)
        ShowSummary(stage);
}

void frmMain::Record(int stage) {
    ApplyButtons(navigation::AddToVisitedStages(navigation::FormNameOf(stage)));
}

void frmMain::ApplyButtons(const navigation::ButtonChange& change) {
    if (change.back) ui_->picToolBar->SetEnabled(StandardToolBar::Back, *change.back);
    if (change.forward) ui_->picToolBar->SetEnabled(StandardToolBar::Forward, *change.forward);
}

void frmMain::DisableHistory() {
    ApplyButtons({false, false});
}

void frmMain::Toolbar1_Click(int item) {
    const ErrorTrap trap("Toolbar1_Click");
    switch (item) {
    case StandardToolBar::Back:
        return Back();
    case StandardToolBar::Forward:
        return Forward();
    case StandardToolBar::Refresh:
        return Refresh();
    case StandardToolBar::Home:
        SetStatusText({});
        return GoToHome();
    case StandardToolBar::Search:
        return Search();
    case StandardToolBar::Favourites:
        return AddFavorites();
    case StandardToolBar::Print:
        return OnScreen(&StageScreen::Print);
    default:
        break;
    }
}

void frmMain::Back() {
    if (gallery_) return ReturnFromGallery();
    if (const auto target = navigation::BackTarget()) GoToStage(*target);
    ApplyButtons(navigation::AfterBack());
}

void frmMain::Forward() {
    const auto target = navigation::ForwardTarget();
    if (!target) return;
    GoToStage(*target);
    ApplyButtons(navigation::AfterForward());
}

void frmMain::Refresh() {
    if (gallery_) return gallery_->Refresh();
    StageScreen* screen = ActiveScreen();
    if (!screen || CurrentStage != navigation::DataStage) return;
    SetStatusText(GetText(QStringLiteral("COMM_PROCESSING")));
    screen->Refresh();
    SetStatusText({});
}

/// On the home page the way into the stages; on the screens with lists, the search in them.
void frmMain::Search() {
    if (gallery_) return gallery_->Find();
    if (splash_) return EnterFromHome(0);
    StageScreen* screen = ActiveScreen();
    if (!screen || (CurrentStage != 0 && CurrentStage != 2)) return;
    screen->Find();
    SetStatusText({});
}

} // namespace tessaro
