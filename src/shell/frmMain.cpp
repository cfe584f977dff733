#include "shell/frmMain.h"

#include "controls/CancelWatch.h"
#include "controls/HeldScreens.h"
#include "controls/MessageBox.h"
#include "controls/StageScreen.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "presentation/frmPrint.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "shell/CommandTargets.h"
#include "shell/DatabaseCommands.h"
#include "shell/DatabaseOpener.h"
#include "shell/MainMenu.h"
#include "shell/MenuTable.h"
#include "shell/SettingsChange.h"
#include "shell/StageNavigator.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QToolButton>

namespace tessaro {

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), ui_(std::make_unique<Ui::frmMain>()) {
    ui_->setupUi(this);
    menu_ = new MainMenu(this, MenuRows());
    stages_ = std::make_unique<StageNavigator>(Parts());
    databases_ = std::make_unique<DatabaseOpener>(Parts(), *stages_);
    settings_ = std::make_unique<SettingsChange>(Parts(), *stages_, *databases_);
    commands_ = std::make_unique<DatabaseCommands>(Parts(), *stages_, *databases_);
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setInterval(1000);
    ui_->picBanner_1->hide();
    ConnectParts();
    ConnectBars();
    SetFrame(this);
    SetMessageAnswerer(AskWithMessageBox);
}

frmMain::~frmMain() {
    Timer1_.stop();
    while (busy_ > 0)
        SetBusy(false);
    if (&TheFrame() == this) SetFrame(nullptr);
    SetMessageAnswerer({});
    disconnect(stages_.get(), nullptr, this, nullptr);
    commands_.reset();
    settings_.reset();
    databases_.reset();
    stages_.reset();
}

