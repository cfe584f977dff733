#include "platform/Rights.h"

#include "platform/Home.h"
#include "platform/Paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaro {

namespace {

constexpr mode_t kOthers = S_IRWXG | S_IRWXO;
constexpr mode_t kNewFile = 0666;

/// The umask with which the user started the program; nothing before KeepFilesPrivate.
std::optional<mode_t>& UsersMask() {
    static std::optional<mode_t> mask;
    return mask;
}

mode_t CurrentMask() {
    const mode_t mask = ::umask(kOthers); // it can't be asked without being set
    ::umask(mask);
    return mask;
}

void Narrow(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat info {};
    if (::lstat(name.constData(), &info) != 0 || S_ISLNK(info.st_mode) || (info.st_mode & kOthers) == 0) return;
    ::chmod(name.constData(), info.st_mode & static_cast<mode_t>(~kOthers) & 07777);
}

} // namespace

void KeepFilesPrivate() {
    const mode_t mask = ::umask(kOthers);
    if (!UsersMask()) UsersMask() = mask;
}

UsersRights::UsersRights() : before_(::umask(UsersMask().value_or(CurrentMask()))) {}

UsersRights::~UsersRights() {
    ::umask(before_);
}

void GiveUsersRights(const QString& file) {
    if (IsOwnPlace(file)) return;
    ::chmod(QFile::encodeName(file).constData(), kNewFile & ~UsersMask().value_or(CurrentMask()));
}

bool IsOwnPlace(const QString& path) {
    const QString root = OwnFolder() + QLatin1Char('/');
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath()).startsWith(root);
}

bool MakePrivateFolder(const QString& folder) {
    if (!QDir().mkpath(folder)) return false;
    struct stat info {};
    const QByteArray name = QFile::encodeName(folder);
    if (::lstat(name.constData(), &info) != 0 || info.st_uid != ::geteuid()) return false;
    if (::stat(name.constData(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != ::geteuid()) return false;
    return (info.st_mode & kOthers) == 0 || ::chmod(name.constData(), S_IRWXU) == 0;
}

void NarrowRights(const QString& folder) {
    Narrow(folder);
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        Narrow(entries.next());
}

} // namespace tessaro
