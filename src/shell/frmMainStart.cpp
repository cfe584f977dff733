#include "controls/Captions.h"
#include "controls/CopyText.h"
#include "controls/Theme.h"
#include "database/Database.h"
#include "office/SpreadsheetApplication.h"
#include "platform/CommandLine.h"
#include "platform/Home.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "selection/KeptSelection.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Startup.h"
#include "session/Strings.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QToolTip>

namespace tessaro {

void frmMain::FitToScreen() {
    constexpr int kTitle = 5 * theme::Grid;
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
    SetFormFont();
    show();
    SetBusy(true);
    SetCaptions();
    ui_->sbStatusBar->ShowNow(false);
    ui_->picBanner_1->SetCurrent(navigation::HomePage);
    SetBusy(false);
    ReopenedLastDatabase = false;
    DatabaseOpen = true;
    LanguageInDatabase = true;
    OpenStartPage();
    FillAddresses();
    WarnOfMissingSpreadsheet();
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
    sound_.Load(SoundFile);
    sound_.SetMuted(Mute);
}

void frmMain::SetFormFont() {
    toolkitTexts_.Load();
    // The bars and the screens take the font each by itself; the menus follow the application's.
    QApplication::setFont(LanguageFont());
    QToolTip::setFont(LanguageFont());
    QApplication::setLayoutDirection(LanguageIsRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

void frmMain::SetCaptions() {
    menu_->SetMenuCaptions();
    ui_->picToolBar->SetToolTips();
    ui_->picToolBar->ChangeToolBar();
    ui_->frmAddressBar->SetCaptions();
    ui_->picBanner_1->SetFormCaptions();
    ui_->sbStatusBar->SetFormCaptions();
    screens_->SetFormCaptions();
    if (splash_) splash_->SetFormCaptions();
}

void frmMain::OpenStartPage() {
    if (CurrentDatabase.trimmed().isEmpty()) {
        HomeIsShown = true;
        ShowSplash();
        OpenDefaultDatabase();
    } else {
        OpenRememberedDatabase();
    }
}

void frmMain::OpenRememberedDatabase() {
    ReopenedLastDatabase = true;
    SetStatusText(GetText(QStringLiteral("TS_OpeningDatabase")));
    const bool open = OpenAtStart(CurrentDatabase);
    SetStatusText({});
    if (!open) {
        DatabaseOpen = false;
        CurrentDatabase = Setting(QStringLiteral("DEFAULT DATABASE"));
    }
    if (open && LanguageInDatabase && SkipTheSplash) {
        CurrentStage = 0;
        ShowIndicatorScreen();
        return;
    }
    HomeIsShown = true;
    ShowSplash();
}

void frmMain::OpenDefaultDatabase() {
    const QString file = DefaultDatabaseFile();
    CurrentDatabase = Setting(QStringLiteral("DEFAULT DATABASE"));
    if (file.isEmpty()) return;
    SetStatusText(GetText(QStringLiteral("TS_OpeningDatabase")));
    // Painted before the work, so that the start shows the home page as soon as it can.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    OpenAtStart(file);
    SetStatusText({});
}

/// Opens a database with what an earlier run left chosen.
bool frmMain::OpenAtStart(const QString& file) {
    if (!OpenDatabaseFile(file)) return false;
    if (!LanguageInDatabase) return true;
    selection::FitKeptSelection();
    ShowSummaries();
    return true;
}

/// cmbAddress with the databases of the data folder and the one that is open.
void frmMain::FillAddresses() {
    AddressBar& bar = *ui_->frmAddressBar;
    bar.SetItems(ListOfDatabases());
    if (IsNoDatabase(CurrentDatabase)) {
        bar.Show(CurrentDatabase);
        DatabaseOpen = false;
    } else {
        bar.ShowAsItem(ShownAddress(CurrentDatabase));
        if (QWidget* page = ui_->stkChildren->currentWidget()) page->setFocus();
    }
    ShowDatabases();
}

void frmMain::WarnOfMissingSpreadsheet() {
    if (!office::SpreadsheetApplication::IsInstalled()) ShowMessage(QStringLiteral("046"));
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!started_) return;
    const ErrorTrap trap("MDIForm_QueryUnload");
    if (isMinimized()) showMaximized();
    if (ShowMessage(QStringLiteral("034"), MessageType::YesNo, 104) != MessageCode::Yes) {
        event->ignore();
        return;
    }
    if (!LeaveGallery()) return event->ignore();
    started_ = false;
    Timer1_.stop();
    SetBusy(true);
    // The screens go first: the data view holds a statement on the connection, and a big area tree is slow to tear
    // down once its window is gone.
    screens_->UnloadAll();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    office::SpreadsheetApplication::QuitAll();
    ShutDown();
    SetBusy(false);
    event->accept();
}

} // namespace tessaro
