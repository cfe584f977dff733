#include "office/Profile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

#include <csignal>
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
};

/// Commands that a hosted document must not know: they open other documents or end the program.
constexpr const char* DisabledCommands[] = {"AddDirect", "NewDoc",         "Open",         "OpenFromCalc", "OpenRemote",
                                            "SaveAs",    "CloseDoc",       "CloseWin",     "CloseFrame",   "Quit",
                                            "NewWindow", "RecentFileList", "OpenTemplate", "SaveAsRemote"};

QString Registry() {
    QString text = QStringLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\" xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n");
    for (const Entry& entry : Entries)
        text += QStringLiteral(
                    "<item oor:path=\"%1\"><prop oor:name=\"%2\" oor:op=\"fuse\"><value>%3</value></prop></item>\n")
                    .arg(QLatin1String(entry.path), QLatin1String(entry.name), QLatin1String(entry.value));
    int number = 0;
    for (const char* command : DisabledCommands)
        text += QStringLiteral("<item oor:path=\"/org.openoffice.Office.Commands/Execute/Disabled\"><node "
                               "oor:name=\"D%1\" oor:op=\"replace\"><prop oor:name=\"Command\" "
                               "oor:op=\"fuse\"><value>%2</value></prop></node></item>\n")
                    .arg(++number)
                    .arg(QLatin1String(command));
    return text + QStringLiteral("</oor:items>\n");
}

QString PidFile(const QString& folder) {
    return folder + QStringLiteral("/process");
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
bool SeedProfile(const QString& folder) {
    const QString user = folder + QStringLiteral("/user");
    const QString registry = user + QStringLiteral("/registrymodifications.xcu");
    if (!QDir().mkpath(user)) return false;
    QSaveFile file(registry);
    return file.open(QIODevice::WriteOnly) && file.write(Registry().toUtf8()) > 0 && file.commit();
}

void RememberProcess(const QString& folder, qint64 processId) {
    QFile file(PidFile(folder));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(QByteArray::number(processId));
}

void ForgetProcess(const QString& folder) {
    QFile::remove(PidFile(folder));
}

void EndOrphan(const QString& folder) {
    QFile file(PidFile(folder));
    if (!file.open(QIODevice::ReadOnly)) return;
    bool ok = false;
    const auto processId = static_cast<pid_t>(file.readAll().trimmed().toLongLong(&ok));
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
