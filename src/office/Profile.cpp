#include "office/Profile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>

#include <array>
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaro::office {

namespace {

struct Entry {
    const char* path;
    const char* name;
    const char* value;
};

// The version key saves the graphics self-test of each start (0.7 s); the lock keys save a question that would block a
// call; the rest keeps everything quiet that would ask a user who isn't there.
constexpr Entry Entries[] = {
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
constexpr const char* DisabledCommands[] = {"AddDirect",
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

QString Registry(const QColor& bars) {
    QString text = QStringLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\" xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n");
    for (const Entry& entry : Entries)
        text += Item(entry.path, entry.name, QLatin1String(entry.value));
    if (bars.isValid()) text += BarsEntries(bars);
    int number = 0;
    for (const char* command : DisabledCommands)
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

QString PidFile(const QString& folder) {
    return folder + QStringLiteral("/process");
}

QString TemporaryFolder(const QString& folder) {
    return folder + QStringLiteral("/Temp");
}

/// The sockets with a name of their own on which a process listens.
QList<QByteArray> SocketsOf(qint64 processId) {
    QSet<QByteArray> inodes;
    const QDir open(QStringLiteral("/proc/%1/fd").arg(processId));
    for (const QString& name : open.entryList(QDir::System | QDir::Files)) {
        std::array<char, 64> target{};
        const QByteArray path = QFile::encodeName(open.filePath(name));
        if (::readlink(path.constData(), target.data(), target.size() - 1) < 0) continue;
        const QByteArray text(target.data());
        if (text.startsWith("socket:[")) inodes.insert(text.sliced(8).chopped(1));
    }
    QList<QByteArray> sockets;
    QFile table(QStringLiteral("/proc/net/unix"));
    if (!table.open(QIODevice::ReadOnly)) return sockets;
    const QByteArray all = table.readAll();
    for (const QByteArray& line : all.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        const bool isIts = fields.size() == 8 && inodes.contains(fields[6]) && fields[7].startsWith("/");
        if (isIts && !sockets.contains(fields[7])) sockets << fields[7];
    }
    return sockets;
}

/// The program leaves its sockets behind when it is killed. Only what is one is removed: the list comes from a file.
void RemoveSocket(const QByteArray& path) {
    struct stat what {};
    if (path.contains("/OSL_PIPE_") && ::lstat(path.constData(), &what) == 0 && S_ISSOCK(what.st_mode))
        ::unlink(path.constData());
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
bool SeedProfile(const QString& folder, const QColor& bars) {
    const QString user = folder + QStringLiteral("/user");
    const QString registry = user + QStringLiteral("/registrymodifications.xcu");
    if (!QDir().mkpath(user)) return false;
    const QColor seen = bars.isValid() && PaintBars(folder, bars) ? bars : QColor();
    QSaveFile file(registry);
    return file.open(QIODevice::WriteOnly) && file.write(Registry(seen).toUtf8()) > 0 && file.commit();
}

QString MakeTemporaryFolder(const QString& folder) {
    const QString temporary = TemporaryFolder(folder);
    QDir(temporary).removeRecursively();
    QDir().mkpath(temporary);
    return temporary;
}

bool RememberProcess(const QString& folder, qint64 processId) {
    QFile file(PidFile(folder));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    file.write(QByteArray::number(processId) + '\n');
    const QList<QByteArray> sockets = SocketsOf(processId);
    for (const QByteArray& socket : sockets)
        file.write(socket + '\n');
    return !sockets.isEmpty();
}

void ForgetProcess(const QString& folder) {
    QFile file(PidFile(folder));
    if (!file.open(QIODevice::ReadOnly)) return;
    file.readLine();
    while (!file.atEnd())
        RemoveSocket(file.readLine().chopped(1));
    file.remove();
    QDir(TemporaryFolder(folder)).removeRecursively();
}

void EndOrphan(const QString& folder) {
    QFile file(PidFile(folder));
    if (!file.open(QIODevice::ReadOnly)) return;
    bool ok = false;
    const auto processId = static_cast<pid_t>(file.readLine().trimmed().toLongLong(&ok));
    file.close();
    if (ok && processId > 1) {
        // The number may belong to another process by now: the command line tells.
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(processId));
        const QByteArray profile = QUrl::fromLocalFile(folder).toEncoded();
        if (commandLine.open(QIODevice::ReadOnly)) {
            const QByteArray text = commandLine.readAll();
            if (text.contains("soffice") && text.contains(profile)) ::kill(processId, SIGKILL);
        }
    }
    ForgetProcess(folder);
}

} // namespace tessaro::office
