#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/// Reads, replaces and copies files whole.
namespace tessaro {

/// Contents of a file; nothing when it can't be read or is larger than `limit` bytes (settings files are small,
/// whatever stands at their place is not).
[[nodiscard]] std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 limit = 64 * 1024 * 1024);
/// Replaces a file at once: after a failure (full disk, no rights) or a crash in the middle the old file stands. The
/// work file is private to this call.
[[nodiscard]] bool ReplaceFile(const QString& path, const QByteArray& contents);
/// A file that is to be made.
struct NewFile {
    QString path;
    QByteArray contents;
};
/// Replaces files that belong together: all are written beside their places before the first is put there, so that a
/// full disk leaves all the old ones.
[[nodiscard]] bool ReplaceFiles(const std::vector<NewFile>& files);
/// Copies a file over `target` in the same way and makes the copy writable, whatever the rights of the source.
[[nodiscard]] bool CopyFileOver(const QString& source, const QString& target);
/// The same without waiting for the disk: for a file that is made anew whenever it is needed.
[[nodiscard]] bool CopyPassingFile(const QString& source, const QString& target);
/// Puts a finished file in place of `target`, whose folder is the same: what it holds is on the disk before its name
/// changes, so that after a crash of the machine one of the two stands there whole. False leaves both as they were.
[[nodiscard]] bool PutInPlace(const QString& made, const QString& target);
/// Deletes a folder with its contents and makes it again, empty and private. Links in it are removed, not followed.
[[nodiscard]] bool EmptyFolder(const QString& folder);

} // namespace tessaro
