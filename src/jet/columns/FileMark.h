#pragma once

#include <cstdint>
#include <optional>
#include <string>

struct sqlite3;

namespace jet {

/// The state of a database file: the same mark means the same rows and the same schema.
struct FileMark {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t bytes = 0;
    std::int64_t written = 0;  ///< time of the last change, in nanoseconds
    std::uint32_t changes = 0; ///< the file's own change counter
    std::uint32_t schema = 0;  ///< its counter of schema changes

    bool operator==(const FileMark&) const = default;

    /// The mark of the file that is open under a schema name ("main", "l1"). Nothing when the file can't be read, keeps
    /// a write-ahead log, which its own bytes don't tell of, or is being written by this connection.
    [[nodiscard]] static std::optional<FileMark> Of(sqlite3* database, const std::string& schemaName);
};

} // namespace jet
