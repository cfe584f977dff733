#include "session/Startup.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/Registry.h"
#include "session/ErrorSink.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tessaro {

StartResult Initialize() {
    SilentErrors = true;
    const ErrorTrap trap("Initialize");
    FillLanguageArray();
    if (!ReadInfoINIFile()) return StartResult::EndProgram;
    FillLanguageArray(); // again, now that the folder of the user's own language files is known
    ReadPrefINIFile();
    ReadTranslateFile();
    VisitedStages = {QString()};
    CurrentStage = -1;
    SelectionChanged = true;
    if (!EmptyFolder(TempFolder))
        ReportError(75, QLatin1String("The folder can't be emptied: ") + TempFolder, QStringLiteral("Initialize"));
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

} // namespace tessaro
