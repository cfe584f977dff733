#pragma once

#include "jet/engine/OpenError.h"
#include "jet/engine/Sqlite.h"

#include <compare>
#include <string>

/// Database files before and while they are opened: what kind they are, their password.
namespace jet {

/// Which file a path leads to; it changes when the file is replaced.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

/// The first bytes of a file, fewer when it is shorter or can't be read. Read through SQLite's own file layer:
/// when a process closes a file that it opened otherwise, POSIX drops the locks of all its connections to that file.
[[nodiscard]] std::string HeadOfFile(const std::string& path, std::size_t bytes);

/// A database file on disk, looked at before the engine opens it.
struct DatabaseFile {
    std::string path; ///< as given
    FileIdentity identity;
    bool writable = false;

    /// Throws OpenError when there is no file, or it is a folder or too short. Does not open the file: closing it
    /// would drop the locks of this process's connections to it.
    [[nodiscard]] static DatabaseFile Inspect(const std::string& path);
    /// Why the engine did not take the file for a database, by the first bytes of the file.
    [[nodiscard]] static OpenFailure Explain(const std::string& path);
    /// Which options to open it with.
    [[nodiscard]] std::string options() const;
    [[nodiscard]] std::string uri() const { return FileUri(path, options()); }
    [[nodiscard]] std::string uriForReading() const { return FileUri(path, writable ? "mode=ro" : options()); }
};

/// Writes the table that holds the password's salt and hash, into a new database.
void StorePassword(sqlite3* database, const std::string& password);
/// Throws WrongPassword when the database under that schema name has a password and this isn't it. A file without the
/// table, or with an empty password, opens with any.
void CheckPassword(sqlite3* database, const std::string& schema, const std::string& password);

} // namespace jet
