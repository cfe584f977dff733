#include "session/Startup.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Registry.h"
#include "session/ErrorSink.h"
#include "session/Leftovers.h"
#include "session/Messages.h"
#include "session/ProductSettings.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"
#include "session/UserPreferences.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tessaro {

namespace {

/// Without texts in the wanted language the program falls back to the base language.
void SpeakBaseLanguage() {
    const QString wanted = Language;
    const QString base = Setting(QStringLiteral("ENG_LNG"));
    if (wanted.compare(base, Qt::CaseInsensitive) == 0 || FileOfLanguage(base).isEmpty()) return;
    Language = base;
    ReadTranslateFile();
    if (wanted.trimmed().isEmpty()) return;
    ShowMessage(GetText(QStringLiteral("TS_LanguageUnreadable")).replace(QLatin1String("%1"), wanted), MessageType::Ok,
                MessageIcon::Refused, {}, false);
}

/// What the start could not put into the user's folder.
void TellMissingFiles() {
    QStringList missing;
    for (const char* name : {"Pref.ini", "UserSelections.mdb", "InfoSel.mdb"})
        if (!FileExists(JoinPath({CacheFolder, QLatin1String(name)}))) missing << QLatin1String(name);
    if (missing.isEmpty()) return;
    ShowMessage(GetText(QStringLiteral("TS_FilesMissing"))
                    .replace(QLatin1String("%1"), missing.join(QStringLiteral(", ")))
                    .replace(QLatin1String("%2"), CacheFolder),
                MessageType::Ok, MessageIcon::Note, {}, false);
}

} // namespace

StartResult Initialize() {
    SilentErrors = true;
    const ErrorTrap trap("Initialize");
    FillLanguageArray();
    if (!ReadInfoINIFile()) return StartResult::EndProgram;
    FillLanguageArray(); // again, now that the folder of the user's own language files is known
    ReadPrefINIFile();
    ReadTranslateFile();
    if (!StringTable.isOpen()) SpeakBaseLanguage();
    TellMissingFiles();
    VisitedStages = {QString()};
    CurrentStage = -1;
    SelectionChanged = true;
    if (!EmptyFolder(TempFolder))
        ReportError(FileError::NoAccess, QLatin1String("The folder can't be emptied: ") + TempFolder,
                    QStringLiteral("Initialize"));
    ClearLeftovers();
    MapFilesFolder = JoinPath({TempFolder, QStringLiteral("MData_/MFiles_")});
    return StartResult::GoOn;
}

void ShutDown() {
    const ErrorTrap trap("MDIForm_QueryUnload");
    SavePrefINIFile();
    Connection.reset();
    if (!TempFolder.isEmpty()) QDir(JoinPath({TempFolder, QStringLiteral("MData_")})).removeRecursively();
    StringTable = jet::Recordset();
    ForgetStrings();
}

void ResetSession() {
    ResetSessionValues();
    ForgetSettings();
    ForgetStrings();
}

} // namespace tessaro
