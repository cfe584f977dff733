#include "platform/Files.h"

#include "platform/Rights.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace tessaro {

namespace {

constexpr qint64 kBlockSize = 1024 * 1024;

/// A copy can be written by its owner, whatever the rights of the source; one of ours is read by the owner alone.
bool MakeWritable(const QString& path) {
    if (IsOwnPlace(path)) return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOwner | QFile::WriteOwner);
}

/// A file of the user's gets the rights that the user's umask gives, one of ours stays private.
bool OpenForWriting(QSaveFile& file, const QString& path) {
    if (IsOwnPlace(path)) return file.open(QIODevice::WriteOnly);
    const UsersRights rights;
    return file.open(QIODevice::WriteOnly);
}

// A commit doesn't look at what was still waiting to be written: on a full disk it would put a cut file in place of the
// good one.
bool IsWhole(QSaveFile& file) {
    return file.flush();
}

/// Waits until a file, or the list of names of a folder, is on the disk.
bool WriteToDisk(const QByteArray& path) {
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool written = ::fsync(file) == 0;
    ::close(file);
    return written;
}

} // namespace

std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 limit) {
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > limit) return std::nullopt;
    QByteArray contents = file.read(limit);
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    return contents;
}

bool ReplaceFile(const QString& path, const QByteArray& contents) {
    return ReplaceFiles({{path, contents}});
}

bool ReplaceFiles(const std::vector<NewFile>& files) {
    std::vector<std::unique_ptr<QSaveFile>> made;
    for (const NewFile& each : files) {
        made.push_back(std::make_unique<QSaveFile>(each.path));
        if (!OpenForWriting(*made.back(), each.path)) return false;
        if (made.back()->write(each.contents) != each.contents.size() || !IsWhole(*made.back())) return false;
    }
    return std::ranges::all_of(made, [](const auto& file) { return file->commit(); });
}

bool CopyFileOver(const QString& source, const QString& target) {
    QFile from(source);
    QSaveFile to(target);
    if (!from.open(QIODevice::ReadOnly) || !OpenForWriting(to, target)) return false;
    while (!from.atEnd()) {
        const QByteArray block = from.read(kBlockSize);
        if (block.isEmpty() || to.write(block) != block.size()) return false;
    }
    return IsWhole(to) && to.commit() && MakeWritable(target);
}

bool CopyPassingFile(const QString& source, const QString& target) {
    const QString made = target + QLatin1String(".new");
    QFile::remove(made);
    std::error_code failure;
    // QFile::copy would wait for the disk.
    std::filesystem::copy_file(source.toStdString(), made.toStdString(), failure);
    if (!failure && MakeWritable(made)) {
        std::filesystem::rename(made.toStdString(), target.toStdString(), failure);
        if (!failure) return true;
    }
    QFile::remove(made);
    return false;
}

bool PutInPlace(const QString& made, const QString& target) {
    const QByteArray from = QFile::encodeName(made);
    if (!WriteToDisk(from) || ::rename(from.constData(), QFile::encodeName(target).constData()) != 0) return false;
    // Not every kind of disk can do this for a folder; the file is whole either way.
    (void)WriteToDisk(QFile::encodeName(QFileInfo(target).path()));
    return true;
}

bool EmptyFolder(const QString& folder) {
    const QFileInfo info(folder);
    if (info.isSymLink() || info.isFile()) {
        if (!QFile::remove(folder)) return false;
    } else if (info.isDir() && !QDir(folder).removeRecursively()) {
        return false;
    }
    return MakePrivateFolder(folder);
}

} // namespace tessaro
