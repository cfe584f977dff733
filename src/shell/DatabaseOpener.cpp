#include "shell/DatabaseOpener.h"

#include "controls/Captions.h"
#include "controls/FileDialogs.h"
#include "controls/StageScreen.h"
#include "database/Database.h"
#include "platform/Paths.h"
#include "selection/KeptSelection.h"
#include "session/Addresses.h"
#include "session/ErrorSink.h"
#include "session/Frame.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "shell/AddressBar.h"
#include "shell/CopyingShown.h"
#include "shell/MainMenu.h"
#include "shell/StageBanner.h"
#include "shell/StageNavigator.h"
#include "shell/StatusBar.h"

#include <QApplication>
#include <QMainWindow>
#include <QStackedWidget>

#include <functional>

namespace tessaro {

namespace {

bool OpenShowingCopying(const QString& path) {
    CopyingShown copying;
    return OpenDatabaseFile(path, std::ref(copying));
}

bool RefusedShowingCopying(const QString& path) {
    CopyingShown copying;
    return InValidFile(path, std::ref(copying));
}

} // namespace

DatabaseOpener::DatabaseOpener(const FrameParts& parts, StageNavigator& stages) : parts_(parts), stages_(stages) {}

void DatabaseOpener::OpenStartPage() {
    if (CurrentDatabase.trimmed().isEmpty()) {
        HomeIsShown = true;
        stages_.ShowSplash();
        OpenDefaultDatabase();
    } else {
        OpenRememberedDatabase();
    }
}

void DatabaseOpener::OpenRememberedDatabase() {
    ReopenedLastDatabase = true;
    parts_.status.SetText(GetText(QStringLiteral("TS_OpeningDatabase")));
    const bool open = OpenAtStart(CurrentDatabase);
    parts_.status.SetText({});
    if (!open) {
        DatabaseOpen = false;
        CurrentDatabase = Setting(QStringLiteral("DEFAULT DATABASE"));
    }
    if (open && LanguageInDatabase && SkipTheSplash) {
        CurrentStage = 0;
        stages_.ShowIndicatorScreen();
        return;
    }
    HomeIsShown = true;
    stages_.ShowSplash();
}

void DatabaseOpener::OpenDefaultDatabase() {
    const QString file = DefaultDatabaseFile();
    CurrentDatabase = Setting(QStringLiteral("DEFAULT DATABASE"));
    if (file.isEmpty()) return;
    parts_.status.SetText(GetText(QStringLiteral("TS_OpeningDatabase")));
    // Paints the home page before the database is opened, so that the start seems quick.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    OpenAtStart(file);
    parts_.status.SetText({});
}

/// Opens a database at start and keeps the selection of the earlier run.
bool DatabaseOpener::OpenAtStart(const QString& file) {
    if (!OpenShowingCopying(file)) return false;
    if (!LanguageInDatabase) {
        stages_.ComeHomeWithoutLanguage();
        return true;
    }
    selection::FitKeptSelection();
    stages_.ShowSummaries();
    return true;
}

void DatabaseOpener::FillAddresses() {
    parts_.address.SetItems(ListOfDatabases());
    if (IsNoDatabase(CurrentDatabase)) {
        parts_.address.Show(CurrentDatabase);
        DatabaseOpen = false;
    } else {
        parts_.address.ShowAsItem(ShownAddress(CurrentDatabase));
        if (QWidget* page = parts_.pages.currentWidget()) page->setFocus();
    }
    Q_EMIT Changed();
}

void DatabaseOpener::RescanAddresses() {
    const AddressChanges changes = RescanDataFolder(parts_.address.Items());
    for (const QString& item : changes.added)
        parts_.address.AddItem(item);
    for (const QString& item : changes.removed)
        parts_.address.RemoveItem(item);
    if (!changes.added.isEmpty() || !changes.removed.isEmpty()) Q_EMIT Changed();
}

void DatabaseOpener::SelectDataBase() {
    const ErrorTrap trap("SelectDataBase");
    const TypedDatabase typed = ResolveTypedDatabase(parts_.address.Text());
    switch (typed.action) {
    case TypedDatabase::Action::Nothing:
        break;
    case TypedDatabase::Action::Load:
        LoadNewMDB(typed.text);
        break;
    case TypedDatabase::Action::SelectAddress:
        parts_.address.ShowAsItem(typed.text);
        LoadNewMDB(PathOfAddress(typed.text));
        break;
    }
}

/// FileSelectedISOK: the path to open. When there is no such file the user is told, the address bar shows the open
/// database again, and the path is empty.
QString DatabaseOpener::CheckedFile(const QString& path) {
    const SelectedFile file = CheckSelectedFile(path, parts_.address.Items());
    if (file.verdict == SelectedFile::Verdict::Good) {
        if (!file.address.isEmpty()) parts_.address.Show(file.address);
        return file.path;
    }
    ShowMessage(QStringLiteral("025"));
    ShowAddress();
    return {};
}

void DatabaseOpener::LoadNewMDB(const QString& path) {
    const ErrorTrap trap("LoadNewMDB");
    const QString file = CheckedFile(path);
    if (file.isEmpty()) return;
    stages_.LeaveGallery(false);
    {
        const WaitPointer wait;
        if (OpenInPlace(file) && LanguageInDatabase) {
            DatabaseOpen = true;
            RestoreBlanks();
            CurrentStage = 0;
            stages_.ShowIndicatorScreen();
        }
    }
    Q_EMIT Changed();
}

/// Opens a database file while a stage may be shown. When it is refused, that stage is entered again.
bool DatabaseOpener::OpenInPlace(const QString& path) {
    parts_.status.SetText(GetText(QStringLiteral("TS_OpeningDatabase")));
    stages_.HideStage();
    const bool open = OpenShowingCopying(path);
    parts_.status.SetText({});
    if (!open) {
        ShowAddress();
        if (StageScreen* screen = stages_.ActiveScreen()) screen->Enter();
        return false;
    }
    if (!LanguageInDatabase) stages_.ComeHomeWithoutLanguage();
    parts_.address.ShowAsItem(ShownAddress(CurrentDatabase));
    return true;
}

void DatabaseOpener::RestoreBlanks() {
    const ErrorTrap trap("RestoreBlanks");
    stages_.UnloadStages();
    if (Connection) {
        for (const char* statement :
             {"DELETE * FROM _SelIUSNId", "DELETE * FROM _SelTimeperiod", "DELETE * FROM _SelArea"})
            Execute(QLatin1String(statement));
    }
    SelectionChanged = true;
    VisitedStages = {QString()};
    CurrentStage = 0;
    parts_.status.SetText({});
    stages_.DisableHistory();
}

void DatabaseOpener::ShowAddress() {
    parts_.address.Show(ShownAddress(CurrentDatabase));
}

void DatabaseOpener::TellMissingLanguage() {
    if (!LanguageInDatabase && FileExists(CurrentDatabase)) Q_EMIT LanguageMissing();
}

void DatabaseOpener::cmbAddress_Click() {
    SelectDataBase();
    TellMissingLanguage();
}

void DatabaseOpener::picGo_Click() {
    SelectDataBase();
    if (!DatabaseOpen || !IsNoDatabase(parts_.address.Text())) TellMissingLanguage();
}

void DatabaseOpener::OpenAddress(const QString& address) {
    parts_.address.Show(address);
    cmbAddress_Click();
}

void DatabaseOpener::mnuFileOpen_Click() {
    const ErrorTrap trap("mnuFileOpen_Click");
    const QString path = AskForFile(
        &parts_.window, {PlainText(QStringLiteral("TS_OpenDatabaseTitle")), FindPath(DataFolder()),
                         PlainText(QStringLiteral("TS_DatabaseFileFilter")) + QLatin1String(" (*.mdb *.MDB)")});
    if (path.isEmpty()) return;
    if (FileExists(path) && RefusedShowingCopying(path)) return;
    parts_.address.ShowAsItem(ShownAddress(path));
    LoadNewMDB(path);
    TellMissingLanguage();
}

void DatabaseOpener::OpenFavourite(const QString& path) {
    const ErrorTrap trap("mnuCustomFavorites_Click");
    if (!FileExists(path)) {
        // LoadNewMDB would leave the current screen.
        ShowMessage(QStringLiteral("025"));
        parts_.menu.FillFavourites();
        return;
    }
    LoadNewMDB(path);
    TellMissingLanguage();
}

} // namespace tessaro
