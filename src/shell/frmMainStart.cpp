#include "controls/CopyText.h"
#include "controls/Theme.h"
#include "controls/ThemeSetup.h"
#include "controls/TintedIcon.h"
#include "office/SpreadsheetApplication.h"
#include "platform/CommandLine.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Startup.h"
#include "shell/DatabaseOpener.h"
#include "shell/MainMenu.h"
#include "shell/Navigation.h"
#include "shell/SettingsChange.h"
#include "shell/StageNavigator.h"
#include "shell/frmMain.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

namespace tessaro {

void frmMain::FitToScreen() {
    constexpr int kTitle = 5 * theme::kGrid;
    const QSize room = screen()->availableSize() - QSize(0, kTitle);
    if (room.width() >= width() && room.height() >= height()) return;
    resize(size().boundedTo(room));
    setWindowState(Qt::WindowMaximized);
}

bool frmMain::MDIForm_Load(const QString& commandLine) {
    const ErrorTrap trap("MDIForm_Load");
    instance_ = std::make_unique<SingleInstance>(WritableHome());
    if (!instance_->isFirst()) {
        instance_->RaiseFirst();
        return false;
    }
    instance_->SetRaiseHandler([this] {
        if (isMinimized()) showNormal();
        raise();
        activateWindow();
    });
    AppPath = CommandLineValue(commandLine, QStringLiteral("/a"), SwitchAttribute::Directory);
    if (Initialize() == StartResult::EndProgram) return false;
    started_ = true;
    CopyByKey(*this);
    office::SpreadsheetApplication::SetProfileFolder(JoinPath({CacheFolder, QStringLiteral("Office")}));
    ShowProduct();
    settings_->ShowInLanguage();
    show();
    ui_->picBanner_1->SetCurrent(navigation::kHomePage);
    ReopenedLastDatabase = false;
    DatabaseOpen = true;
    LanguageInDatabase = true;
    databases_->OpenStartPage();
    databases_->FillAddresses();
    if (!office::SpreadsheetApplication::IsInstalled()) ShowMessage(QStringLiteral("046"));
    Timer1_.start();
    return true;
}

/// Title, icon, colours, pictures and sound of the product.
void frmMain::ShowProduct() {
    QApplication::setApplicationDisplayName(Setting(QStringLiteral("PRODUCT NAME")));
    QApplication::setDesktopFileName(QStringLiteral("tessaro"));
    theme::Apply(*static_cast<QApplication*>(QApplication::instance()));
    const QIcon icon = theme::Icon(Setting(QStringLiteral("APP ICON")));
    QApplication::setWindowIcon(icon);
    setWindowIcon(icon);
    setWindowTitle(Setting(QStringLiteral("PRODUCT NAME")));
    menu_->SetPictures();
    ui_->picToolBar->ChangeToolBar();
    ui_->frmAddressBar->SetPictures();
    for (QFrame* line : {ui_->lineBars, ui_->lineStatus}) {
        QPalette palette = line->palette();
        palette.setColor(QPalette::Window, theme::HairLine());
        line->setPalette(palette);
    }
    settings_->StartSound();
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!started_) return;
    const ErrorTrap trap("MDIForm_QueryUnload");
    if (isMinimized()) showMaximized();
    if (ShowMessage(QStringLiteral("034"), MessageType::YesNo, MessageIcon::Question) != MessageCode::Yes) {
        event->ignore();
        return;
    }
    if (!stages_->LeaveGallery()) return event->ignore();
    started_ = false;
    Timer1_.stop();
    SetBusy(true);
    // The screens are unloaded first: the data view has a statement open on the connection, and a big area tree is slow
    // to delete after its window is gone.
    stages_->UnloadStages();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    office::SpreadsheetApplication::QuitAll();
    ShutDown();
    SetBusy(false);
    event->accept();
}

} // namespace tessaro
