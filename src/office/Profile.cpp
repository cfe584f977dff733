#include "office/Profile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLocale>
#include <QSaveFile>
#include <QStandardPaths>

namespace tessaro::office {

namespace {

struct Entry {
    const char* path;
    const char* name;
    const char* value;
};

// The version key saves the graphics self-test of each start (0.7 s); the lock keys save a question that would block a
// call; the rest keeps everything quiet that would ask a user who isn't there.
constexpr Entry kEntries[] = {
    {"/org.openoffice.Setup/Product", "ooSetupLastVersion", "7.4"},
    {"/org.openoffice.Setup/Office", "ooSetupInstCompleted", "true"},
    {"/org.openoffice.Office.Common/Misc", "FirstRun", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseLocking", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseDocumentOOoLockFile", "false"},
    {"/org.openoffice.Office.Common/Misc", "ShowTipOfTheDay", "false"},
    {"/org.openoffice.Office.Common/Misc", "CollectUsageInformation", "false"},
    {"/org.openoffice.Office.Common/Misc", "CrashReport", "false"},
    {"/org.openoffice.Office.Common/Misc", "UseOpenCL", "false"},
    {"/org.openoffice.Office.Common/Save/Document", "WarnAlienFormat", "false"},
    {"/org.openoffice.Office.Common/Save/Document", "AutoSave", "false"},
    {"/org.openoffice.Office.Common/History", "PickListSize", "0"},
    {"/org.openoffice.Office.Recovery/AutoSave", "Enabled", "false"},
    {"/org.openoffice.Office.Recovery/RecoveryInfo", "Enabled", "false"},
    {"/org.openoffice.Office.Java/VirtualMachine", "Enable", "false"},
    {"/org.openoffice.Office.Calc/Content/Update", "Link", "2"},
    {"/org.openoffice.Office.Jobs/Jobs/org.openoffice.Office.Jobs:Job['UpdateCheck']/Arguments", "AutoCheckEnabled",
     "false"},
    {"/org.openoffice.Office.Impress/Misc/Start", "AutoPilot", "false"},
    {"/org.openoffice.Setup/Office/Factories/org.openoffice.Setup:Factory['com.sun.star.presentation."
     "PresentationDocument']",
     "ooSetupFactoryDefaultFilter", "MS PowerPoint 97"},
};

/// Commands that a hosted document must not know: they open other documents, end or reload this one, end the program,
/// or leave our window.
constexpr const char* kDisabledCommands[] = {"AddDirect",
                                             "NewDoc",
                                             "Open",
                                             "OpenFromCalc",
                                             "OpenRemote",
                                             "SaveAs",
                                             "CloseDoc",
                                             "CloseWin",
                                             "CloseFrame",
                                             "Quit",
                                             "NewWindow",
                                             "RecentFileList",
                                             "OpenTemplate",
                                             "SaveAsRemote",
                                             "Reload",
                                             "VersionDialog",
                                             "SaveAsTemplate",
                                             "EditDoc",
                                             "FullScreen",
                                             "AutoPilotMenu",
                                             "CheckOut",
                                             "WebHtml",
                                             "BasicIDEAppear",
                                             "MacroDialog",
                                             "RunMacro",
                                             "MacroOrganizer",
                                             "MacroRecorder",
                                             "ScriptOrganizer",
                                             "ViewDataSourceBrowser",
                                             "ToolbarModeUI",
                                             "ShareDocument",
                                             "RedactDoc",
                                             "AutoRedactDoc"};

/// Where the program notes what of its bars is shown, for each kind of document.
constexpr const char* kWindowStates[] = {"CalcWindowState", "ImpressWindowState"};

constexpr QSize kBarsSize(4000, 200); ///< as wide as any window

QString Item(const char* path, const char* name, const QString& value) {
    return QStringLiteral(
               "<item oor:path=\"%1\"><prop oor:name=\"%2\" oor:op=\"fuse\"><value>%3</value></prop></item>\n")
        .arg(QLatin1String(path), QLatin1String(name), value);
}

constexpr auto kBarsFolder = "/user/gallery/personas";
constexpr auto kBarsPicture = "bars.png";

/// The menus and bars lie on a picture: of one colour.
bool PaintBars(const QString& folder, const QColor& color) {
    QImage picture(kBarsSize, QImage::Format_RGB32);
    picture.fill(color);
    const QString place = folder + QLatin1String(kBarsFolder);
    return QDir().mkpath(place) && picture.save(place + QLatin1Char('/') + QLatin1String(kBarsPicture));
}

QString BarsEntries(const QColor& color) {
    constexpr auto path = "/org.openoffice.Office.Common/Misc";
    const bool dark = color.lightness() < 128;
    return Item(path, "Persona", QStringLiteral("own")) +
           Item(path, "PersonaSettings",
                QStringLiteral("tessaro;Tessaro;%1;%1;%1;%2")
                    .arg(QLatin1String(kBarsPicture),
                         dark ? QLatin1String("#ffffff;#000000") : QLatin1String("#000000;#ffffff"))) +
           (dark ? Item(path, "SymbolStyle", QStringLiteral("colibre_dark")) : QString());
}

/// The locale that the system has for numbers; the program by itself would take the one for kinds of characters.
QLocale NumberLocale() {
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LANG"})
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty()) return QLocale(name);
    return QLocale::c();
}

// In locales with an Arabic decimal separator the program misreads the number formats of files of its own.
QString NumberLocaleName() {
    const QLocale user = NumberLocale();
    const bool plain = user.decimalPoint() == QLatin1String(".") || user.decimalPoint() == QLatin1String(",");
    if (user.language() == QLocale::C || user.script() == QLocale::ArabicScript || !plain)
        return QStringLiteral("en-US");
    return user.name().replace(QLatin1Char('_'), QLatin1Char('-'));
}

/// The program's status bar as a user hides it: otherwise it comes with the progress of a saving, and stays.
QString HiddenStatusBars() {
    QString text;
    for (const char* states : kWindowStates)
        text += QStringLiteral("<item oor:path=\"/org.openoffice.Office.UI.%1/UIElements/States\"><node "
                               "oor:name=\"private:resource/statusbar/statusbar\" oor:op=\"replace\"><prop "
                               "oor:name=\"Visible\" oor:op=\"fuse\"><value>false</value></prop></node></item>\n")
                    .arg(QLatin1String(states));
    return text;
}

QString Registry(const ProfileSeed& seed) {
    QString text = QStringLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\" xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n");
    for (const Entry& entry : kEntries)
        text += Item(entry.path, entry.name, QLatin1String(entry.value));
    text += Item("/org.openoffice.Setup/L10N", "ooSetupSystemLocale", NumberLocaleName());
    // Not as an argument of the process, which other users could read before it listens.
    if (!seed.pipe.isEmpty())
        text += Item("/org.openoffice.Setup/Office", "ooSetupConnectionURL",
                     QStringLiteral("pipe,name=%1;urp").arg(seed.pipe));
    if (seed.bars.isValid()) text += BarsEntries(seed.bars);
    text += HiddenStatusBars();
    int number = 0;
    for (const char* command : kDisabledCommands)
        text += QStringLiteral("<item oor:path=\"/org.openoffice.Office.Commands/Execute/Disabled\"><node "
                               "oor:name=\"D%1\" oor:op=\"replace\"><prop oor:name=\"Command\" "
                               "oor:op=\"fuse\"><value>%2</value></prop></node></item>\n")
                    .arg(++number)
                    .arg(QLatin1String(command));
    // The slides' own side pane would leave no room for the slide.
    text += QStringLiteral("<item oor:path=\"/org.openoffice.Office.Views/Windows\"><node oor:name=\"simpress/10336\" "
                           "oor:op=\"replace\"><node oor:name=\"UserData\"><prop oor:name=\"Data\" oor:op=\"fuse\" "
                           "oor:type=\"xs:string\"><value>V2,H,0</value></prop></node></node></item>\n");
    return text + QStringLiteral("</oor:items>\n");
}

} // namespace

