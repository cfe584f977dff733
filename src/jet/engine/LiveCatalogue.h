#pragma once

#include "jet/emit/Translator.h"
#include "jet/engine/ColumnImages.h"
#include "jet/engine/DatabaseFile.h"
#include "jet/engine/Options.h"
#include "jet/engine/Sqlite.h"
#include "jet/values/Catalogue.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// The tables and links of an open database, as name resolution needs them.
namespace jet {

/// A link as the working database keeps it.
struct LinkInfo {
    std::string name;
    std::string file;
    std::string password;
    std::string sourceTable;
    LinkAccess access = LinkAccess::Read;
};

/// The tables and links of one open database. Opening reads names only; columns are read, and linked files attached,
/// when a statement first names them.
class LiveCatalogue final : public Catalogue {
  public:
    /// Links in the file are ignored unless it is opened as a working database.
    LiveCatalogue(sqlite3* database, std::string path, Use use);

    [[nodiscard]] const TableInfo* find(std::string_view name) const override;
    [[nodiscard]] bool isLink(std::string_view name) const override;
    [[nodiscard]] unsigned version() const override;
    [[nodiscard]] std::int64_t rowsOnRecord(const TableInfo& table) const override;
    [[nodiscard]] bool leadsIndex(const TableInfo& table, const std::string& field) const override;
    [[nodiscard]] std::shared_ptr<const ColumnImage> image(const TableInfo& table) const override;

    /// From now on large tables that are linked, or lie in a file that keeps no links, have images from this store.
    void UseImages(std::shared_ptr<ColumnImages> images);
    /// A number that changes when the image of the table comes or goes; 0 for no image.
    [[nodiscard]] std::size_t imageStamp(std::string_view name) const;
    /// A statement could not be served by an image. `stale`: since that is no longer the image of its database; those
    /// of all tables are given up then.
    void NoteUnfit(const std::string& why, bool stale);

    /// A hash of what find gives for the name: the same as long as the table has the same fields, also after it was
    /// dropped and made again. 0 when there is no such table.
    [[nodiscard]] std::size_t stamp(std::string_view name) const;

    [[nodiscard]] std::vector<TableInfo> Tables() const;
    /// True for a working database that has a list of links.
    [[nodiscard]] bool hasLinks() const { return hasLinks_; }
    /// True when a link was looked for since the last reading of everything and its table was not there.
    [[nodiscard]] bool missedLink() const { return missedLink_; }

    /// Reads everything again: another connection may have changed it.
    void ReadAll();
    /// Reads one table of the file again, after a statement that made, changed or dropped it.
    void ReadTable(const std::string& name);
    /// A table with these fields was made in the file, or one was dropped.
    void NoteMade(const std::string& name, const std::vector<OutputColumn>& fields);
    void NoteDropped(const std::string& name);

    /// A shell is a dropped table of a working database that was kept, empty, in the file: the next query that makes a
    /// table of the same name and fields fills it, since making a table costs more than most of these queries. In the
    /// list of links a shell is an entry without a file.
    /// The shell of this name, without fields when another connection left it; nullptr when there is none.
    [[nodiscard]] const TableInfo* shell(const std::string& name) const;
    [[nodiscard]] std::vector<std::string> shells() const;
    /// True for a table that a query made, and nobody has changed since.
    [[nodiscard]] bool canBeShell(const std::string& name) const;
    void NoteEmptied(const std::string& name);
    void NoteShellGone(const std::string& name);
    /// True when a query with these fields would make the same table.
    [[nodiscard]] static bool Fits(const TableInfo& table, const std::vector<OutputColumn>& fields);
    /// Stops waiting for the disk: a working database can be made anew from its template at any time. One that has
    /// links already is treated so from its opening on.
    void Relax();
    /// As long as a watch is to be asked often: in such small parts that it can be.
    void SortInParts(bool small);
    /// Both need a file that can be written, and no statement may be running.
    void PutLink(const LinkInfo& link);
    void DropLink(std::string_view name);

  private:
    struct Entry {
        TableInfo table;
        LinkInfo link; ///< with a name when the entry is one
        bool read = false;
        bool made = false; ///< by a query: it has its fields and nothing else
        std::size_t stamp = 0;
    };
    struct Attached {
        std::string schema;
        FileIdentity identity;
        std::string password; ///< with which it was attached
        bool writable = false;
    };

    void Add(Entry entry);
    void Remove(std::string_view name);
    [[nodiscard]] Entry* EntryOf(std::string_view name) const;
    [[nodiscard]] bool ReadLink(Entry& entry) const;
    [[nodiscard]] std::string SchemaOf(const LinkInfo& link) const;
    [[nodiscard]] bool NeedsWriting(const std::string& file) const;
    [[nodiscard]] std::string Attach(const DatabaseFile& file, const std::string& password, bool writable) const;
    void DetachUnused() const;
    void Detach(const std::string& file) const;
    void ReadColumns(TableInfo& table) const;
    void ReadFigures(const std::string& schema, std::map<std::string, std::int64_t>& figures) const;

    [[nodiscard]] std::int64_t LeastRowsOf(const TableInfo& table, const FileMark& mark) const;
    [[nodiscard]] ImageSubject SubjectOf(const TableInfo& table) const;

    sqlite3* database_;
    std::string path_;
    FileIdentity own_;
    std::shared_ptr<ColumnImages> images_; ///< none: no statement reads columns
    std::vector<std::unique_ptr<Entry>> entries_;
    std::unordered_map<std::string, Entry*> byName_;                             ///< by folded name
    std::map<std::string, TableInfo> shells_;                                    ///< by folded name
    mutable std::map<std::string, Attached> attached_;                           ///< by path of file
    mutable std::map<std::string, std::map<std::string, std::int64_t>> figures_; ///< rows by schema and table
    struct Counted {
        FileMark mark;
        std::int64_t rows = 0;
    };
    mutable std::map<std::string, Counted> counted_; ///< by schema and table: rows at most, when the file was like that
    mutable bool missedLink_ = false;
    bool keepsLinks_ = false;
    bool hasLinks_ = false;
    bool relaxed_ = false;
    unsigned version_ = 1;
    Statement putLink_; ///< kept, since a change of database makes forty links
};

} // namespace jet
