#pragma once

#include "jet/columns/WorkWatch.h"
#include "jet/engine/Options.h"
#include "jet/engine/Recordset.h"
#include "jet/values/Catalogue.h"
#include "jet/values/Error.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The way into the engine: open a database file, run statements, make links.
namespace jet {

class ColumnImages;

/// Operations on database files as a whole.
class Database {
  public:
    /// Makes an empty database; an existing file is an error (AlreadyExists).
    static void Create(const std::string& path, const std::string& password);
    /// Copies a database through the engine, so that a pending journal is honoured. Replaces `target`.
    static void Copy(const std::string& source, const std::string& target);
    /// Writes the database anew without the room that deleted rows have left. Nobody else may have it open.
    static void Compact(const std::string& path);
};

/// One open database. Several connections to one file may stand side by side. Not for use from two threads at once.
class Connection final {
  public:
    /// Opens an existing file. Throws Error: NotADatabase, WrongPassword. A file that can't be written opens read-only.
    [[nodiscard]] static std::shared_ptr<Connection> Open(const std::string& path, const std::string& password,
                                                          Use use = Use::Data);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Close();
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] bool isReadOnly() const;
    [[nodiscard]] const std::string& path() const;

    /// Runs a statement; gives the number of rows changed (0 for others). A failed statement changes nothing.
    std::int64_t Execute(std::string_view sql);
    /// Runs a SELECT or TRANSFORM. The recordset keeps the connection's engine alive while it needs it.
    [[nodiscard]] Recordset OpenRecordset(std::string_view sql, CursorType cursor = CursorType::Static);

    /// What would be run for a statement; runs nothing.
    [[nodiscard]] Explanation Explain(std::string_view sql);
    /// From now on statements are translated without this rewrite. Throws SyntaxError for a name that none has.
    void LeaveOutStep(std::string_view name);

    /// All tables and links, in the file's order, with their types ("TABLE" for Table, "LINK" for Link …), without the
    /// engine's own (MSys…). Columns are left out; catalogue().find(name) has them.
    [[nodiscard]] std::vector<TableInfo> Tables() const;
    [[nodiscard]] const Catalogue& catalogue() const;
    /// The texts by which the file declares its tables and indexes, without the engine's own: the same in all files of
    /// one schema.
    [[nodiscard]] std::vector<std::string> Declarations() const;
    /// Makes (or replaces) the link `linkName` to `sourceTable` of the database `file`. A missing file or table is
    /// found out when the link is used, as error NoSuchTable. Throws ReadOnly on a file that was not opened as a
    /// working database.
    void CreateLink(const std::string& linkName, const std::string& file, const std::string& password,
                    const std::string& sourceTable, LinkAccess access = LinkAccess::Read);
    /// For a working database that is about to get its links: from now on writing does not wait for the disk, since the
    /// file is made anew after a crash.
    void Relax();
    /// Everything written between Begin and Commit goes to disk at once; Rollback takes it back.
    void Begin();
    void Commit();
    void Rollback();

    /// From now on statements over large tables may read column images from this store (see ColumnImages.h), where that
    /// is sooner and gives the same rows.
    void UseColumnImages(std::shared_ptr<ColumnImages> images);

    /// From now on statements that take longer than `between` call `ask` about that often, and are stopped by it (see
    /// WorkWatch.h). A stopped statement changes nothing, but ends the transaction that it is part of. An empty `ask`
    /// ends the watch.
    void Watch(WorkWatch::Ask ask, std::chrono::milliseconds between = std::chrono::milliseconds(40));

    /// Translations made and taken from the cache since opening; for benchmarks.
    struct CacheCounts {
        std::uint64_t translated = 0;
        std::uint64_t reused = 0;
    };
    [[nodiscard]] CacheCounts cacheCounts() const;

    struct Impl;

  private:
    explicit Connection(std::shared_ptr<Impl> impl);
    std::shared_ptr<Impl> impl_;
};

} // namespace jet
