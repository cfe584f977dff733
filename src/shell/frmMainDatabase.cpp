#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/StageScreen.h"
#include "database/Database.h"
#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/MainMenu.h"
#include "shell/StageScreens.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "ui_frmMain.h"

#include <QApplication>

namespace tessaro {

void frmMain::SelectDataBase() {
    const ErrorTrap trap("SelectDataBase");
    const TypedDatabase typed = ResolveTypedDatabase(ui_->frmAddressBar->Text());
    switch (typed.action) {
    case TypedDatabase::Action::Nothing:
        break;
    case TypedDatabase::Action::Load:
        LoadNewMDB(typed.text);
        break;
    case TypedDatabase::Action::SelectAddress:
        ui_->frmAddressBar->ShowAsItem(typed.text);
        LoadNewMDB(PathOfAddress(typed.text));
        break;
    }
}

/// FileSelectedISOK: the path to open; empty after the message when there is none.
QString frmMain::CheckedFile(const QString& path) {
    const SelectedFile file = CheckSelectedFile(path, ui_->frmAddressBar->Items());
    switch (file.verdict) {
    case SelectedFile::Verdict::Good:
        if (!file.address.isEmpty()) ui_->frmAddressBar->Show(file.address);
        return file.path;
    case SelectedFile::Verdict::NoDatabaseFile:
        ShowMessage(QStringLiteral("025"));
        break;
    case SelectedFile::Verdict::Missing:
        DatabaseOpen = false;
        ShowMessage(QStringLiteral("025"));
        RestoreBlanks();
        ui_->picBanner_1->hide();
        ShowSplash();
        CurrentStage = navigation::HomePage;
        break;
    }
    return {};
}

void frmMain::LoadNewMDB(const QString& path) {
    const ErrorTrap trap("LoadNewMDB");
    LeaveGallery(false);
    SetBusy(true);
    const QString file = CheckedFile(path);
    if (!file.isEmpty() && OpenInPlace(file) && LanguageInDatabase) {
        DatabaseOpen = true;
        RestoreBlanks();
        CurrentStage = 0;
        ShowIndicatorScreen();
    }
    SetBusy(false);
    ShowDatabases();
}

/// Opens a database file while a stage may be on the screen. A refused one leaves everything as it was.
bool frmMain::OpenInPlace(const QString& path) {
    SetStatusText(GetText(QStringLiteral("TS_OpeningDatabase")));
    screens_->HideStage(CurrentStage);
    const bool open = OpenDatabaseFile(path);
    SetStatusText({});
    if (open) {
        ui_->frmAddressBar->ShowAsItem(ShownAddress(CurrentDatabase));
        return true;
    }
    ui_->frmAddressBar->Show(ShownAddress(CurrentDatabase));
    if (StageScreen* screen = ActiveScreen()) screen->Enter();
    return false;
}

void frmMain::RestoreBlanks() {
    const ErrorTrap trap("RestoreBlanks");
    screens_->UnloadAll();
    if (Connection) {
        for (const char* statement :
             {"DELETE * FROM _SelIUSNId", "DELETE * FROM _SelTimeperiod", "DELETE * FROM _SelArea"})
            Execute(QLatin1String(statement));
    }
    SelectionChanged = true;
    VisitedStages = {QString()};
    CurrentStage = 0;
    SetStatusText({});
    ui_->picBanner_1->ClearSummaries();
    DisableHistory();
}

void frmMain::cmbAddress_Click() {
    SelectDataBase();
    if (!LanguageInDatabase && FileExists(CurrentDatabase)) ShowLanguageDialog();
}

void frmMain::picGo_Click() {
    SelectDataBase();
    if (LanguageInDatabase || !FileExists(CurrentDatabase)) return;
    if (!DatabaseOpen || !IsNoDatabase(ui_->frmAddressBar->Text())) ShowLanguageDialog();
}

void frmMain::mnuFileOpen_Click() {
    const ErrorTrap trap("mnuFileOpen_Click");
    const QString path =
        AskForFile(this, {PlainText(QStringLiteral("TS_OpenDatabaseTitle")), FindPath(DataFolder()),
                          PlainText(QStringLiteral("TS_DatabaseFileFilter")) + QLatin1String(" (*.mdb *.MDB)")});
    if (path.isEmpty()) return;
    if (FileExists(path) && InValidFile(path)) return;
    const QString shown = ShownAddress(path);
    ui_->frmAddressBar->ShowAsItem(shown);
    LoadNewMDB(path);
    if (!LanguageInDatabase && FileExists(CurrentDatabase)) ShowLanguageDialog();
}

void frmMain::RescanAddresses() {
    AddressBar& bar = *ui_->frmAddressBar;
    const AddressChanges changes = RescanDataFolder(bar.Items());
    for (const QString& item : changes.added)
        bar.AddItem(item);
    for (const QString& item : changes.removed)
        bar.RemoveItem(item);
    if (!changes.added.isEmpty() || !changes.removed.isEmpty()) ShowDatabases();
}

void frmMain::ShowDatabases() {
    if (splash_) splash_->ShowDatabases(ui_->frmAddressBar->Items(), ShownAddress(CurrentDatabase));
    const QString product = Setting(QStringLiteral("PRODUCT NAME"));
    setWindowTitle(!DatabaseOpen || IsNoDatabase(CurrentDatabase) || CurrentDatabase.isEmpty()
                       ? product
                       : FileNameOf(CurrentDatabase).section(QLatin1Char('.'), 0, -2) + QStringLiteral(" – ") +
                             product);
    OfferCommands();
}

} // namespace tessaro