QString ProgramFolder() {
    QStringList places;
    if (qEnvironmentVariableIsSet("TESSARO_OFFICE")) {
        places << qEnvironmentVariable("TESSARO_OFFICE");
    } else {
        const QString starter = QStandardPaths::findExecutable(QStringLiteral("soffice"));
        if (!starter.isEmpty()) places << QFileInfo(QFileInfo(starter).canonicalFilePath()).path();
        places << QStringLiteral("/usr/lib/libreoffice/program") << QStringLiteral("/usr/lib64/libreoffice/program")
               << QStringLiteral("/opt/libreoffice/program");
    }
    for (const QString& place : std::as_const(places))
        if (QFileInfo::exists(place + QStringLiteral("/soffice.bin")) &&
            QFileInfo::exists(place + QStringLiteral("/fundamentalrc")))
            return place;
    return {};
}

// At each start: what the process has noted there meanwhile isn't wanted, and a damaged file would keep it from
// starting.
bool SeedProfile(const QString& profile, const ProfileSeed& seed) {
    const QString user = profile + QStringLiteral("/user");
    const QString registry = user + QStringLiteral("/registrymodifications.xcu");
    if (!QDir().mkpath(user)) return false;
    const QColor bars = seed.bars.isValid() && PaintBars(profile, seed.bars) ? seed.bars : QColor();
    QSaveFile file(registry);
    return file.open(QIODevice::WriteOnly) && file.write(Registry({bars, seed.pipe}).toUtf8()) > 0 && file.commit();
}

} // namespace tessaro::office
