#include "office/ProcessStart.h"

#include "office/Convert.h"
#include "office/Profile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QUrl>

#include <array>
#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaro::office {

namespace {

constexpr const char* kProfileVariable = "UserInstallation";
constexpr auto kProfilePrefix = "profile-";
constexpr auto kPipeMark = "/OSL_PIPE_";
constexpr mode_t kOwnerOnly = 0700;
constexpr mode_t kNothingForOthers = 077;

QString ProcessFile(const QString& folder) {
    return folder + QStringLiteral("/process");
}

QString TemporaryFolder(const QString& folder) {
    return folder + QStringLiteral("/Temp");
}

/// 128 bits in hexadecimal digits.
QString RandomName() {
    std::array<quint32, 4> bits{};
    QRandomGenerator::system()->fillRange(bits.data(), bits.size());
    QString name;
    for (const quint32 part : bits)
        name += QStringLiteral("%1").arg(part, 8, 16, QLatin1Char('0'));
    return name;
}

/// What the path of each socket starts with; the program has no setting for the folder.
QString PipePrefix() {
    const char* folder = ::access("/tmp", W_OK) == 0 ? "/tmp" : "/var/tmp";
    return QLatin1String(folder) + QLatin1String(kPipeMark) + QString::number(::getuid()) + QLatin1Char('_');
}

/// The pipe by which a second start on the same profile reaches the running process: the program names it by the
/// digest of the profile's URL, each byte in as few hexadecimal digits as it needs.
QString SecondStartPipe(const QString& profile) {
    const QString url = FromUno(FileUrl(QFileInfo(profile).canonicalFilePath()));
    const QByteArray bytes(reinterpret_cast<const char*>(url.utf16()), url.size() * 2);
    QString digest;
    for (const char byte : QCryptographicHash::hash(bytes, QCryptographicHash::Md5))
        digest += QString::number(static_cast<uchar>(byte), 16);
    return QStringLiteral("SingleOfficeIPC_") + digest;
}

/// The profile of the last start under a new name, or a new one.
QString RenamedProfile(const QString& folder) {
    const QDir place(folder);
    const QString profile = place.filePath(QLatin1String(kProfilePrefix) + RandomName());
    const QStringList before = place.entryList({QLatin1String(kProfilePrefix) + QLatin1Char('*')}, QDir::Dirs);
    const bool made = (!before.isEmpty() && QDir().rename(place.filePath(before.front()), profile)) ||
                      ::mkdir(QFile::encodeName(profile).constData(), kOwnerOnly) == 0;
    return made ? profile : QString();
}

/// The program makes its sockets at a fixed place, but the name may lead into a folder there.
QString NewPipe() {
    const QString name = RandomName();
    const bool made = ::mkdir(QFile::encodeName(PipePrefix() + name).constData(), kOwnerOnly) == 0;
    return made ? name + QStringLiteral("/pipe") : QString();
}

/// First the process id, then what is to be removed when it has ended.
bool WriteNote(const QString& folder, qint64 processId, const QList<QByteArray>& paths) {
    QFile file(ProcessFile(folder));
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(QByteArray::number(processId) + '\n' + paths.join('\n')) > 0;
}

QList<QByteArray> ReadNote(const QString& folder) {
    QFile file(ProcessFile(folder));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

/// Removes a socket of the program, or an empty folder for one; nothing else, since the list comes from a file.
void RemovePipe(const QByteArray& path) {
    struct stat what {};
    if (!path.contains(kPipeMark) || ::lstat(path.constData(), &what) != 0) return;
    if (S_ISSOCK(what.st_mode)) ::unlink(path.constData());
    if (S_ISDIR(what.st_mode)) ::rmdir(path.constData());
}

QByteArray Contents(const QString& file) {
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

QByteArray ProfileUrl(const QString& path) {
    return QUrl::fromLocalFile(path).toEncoded();
}

} // namespace

ProcessStart PrepareStart(const QString& folder, bool listens, const QColor& bars) {
    ForgetProcess(folder);
    if (!QDir().mkpath(TemporaryFolder(folder))) return {};
    ProcessStart start{RenamedProfile(folder), listens ? NewPipe() : QString()};
    if (start.profile.isEmpty() || (listens && start.pipe.isEmpty())) return {};
    QList<QByteArray> paths{QFile::encodeName(PipePrefix() + SecondStartPipe(start.profile))};
    if (listens)
        paths << QFile::encodeName(PipePath(start.pipe)) << QFile::encodeName(QFileInfo(PipePath(start.pipe)).path());
    const bool written = WriteNote(folder, 0, paths) && SeedProfile(start.profile, {bars, start.pipe});
    return written ? start : ProcessStart();
}

QString PipePath(const QString& pipe) {
    return PipePrefix() + pipe;
}

bool IsOwnPipe(const QString& pipe) {
    struct stat what {};
    return ::lstat(QFile::encodeName(PipePath(pipe)).constData(), &what) == 0 && S_ISSOCK(what.st_mode) &&
           what.st_uid == ::geteuid();
}

// The profile is named by the environment, which other users can't read, not by an argument, which they can.
void SetUp(QProcess& process, const ProcessStart& start, const QString& plugin, int niceness) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("URE_BOOTSTRAP"));
    environment.insert(QLatin1String(kProfileVariable), QString::fromLatin1(ProfileUrl(start.profile)));
    environment.insert(QStringLiteral("TMPDIR"), TemporaryFolder(QFileInfo(start.profile).path()));
    environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), plugin);
    // Memory comes in large pieces: a big workbook takes it page by page otherwise, with a call to the system for each.
    environment.insert(QStringLiteral("MALLOC_ARENA_MAX"), QStringLiteral("1"));
    environment.insert(QStringLiteral("MALLOC_TOP_PAD_"), QString::number(8 << 20));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier([parent = ::getpid(), niceness] {
        // When this program is gone, however that came, the child is ended by the system.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(1);
        ::umask(kNothingForOthers);
        if (niceness != 0) ::setpriority(PRIO_PROCESS, 0, niceness);
        // A file that grows too large for the system is an error of its write, not the end of the process.
        ::signal(SIGXFSZ, SIG_IGN);
    });
}

void RememberProcess(const QString& folder, qint64 processId) {
    WriteNote(folder, processId, ReadNote(folder).mid(1));
}

void ForgetProcess(const QString& folder) {
    const QList<QByteArray> paths = ReadNote(folder).mid(1);
    for (const QByteArray& path : paths)
        RemovePipe(path);
    QFile::remove(ProcessFile(folder));
    QDir(TemporaryFolder(folder)).removeRecursively();
}

// The number may belong to another process by now: its environment tells.
void EndOrphan(const QString& folder) {
    const qint64 processId = ReadNote(folder).value(0).toLongLong();
    const QString process = QStringLiteral("/proc/%1/").arg(processId);
    const QByteArray profile = kProfileVariable + QByteArray("=") + ProfileUrl(folder) + '/';
    if (processId > 1 && Contents(process + QStringLiteral("cmdline")).contains("soffice") &&
        Contents(process + QStringLiteral("environ")).contains(profile))
        ::kill(static_cast<pid_t>(processId), SIGKILL);
    ForgetProcess(folder);
}

} // namespace tessaro::office