FrameParts frmMain::Parts() {
    return {
        *this, *menu_, *ui_->picToolBar, *ui_->frmAddressBar, *ui_->picBanner_1, *ui_->sbStatusBar, *ui_->stkChildren};
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowUnblocked && isVisible())
        QMetaObject::invokeMethod(this, &QWidget::activateWindow, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

void frmMain::ConnectParts() {
    connect(stages_.get(), &StageNavigator::FrontChanged, this, &frmMain::ShowFront);
    connect(stages_.get(), &StageNavigator::DatabaseChosen, databases_.get(), &DatabaseOpener::OpenAddress);
    connect(stages_.get(), &StageNavigator::OtherDatabaseChosen, databases_.get(), &DatabaseOpener::mnuFileOpen_Click);
    connect(stages_.get(), &StageNavigator::LanguageMissing, settings_.get(), &SettingsChange::ShowLanguageDialog);
    connect(databases_.get(), &DatabaseOpener::LanguageMissing, settings_.get(), &SettingsChange::ShowLanguageDialog);
    connect(databases_.get(), &DatabaseOpener::Changed, this, &frmMain::ShowFront);
}

void frmMain::ConnectBars() {
    connect(menu_, &MainMenu::CommandChosen, this, [this](const MenuRow& row, bool checked) {
        row.command({Parts(), *stages_, *databases_, *settings_, *commands_}, checked);
    });
    connect(menu_, &MainMenu::FavouriteChosen, databases_.get(), &DatabaseOpener::OpenFavourite);
    connect(menu_, &MainMenu::LanguageChosen, settings_.get(), &SettingsChange::ChangeLanguage);
    connect(ui_->picToolBar, &StandardToolBar::Chosen, this, &frmMain::Toolbar1_Click);
    connect(ui_->frmAddressBar, &AddressBar::Entered, databases_.get(), &DatabaseOpener::cmbAddress_Click);
    connect(ui_->frmAddressBar, &AddressBar::GoPressed, databases_.get(), &DatabaseOpener::picGo_Click);
    connect(ui_->picBanner_1, &StageBanner::Pressed, this, [this](int stage) {
        if (stage == CurrentStage && !stages_->Front().gallery) return;
        SetStatusText({});
        if (LanguageInDatabase) GoToStage(stage);
    });
    connect(ui_->sbStatusBar, &StatusBar::SoundPanelClicked, settings_.get(), &SettingsChange::SwitchSound);
    connect(&Timer1_, &QTimer::timeout, this, &frmMain::Timer1_Timer);
}

void frmMain::Toolbar1_Click(int item) {
    const ErrorTrap trap("Toolbar1_Click");
    switch (item) {
    case StandardToolBar::Back:
        return stages_->Back();
    case StandardToolBar::Forward:
        return stages_->Forward();
    case StandardToolBar::Stop:
        return stages_->OnScreen(&StageScreen::Stop);
    case StandardToolBar::Refresh:
        return stages_->Refresh();
    case StandardToolBar::Home:
        SetStatusText({});
        return GoToHome();
    case StandardToolBar::Search:
        return stages_->Search();
    case StandardToolBar::Favourites:
        return commands_->AddFavorites();
    case StandardToolBar::Print:
        return stages_->OnScreen(&StageScreen::Print);
    default:
        break;
    }
}

/// Updates what depends on the page in front: title, commands of menus and toolbar, the home page's list of databases.
void frmMain::ShowFront() {
    const FrontState front = stages_->Front();
    const QString database = ShownAddress(CurrentDatabase);
    if (frmSplash* home = stages_->Home()) home->ShowDatabases(ui_->frmAddressBar->Items(), database);
    const QString product = Setting(QStringLiteral("PRODUCT NAME"));
    const bool open = DatabaseOpen && !CurrentDatabase.isEmpty() && !IsNoDatabase(CurrentDatabase);
    setWindowTitle(open ? FileNameOf(CurrentDatabase).section(QLatin1Char('.'), 0, -2) + QStringLiteral(" – ") + product
                        : product);
    menu_->OfferCommands(front);
    ui_->picToolBar->SetEnabled(StandardToolBar::Stop, front.loads);
    ui_->picToolBar->SetEnabled(StandardToolBar::Print, front.prints);
    ui_->picToolBar->SetEnabled(StandardToolBar::Search, front.finds);
    ui_->picToolBar->SetEnabled(StandardToolBar::Favourites, front.data);
    ui_->picToolBar->SetEnabled(StandardToolBar::Refresh, front.data || front.gallery);
}

void frmMain::GoToStage(int stage) {
    stages_->GoToStage(stage);
}

void frmMain::GoToDataView() {
    stages_->GoToDataView();
}

void frmMain::GoToHome() {
    stages_->GoToHome();
}

void frmMain::UnloadForms() {
    stages_->UnloadForms();
}

int frmMain::SelectedIndicatorCount() const {
    return stages_->SelectedIndicatorCount();
}

void frmMain::SetStatusText(const QString& text) {
    ui_->sbStatusBar->SetText(text);
}

void frmMain::ShowWorkbook(const QString& file) {
    frmPrint form(this);
    form.SetFileName(file);
    form.exec();
}

void frmMain::StartProgress() {
    stopAsked_ = false;
    ui_->sbStatusBar->StartProgress();
}

bool frmMain::IsStopAsked() {
    CancelWatch watch(*this, ui_->picToolBar->Button(StandardToolBar::Stop));
    stopAsked_ = watch.Asked() || stopAsked_;
    return stopAsked_;
}

void frmMain::HoldScreens(bool hold) {
    held_ = hold ? std::make_unique<HeldScreens>(*ui_->stkChildren) : nullptr;
}

void frmMain::SetProgress(int percent) {
    ui_->sbStatusBar->SetProgress(percent);
}

void frmMain::EndProgress() {
    ui_->sbStatusBar->EndProgress();
}

void frmMain::SetBusy(bool busy) {
    if (busy) {
        ++busy_;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (busy_ > 0) {
        --busy_;
        QApplication::restoreOverrideCursor();
    }
}

void frmMain::ShowStatusTextFor(const QString& text, int milliseconds) {
    ui_->sbStatusBar->SetTextFor(text, milliseconds);
}

void frmMain::Timer1_Timer() {
    ErrorTrap trap("Timer1_Timer");
    ui_->sbStatusBar->ShowNow();
    trap.Try([&] { settings_->Sound().Tick(); });
    trap.Try([&] { databases_->RescanAddresses(); });
}

} // namespace tessaro
