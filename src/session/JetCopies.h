#pragma once

#include <QString>

/// Where the copies of genuine Jet files are, and which file a path is opened by.
namespace tessaro {

/// True when the file begins as a genuine Jet database does, which the engine can't open itself.
[[nodiscard]] bool IsGenuineJetFile(const QString& path);
/// The folder of the readable copies, below DataCacheFolder.
[[nodiscard]] QString FolderOfJetCopies();
/// Where the readable copy of a genuine Jet file lies, or is to be made: below DataCacheFolder, named by the file's
/// path, size and time of change, so that a changed file gets a new copy.
[[nodiscard]] QString CopyOfJetFile(const QString& path);
/// What all copies of this file, of whatever time, begin with.
[[nodiscard]] QString CopyPrefixOfJetFile(const QString& path);
/// The file that the engine opens for `path`: the copy of a genuine Jet file when it is there, otherwise the path on
/// disk.
[[nodiscard]] QString FileToOpen(const QString& path);

} // namespace tessaro
