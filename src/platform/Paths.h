#pragma once

#include <QString>
#include <QStringList>

/// Paths as the system writes them: either separator, any case.
namespace tessaro {

/// Joins with "/" after turning every "\" into "/"; no doubled separators. Empty parts are skipped, but an empty first
/// part stands for the root, so that what hangs below an empty application folder lies there.
[[nodiscard]] QString JoinPath(const QStringList& parts);
/// The path as it is on disk: each component found whatever its case; "\" accepted. When a component does not exist,
/// the rest is kept as spelt, so the result also serves for a file to be made.
[[nodiscard]] QString FindPath(const QString& path);
[[nodiscard]] bool FileExists(const QString& path);
[[nodiscard]] bool FolderExists(const QString& path);
/// Names of the files (not folders) of a folder, in natural order; empty when it can't be read.
[[nodiscard]] QStringList FilesOf(const QString& folder);
/// True when both texts name one path, ignoring case and the kind of separator.
[[nodiscard]] bool SamePath(const QString& a, const QString& b);
[[nodiscard]] QString FileNameOf(const QString& path); ///< what follows the last separator of either kind
[[nodiscard]] QString FolderOf(const QString& path);

/// Where a write below the application folder goes: the place itself when it can be written, otherwise the same
/// relative place below the cache folder (folders are made).
[[nodiscard]] QString WritablePlace(const QString& path, const QString& appPath, const QString& cacheFolder);
/// Where a reading finds it: the user's copy below the cache folder first, then the application folder.
[[nodiscard]] QString ReadablePlace(const QString& path, const QString& appPath, const QString& cacheFolder);

} // namespace tessaro
