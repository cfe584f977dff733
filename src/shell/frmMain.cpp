#include "shell/frmMain.h"

#include "controls/CopyText.h"
#include "controls/MessageBox.h"
#include "controls/StageScreen.h"
#include "metadata/frmInformationSheets.h"
#include "platform/SingleInstance.h"
#include "presentation/frmPrint.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/Documents.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/frmAbout.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

namespace tessaro {

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), ui_(std::make_unique<Ui::frmMain>()) {
    ui_->setupUi(this);
    menu_ = new MainMenu(this);
    screens_ = std::make_unique<StageScreens>(*ui_->stkChildren, [this](int stage) { ShowSummary(stage); });
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setInterval(1000);
    ui_->picBanner_1->hide();
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
    screens_->UnloadAll();
}

bool frmMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowUnblocked && isVisible())
        QMetaObject::invokeMethod(this, &QWidget::activateWindow, Qt::QueuedConnection);
    return QMainWindow::event(event);
}

void frmMain::ConnectBars() {
    connect(menu_, &MainMenu::Chosen, this, &frmMain::mnu_Click);
    connect(menu_, &MainMenu::FavouriteChosen, this, &frmMain::OpenFavourite);
    connect(menu_, &MainMenu::LanguageChosen, this, &frmMain::ChangeLanguage);
    connect(ui_->picToolBar, &StandardToolBar::Chosen, this, &frmMain::Toolbar1_Click);
    connect(ui_->frmAddressBar, &AddressBar::Entered, this, &frmMain::cmbAddress_Click);
    connect(ui_->frmAddressBar, &AddressBar::GoPressed, this, &frmMain::picGo_Click);
    connect(ui_->picBanner_1, &StageBanner::Pressed, this, [this](int stage) {
        if (stage == CurrentStage && !gallery_) return;
        SetStatusText({});
        if (LanguageInDatabase) GoToStage(stage);
    });
    connect(ui_->sbStatusBar, &StatusBar::SoundPanelClicked, this, [this] {
        Mute = !Mute;
        sound_.SetMuted(Mute);
        ui_->sbStatusBar->ShowSound(Mute);
    });
    connect(&Timer1_, &QTimer::timeout, this, &frmMain::Timer1_Timer);
}

void frmMain::mnu_Click(const QString& name, bool checked) {
    using Command = void (*)(frmMain&, bool);
    static const QHash<QString, Command> commands{
        {QStringLiteral("mnuFileOpen"), [](frmMain& frame, bool) { frame.mnuFileOpen_Click(); }},
        {QStringLiteral("mnuFileExit"), [](frmMain& frame, bool) { frame.close(); }},
        {QStringLiteral("mnuFileSaveAs"), [](frmMain& frame, bool) { frame.OnScreen(&StageScreen::SaveAs); }},
        {QStringLiteral("mnuFilePrint"), [](frmMain& frame, bool) { frame.OnScreen(&StageScreen::Print); }},
        {QStringLiteral("mnuFilemnu_Properties"), [](frmMain& frame, bool) { frame.mnuFilemnu_Properties_Click(); }},
        {QStringLiteral("mnumnu_Favoritesmnu_AddFavorites"), [](frmMain& frame, bool) { frame.AddFavorites(); }},
        {QStringLiteral("mnu_Gallery_Options_0"), [](frmMain& frame, bool) { frame.ShowGallery(0); }},
        {QStringLiteral("mnu_Gallery_Options_1"), [](frmMain& frame, bool) { frame.ShowGallery(1); }},
        {QStringLiteral("mnu_Gallery_Options_2"), [](frmMain& frame, bool) { frame.ShowGallery(2); }},
        {QStringLiteral("mnuDBSummReport"), [](frmMain& frame, bool) { frame.mnuDBSummReport_Click(); }},
        {QStringLiteral("mnu_Help_5"), [](frmMain& frame, bool) { frmAbout(&frame).exec(); }},
        {QStringLiteral("mnuEditCut"), [](frmMain& frame, bool) { frame.EditCommand("cut", nullptr); }},
        {QStringLiteral("mnuEditCopy"), [](frmMain& frame, bool) { frame.EditCommand("copy", &StageScreen::Copy); }},
        {QStringLiteral("mnuEditPaste"), [](frmMain& frame, bool) { frame.EditCommand("paste", nullptr); }},
        {QStringLiteral("mnuEditmnu_SelectAll"),
         [](frmMain& frame, bool) { frame.EditCommand("selectAll", &StageScreen::SelectAll); }},
        {QStringLiteral("mnuEditmnu_find"), [](frmMain& frame, bool) { frame.Search(); }},
        {QStringLiteral("mnu_ToolBars_Buttons_0"),
         [](frmMain& frame, bool on) { frame.ui_->picToolBar->setVisible(on); }},
        {QStringLiteral("mnu_ToolBars_Buttons_1"),
         [](frmMain& frame, bool on) { frame.ui_->frmAddressBar->setVisible(on); }},
        {QStringLiteral("mnuViewStatusBar"), [](frmMain& frame, bool on) { frame.ui_->sbStatusBar->setVisible(on); }},
        {QStringLiteral("mnuInfoSheets_0"), [](frmMain& frame, bool) { frame.ShowInformationSheets("IND"); }},
        {QStringLiteral("mnuInfoSheets_1"), [](frmMain& frame, bool) { frame.ShowInformationSheets("GOALS"); }},
        {QStringLiteral("mnuInfoSheets_3"), [](frmMain& frame, bool) { frame.ShowInformationSheets("THEMES"); }},
        {QStringLiteral("mnuInfoSheets_4"), [](frmMain& frame, bool) { frame.ShowInformationSheets("SOURCES"); }},
        {QStringLiteral("mnuInfoSheets_5"), [](frmMain& frame, bool) { frame.ShowInformationSheets("RIGHTS"); }},
        {QStringLiteral("mnuViewFilters"), [](frmMain& frame, bool) { frame.OnScreen(&StageScreen::Filter); }},
        {QStringLiteral("mnu_Help_0"), [](frmMain&, bool) { ShowHelpFileLinks(0); }},
        {QStringLiteral("mnu_Help_2"), [](frmMain&, bool) { ShowHelpFileLinks(2); }},
        {QStringLiteral("mnu_Help_3"), [](frmMain&, bool) { ShowHelpFileLinks(3); }},
    };
    if (const Command command = commands.value(name)) command(*this, checked);
}

