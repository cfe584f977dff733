#include "shell/StageNavigator.h"

#include "controls/StageScreen.h"
#include "gallery/frmGALMain.h"
#include "selection/KeptSelection.h"
#include "selection/ScreenParts.h"
#include "selection/frmIndicators.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Strings.h"
#include "shell/AddressBar.h"
#include "shell/StageBanner.h"
#include "shell/StandardToolBar.h"
#include "shell/StatusBar.h"
#include "shell/frmSplash.h"
#include "view/SelectionGuard.h"

#include <QStackedWidget>

#include <array>

namespace tessaro {

StageNavigator::StageNavigator(const FrameParts& parts)
    : parts_(parts), screens_(parts.pages, [this](int stage) { ShowSummary(stage); }) {}

StageNavigator::~StageNavigator() {
    screens_.UnloadAll();
}

void StageNavigator::HideStage() {
    screens_.HideStage(CurrentStage);
}

void StageNavigator::ShowIndicatorScreen() {
    Enter(0);
}

void StageNavigator::GoToStage(int stage) {
    if (stage == navigation::kDataStage) return GoToDataView();
    if (!navigation::IsStage(stage) || !Connection) return;
    const ErrorTrap trap("GoToStage");
    if (!LeaveGallery()) return;
    screens_.HideStage(CurrentStage);
    Enter(stage);
}

void StageNavigator::GoToDataView() {
    if (!Connection) return;
    const ErrorTrap trap("GoToDataView");
    if (!selection::MayOpenDataView() || !LeaveGallery()) return;
    const WaitPointer wait;
    screens_.HideStage(CurrentStage);
    Enter(navigation::kDataStage);
}

void StageNavigator::Enter(int stage) {
    UnloadSplash();
    parts_.banner.show();
    CurrentStage = stage;
    ApplyButtons(navigation::AddToVisitedStages(navigation::FormNameOf(stage)));
    ShowStage(stage);
}

void StageNavigator::GoToHome() {
    const ErrorTrap trap("GoToHome");
    if (!LeaveGallery()) return;
    if (LanguageInDatabase) screens_.HideStage(CurrentStage);
    CurrentStage = navigation::kHomePage;
    ShowSplash();
    parts_.banner.hide();
    HomeIsShown = true;
    DisableHistory();
    Q_EMIT FrontChanged();
}

void StageNavigator::UnloadForms() {
    LeaveGallery(false);
    UnloadStages();
}

void StageNavigator::UnloadStages() {
    screens_.UnloadAll();
    parts_.banner.ClearSummaries();
}

void StageNavigator::ComeHomeWithoutLanguage() {
    UnloadForms();
    HomeIsShown = true;
    GoToHome();
}

int StageNavigator::SelectedIndicatorCount() const {
    if (!VisitedStages.contains(navigation::FormNameOf(0), Qt::CaseInsensitive)) return 0;
    const auto* screen = qobject_cast<const frmIndicators*>(screens_.Loaded(0));
    return screen ? screen->SelectedCount() : 0;
}

void StageNavigator::EnterFromHome(int stage) {
    const ErrorTrap trap("picIndicators_Click");
    if (IsNoDatabase(parts_.address.Text()))
        ShowMessage(QStringLiteral("026"));
    else if (!LanguageInDatabase)
        Q_EMIT LanguageMissing();
    else if (!DatabaseOpen || !Connection)
        ShowMessage(QStringLiteral("026"));
    else
        GoToStage(stage);
}

StageScreen* StageNavigator::ActiveScreen() const {
    if (gallery_) return gallery_;
    return splash_ ? nullptr : screens_.Loaded(CurrentStage);
}

FrontState StageNavigator::Front() const {
    const StageScreen* screen = ActiveScreen();
    FrontState front;
    front.home = splash_ != nullptr;
    front.gallery = gallery_ != nullptr;
    front.screen = screen != nullptr;
    front.data = screen && !gallery_ && CurrentStage == navigation::kDataStage;
    front.prints = screen && screen->CanPrint();
    front.savesAs = screen && screen->CanSaveAs();
    front.loads = screen && screen->CanStop();
    front.finds = splash_ || gallery_ || CurrentStage == 0 || CurrentStage == 2;
    return front;
}

void StageNavigator::OnScreen(void (StageScreen::*command)()) {
    if (StageScreen* screen = ActiveScreen()) (screen->*command)();
}

void StageNavigator::ShowSplash() {
    if (!splash_) MakeSplash();
    parts_.pages.setCurrentWidget(splash_);
    parts_.banner.SetCurrent(navigation::kHomePage);
    Q_EMIT FrontChanged();
    splash_->setFocus();
}

void StageNavigator::MakeSplash() {
    splash_ = new frmSplash(&parts_.pages);
    parts_.pages.addWidget(splash_);
    connect(splash_, &frmSplash::StageChosen, this, &StageNavigator::EnterFromHome);
    connect(splash_, &frmSplash::DataChosen, this, &StageNavigator::Search);
    connect(splash_, &frmSplash::GalleryChosen, this, &StageNavigator::ShowGallery);
    connect(splash_, &frmSplash::OtherDatabaseChosen, this, &StageNavigator::OtherDatabaseChosen);
    connect(splash_, &frmSplash::DatabaseChosen, this, &StageNavigator::DatabaseChosen);
}

void StageNavigator::UnloadSplash() {
    if (!splash_) return;
    frmSplash* gone = splash_;
    splash_ = nullptr;
    gone->Unload();
    parts_.pages.removeWidget(gone);
    gone->deleteLater();
}

void StageNavigator::ShowStage(int stage) {
    screens_.ShowStage(stage);
    parts_.banner.SetCurrent(stage);
    Q_EMIT FrontChanged();
}

/// Shows on the banner what is selected in a stage. A stage whose screen isn't loaded may have a selection of an
/// earlier run.
void StageNavigator::ShowSummary(int stage) {
    constexpr std::array<const char*, 3> keys{"TS_IndicatorCount", "TS_TimePeriodCount", "TS_AreaCount"};
    QString summary;
    if (const StageScreen* screen = screens_.Loaded(stage))
        summary = screen->SelectionSummary();
    else if (stage < navigation::kDataStage)
        summary = SummaryOf(QLatin1String(keys.at(static_cast<std::size_t>(stage))),
                            selection::CountOfSelection(static_cast<selection::Stage>(stage)));
    parts_.banner.SetSummary(stage, summary);
    parts_.toolBar.SetEnabled(StandardToolBar::Stop, Front().loads);
}

void StageNavigator::ShowSummaries() {
    for (int stage = 0; stage < navigation::kStageCount; ++stage)
        ShowSummary(stage);
}

void StageNavigator::SetFormCaptions() {
    screens_.SetFormCaptions();
    if (splash_) splash_->SetFormCaptions();
    if (gallery_) gallery_->SetFormCaptions();
}

void StageNavigator::Reload(const QList<int>& stages) {
    // A new screen raises the flag when it finds a selection, which has not changed.
    const bool changed = SelectionChanged;
    screens_.Reload(stages);
    SelectionChanged = changed;
    ShowSummaries();
}

void StageNavigator::ShowTextsAnew() {
    Reload({0, 1, 2});
    if (StageScreen* data = screens_.Loaded(navigation::kDataStage)) data->TextsChanged();
}

void StageNavigator::ShowCurrent() {
    ShowStage(CurrentStage);
}

void StageNavigator::ApplyButtons(const navigation::ButtonChange& change) {
    if (change.back) parts_.toolBar.SetEnabled(StandardToolBar::Back, *change.back);
    if (change.forward) parts_.toolBar.SetEnabled(StandardToolBar::Forward, *change.forward);
}

void StageNavigator::DisableHistory() {
    ApplyButtons({false, false});
}

void StageNavigator::Back() {
    if (gallery_) return ReturnFromGallery();
    if (const auto target = navigation::BackTarget()) GoToStage(*target);
    ApplyButtons(navigation::AfterBack());
}

void StageNavigator::Forward() {
    const auto target = navigation::ForwardTarget();
    if (!target) return;
    GoToStage(*target);
    ApplyButtons(navigation::AfterForward());
}

void StageNavigator::Refresh() {
    if (gallery_) return gallery_->Refresh();
    StageScreen* screen = ActiveScreen();
    if (!screen || CurrentStage != navigation::kDataStage) return;
    parts_.status.SetText(GetText(QStringLiteral("COMM_PROCESSING")));
    screen->Refresh();
    parts_.status.SetText({});
}

void StageNavigator::Search() {
    if (gallery_) return gallery_->Find();
    if (splash_) return EnterFromHome(0);
    StageScreen* screen = ActiveScreen();
    if (!screen || (CurrentStage != 0 && CurrentStage != 2)) return;
    screen->Find();
    parts_.status.SetText({});
}

} // namespace tessaro