/// An edit command means the text field that has the focus, otherwise the screen. What a list or tree shows is copied
/// wherever it is.
void frmMain::EditCommand(const char* onField, void (StageScreen::*onScreen)()) {
    QWidget* focus = QApplication::focusWidget();
    if (const auto* box = qobject_cast<QComboBox*>(focus); box && box->isEditable()) focus = box->lineEdit();
    if (auto* field = qobject_cast<QLineEdit*>(focus)) {
        QMetaObject::invokeMethod(field, onField);
        return;
    }
    if (onScreen == &StageScreen::Copy && CopyFromControl(focus)) return;
    StageScreen* screen = ActiveScreen();
    if (screen && onScreen) (screen->*onScreen)();
}

void frmMain::ShowInformationSheets(const char* code) {
    if (!Connection) {
        ShowMessage(QStringLiteral("026"));
        return;
    }
    frmInformationSheets(QLatin1String(code), this).exec();
}

void frmMain::OnScreen(void (StageScreen::*command)()) {
    if (StageScreen* screen = ActiveScreen()) (screen->*command)();
}

/// What can be done now, by the screen in front; menus and buttons alike.
void frmMain::OfferCommands() {
    const StageScreen* screen = ActiveScreen();
    const bool prints = screen && screen->CanPrint();
    const bool showsData = screen && !gallery_ && CurrentStage == navigation::DataStage;
    const bool finds = splash_ || gallery_ || CurrentStage == 0 || CurrentStage == 2;
    const std::pair<const char*, bool> entries[] = {
        {"mnuFilePrint", prints},
        {"mnuFileSaveAs", screen && screen->CanSaveAs()},
        {"mnuEditmnu_SelectAll", screen != nullptr},
        {"mnuEditmnu_find", finds},
        {"mnuViewFilters", showsData},
        {"mnumnu_Favoritesmnu_AddFavorites", showsData},
        {"mnuDBSummReport", DatabaseOpen && LanguageInDatabase},
    };
    for (const auto& [name, offered] : entries)
        menu_->Entry(QLatin1String(name))->setEnabled(offered);
    ui_->picToolBar->SetEnabled(StandardToolBar::Print, prints);
    ui_->picToolBar->SetEnabled(StandardToolBar::Search, finds);
    ui_->picToolBar->SetEnabled(StandardToolBar::Favourites, showsData);
    ui_->picToolBar->SetEnabled(StandardToolBar::Refresh, showsData || gallery_);
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
    ui_->sbStatusBar->StartProgress();
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
    if (++ticks_ >= 60) {
        const QString plainLanguages = Setting(QStringLiteral("CustomToolTip"));
        clockPanels_ = !plainLanguages.contains(Language);
        ticks_ = 1;
        ui_->sbStatusBar->ShowNow(clockPanels_);
    } else if (clockPanels_) {
        ui_->sbStatusBar->ShowNow(true);
    }
    trap.Try([&] { sound_.Tick(); });
    trap.Try([&] { RescanAddresses(); });
}

} // namespace tessaro
