#include "jet/engine/LiveCatalogue.h"

#include "jet/engine/Guard.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <cstdlib>

namespace jet {

namespace {

constexpr std::string_view kLinkTable = "MSysLinks";

/// What of sqlite_master counts as a table: no view, and no virtual table, which has no page of its own.
constexpr std::string_view kRealTables = "type = 'table' AND rootpage > 0";

/// A hash of everything that a translation uses of a table.
std::size_t StampOf(const TableInfo& table) {
    std::string all = table.name + '\n' + table.database + '\n' + table.sourceTable + '\n';
    all += static_cast<char>('a' + static_cast<int>(table.type));
    for (const ColumnInfo& column : table.columns) {
        all += column.name + '\n';
        all += static_cast<char>('a' + static_cast<int>(column.type));
        all += column.nullable ? '?' : '!';
    }
    return std::hash<std::string>{}(all) | 1U;
}

/// The fields of a table that a query makes.
std::vector<ColumnInfo> MadeColumns(const std::vector<OutputColumn>& fields) {
    std::vector<ColumnInfo> columns;
    for (const OutputColumn& field : fields)
        columns.push_back({field.name, TypeOfDeclaration(DeclaredType(field.type)), field.type != ColumnType::YesNo});
    return columns;
}

} // namespace

LiveCatalogue::LiveCatalogue(sqlite3* database, std::string path, Use use)
    : database_(database), path_(std::move(path)), keepsLinks_(use == Use::Working) {
    own_ = DatabaseFile::Inspect(path_).identity;
    ReadAll();
}

void LiveCatalogue::Add(Entry entry) {
    auto held = std::make_unique<Entry>(std::move(entry));
    byName_[Folded(held->table.name)] = held.get();
    entries_.push_back(std::move(held));
}

void LiveCatalogue::Remove(std::string_view name) {
    const auto found = byName_.find(Folded(name));
    if (found == byName_.end()) return;
    std::erase_if(entries_, [&](const auto& each) { return each.get() == found->second; });
    byName_.erase(found);
}

void LiveCatalogue::ReadAll() {
    ++version_;
    missedLink_ = false;
    figures_.clear();
    entries_.clear();
    byName_.clear();
    shells_.clear();
    hasLinks_ = false;
    for (const auto& row : Rows(database_, "SELECT name FROM main.sqlite_master WHERE " + std::string(kRealTables))) {
        Entry entry;
        entry.table.name = entry.table.sourceTable = row[0].toText();
        hasLinks_ = hasLinks_ || (keepsLinks_ && SameName(entry.table.name, kLinkTable));
        if (!IsReservedName(entry.table.name)) Add(std::move(entry));
    }
    if (!hasLinks_) return;
    for (const auto& row :
         Rows(database_, "SELECT Name, File, Password, SourceTable, Writable FROM main.MSysLinks ORDER BY rowid")) {
        Entry entry;
        entry.link = {row[0].toText(), row[1].toText(), row[2].toText(), row[3].toText(),
                      row[4].toBoolean() ? LinkAccess::Write : LinkAccess::Read};
        if (entry.link.file.empty()) {
            if (EntryOf(entry.link.name) != nullptr) NoteEmptied(entry.link.name);
            continue;
        }
        entry.table.name = entry.link.name;
        entry.table.type = TableType::Link;
        Add(std::move(entry));
    }
    Relax();
}

void LiveCatalogue::Relax() {
    if (relaxed_ || sqlite3_get_autocommit(database_) == 0) return; // within a transaction it can't be set
    Run(database_, "PRAGMA main.synchronous = OFF");
    Run(database_, "PRAGMA main.journal_mode = MEMORY");
    Run(database_, "PRAGMA main.cache_size = -16000"); // for the tables that filters make
    relaxed_ = true;
}

// SQLite sorts as much at once as this cache holds, and asks nobody meanwhile: 16 MB take a third of a second. Where
// the pragma fails, the cache stays as it was.
void LiveCatalogue::SortInParts(bool small) {
    if (!relaxed_) return;
    const char* const size = small ? "PRAGMA main.cache_size = -2000" : "PRAGMA main.cache_size = -16000";
    sqlite3_exec(database_, size, nullptr, nullptr, nullptr);
}

void LiveCatalogue::ReadTable(const std::string& name) {
    ++version_;
    if (isLink(name)) {
        EntryOf(name)->read = false;
        return;
    }
    Remove(name);
    const auto rows =
        Rows(database_,
             "SELECT name FROM main.sqlite_master WHERE " + std::string(kRealTables) + " AND name = ? COLLATE NOCASE",
             {name});
    if (rows.empty() || IsReservedName(name)) return;
    Entry entry;
    entry.table.name = entry.table.sourceTable = rows[0][0].toText();
    Add(std::move(entry));
}

void LiveCatalogue::NoteMade(const std::string& name, const std::vector<OutputColumn>& fields) {
    if (isLink(name)) return ReadTable(name);
    NoteDropped(name);
    if (IsReservedName(name)) return;
    Entry entry;
    entry.table.name = entry.table.sourceTable = name;
    entry.table.columns = MadeColumns(fields);
    entry.read = entry.made = true;
    entry.stamp = StampOf(entry.table);
    Add(std::move(entry));
}

void LiveCatalogue::NoteDropped(const std::string& name) {
    ++version_;
    Remove(name);
}

const TableInfo* LiveCatalogue::shell(const std::string& name) const {
    const auto found = shells_.find(Folded(name));
    return found == shells_.end() ? nullptr : &found->second;
}

std::vector<std::string> LiveCatalogue::shells() const {
    std::vector<std::string> names;
    for (const auto& each : shells_)
        names.push_back(each.second.name);
    return names;
}

bool LiveCatalogue::canBeShell(const std::string& name) const {
    const Entry* const entry = EntryOf(name);
    return hasLinks_ && entry != nullptr && entry->made;
}

void LiveCatalogue::NoteEmptied(const std::string& name) {
    shells_[Folded(name)] = std::move(EntryOf(name)->table);
    NoteDropped(name);
}

void LiveCatalogue::NoteShellGone(const std::string& name) {
    shells_.erase(Folded(name));
}

bool LiveCatalogue::Fits(const TableInfo& table, const std::vector<OutputColumn>& fields) {
    return std::ranges::equal(table.columns, MadeColumns(fields), [](const ColumnInfo& a, const ColumnInfo& b) {
        return a.name == b.name && a.type == b.type && a.nullable == b.nullable;
    });
}

LiveCatalogue::Entry* LiveCatalogue::EntryOf(std::string_view name) const {
    const auto found = byName_.find(Folded(name));
    return found == byName_.end() ? nullptr : found->second;
}

bool LiveCatalogue::isLink(std::string_view name) const {
    const Entry* const entry = EntryOf(name);
    return entry != nullptr && entry->table.type == TableType::Link;
}

const TableInfo* LiveCatalogue::find(std::string_view name) const {
    Entry* const entry = EntryOf(name);
    if (entry == nullptr) return nullptr;
    if (!entry->read) {
        if (entry->table.type != TableType::Link) {
            ReadColumns(entry->table);
        } else if (!ReadLink(*entry)) {
            missedLink_ = true;
            return nullptr;
        }
        entry->read = true;
        entry->stamp = StampOf(entry->table);
    }
    return &entry->table;
}

std::size_t LiveCatalogue::stamp(std::string_view name) const {
    return find(name) == nullptr ? 0 : EntryOf(name)->stamp;
}

bool LiveCatalogue::ReadLink(Entry& entry) const {
    try {
        entry.table.database = SchemaOf(entry.link);
    } catch (const Error& error) {
        if (error.number() == ErrorNumber::NotADatabase) return false;
        throw;
    }
    const auto rows = Rows(database_,
                           "SELECT name FROM " + entry.table.database + ".sqlite_master WHERE " +
                               std::string(kRealTables) + " AND name = ? COLLATE NOCASE",
                           {entry.link.sourceTable});
    if (rows.empty() || IsReservedName(entry.link.sourceTable)) return false;
    entry.table.sourceTable = rows[0][0].toText();
    ReadColumns(entry.table);
    return true;
}

std::string LiveCatalogue::SchemaOf(const LinkInfo& link) const {
    const DatabaseFile file = DatabaseFile::Inspect(link.file);
    if (file.identity == own_) return "main";
    const auto found = attached_.find(link.file);
    const bool writable = NeedsWriting(link.file);
    if (found != attached_.end() && found->second.identity == file.identity && found->second.writable >= writable) {
        if (found->second.password != link.password) CheckPassword(database_, found->second.schema, link.password);
        return found->second.schema;
    }
    if (found != attached_.end()) Detach(link.file);
    DetachUnused();
    return Attach(file, link.password, writable);
}

// A file is attached once for all links to it: for writing when one of them is writable.
bool LiveCatalogue::NeedsWriting(const std::string& file) const {
    return std::ranges::any_of(
        entries_, [&](const auto& each) { return each->link.access == LinkAccess::Write && each->link.file == file; });
}

std::string LiveCatalogue::Attach(const DatabaseFile& file, const std::string& password, bool writable) const {
    int number = 1;
    const auto taken = [&](int candidate) {
        return std::ranges::any_of(
            attached_, [&](const auto& each) { return each.second.schema == "l" + std::to_string(candidate); });
    };
    while (taken(number))
        ++number;
    const std::string schema = "l" + std::to_string(number);
    RefuseReachingOut(file.path);
    Run(database_, "ATTACH ? AS " + schema, {writable ? file.uri() : file.uriForReading()});
    try {
        RefuseComputedParts(database_, schema, file.path);
        CheckPassword(database_, schema, password);
        if (sqlite3_get_autocommit(database_) != 0) Run(database_, "PRAGMA " + schema + ".synchronous = NORMAL");
        // A scan of millions of rows is faster with a small page cache, which stays in the processor's cache.
        Run(database_, "PRAGMA " + schema + ".cache_size = -4000");
    } catch (const Error&) {
        Run(database_, "DETACH " + schema);
        throw;
    }
    attached_[file.path] = {schema, file.identity, password, writable};
    return schema;
}

void LiveCatalogue::Detach(const std::string& file) const {
    figures_.erase(attached_.at(file).schema);
    Run(database_, "DETACH " + attached_.at(file).schema);
    attached_.erase(file);
    for (const auto& each : entries_)
        if (each->link.file == file) each->read = false;
}

// A file that is still read from can't be detached; the next attaching tries again.
void LiveCatalogue::DetachUnused() const {
    std::vector<std::string> unused;
    for (const auto& attached : attached_)
        if (std::ranges::none_of(entries_, [&](const auto& each) { return each->link.file == attached.first; }))
            unused.push_back(attached.first);
    for (const std::string& file : unused) {
        try {
            Detach(file);
        } catch (const Error&) {
            continue;
        }
    }
}

void LiveCatalogue::ReadColumns(TableInfo& table) const {
    table.columns.clear();
    const Statement all =
        Prepare(database_, "SELECT * FROM " + QuotedName(table.database) + "." + QuotedName(table.sourceTable));
    for (int i = 0; i < sqlite3_column_count(all.get()); ++i) {
        ColumnInfo column;
        column.name = sqlite3_column_name(all.get(), i);
        const char* declared = nullptr;
        int notNull = 0;
        int counts = 0;
        sqlite3_table_column_metadata(database_, table.database.c_str(), table.sourceTable.c_str(), column.name.c_str(),
                                      &declared, nullptr, &notNull, nullptr, &counts);
        column.type = counts != 0 ? ColumnType::Counter : TypeOfDeclaration(declared == nullptr ? "" : declared);
        column.nullable = notNull == 0;
        table.columns.push_back(std::move(column));
    }
}

// The planner statistics of a file are read all at once: they are few, and a statement names several tables.
std::int64_t LiveCatalogue::rowsOnRecord(const TableInfo& table) const {
    const auto [known, isNew] = figures_.try_emplace(table.database);
    if (isNew) ReadFigures(table.database, known->second);
    const auto rows = known->second.find(table.sourceTable);
    return rows == known->second.end() ? 0 : rows->second;
}

bool LiveCatalogue::leadsIndex(const TableInfo& table, const std::string& field) const {
    return !Rows(database_,
                 "SELECT 1 FROM pragma_index_list(?1, ?2) AS list, pragma_index_info(list.name, ?2) AS field WHERE "
                 "field.seqno = 0 AND field.name = ?3 COLLATE NOCASE AND NOT list.partial",
                 {table.sourceTable, table.database, field})
                .empty();
}

// Each index of a table tells the number of its rows first; the largest counts.
void LiveCatalogue::ReadFigures(const std::string& schema, std::map<std::string, std::int64_t>& figures) const {
    try {
        for (const auto& row :
             Rows(database_, "SELECT tbl, stat FROM " + QuotedName(schema) + ".sqlite_stat1 WHERE idx IS NOT NULL")) {
            std::int64_t& rows = figures[row[0].toText()];
            rows = std::max<std::int64_t>(rows, std::atoll(row[1].toText().c_str()));
        }
    } catch (const Error& error) {
        if (error.number() != ErrorNumber::NoSuchTable) throw; // the file has no planner statistics
    }
}

std::vector<TableInfo> LiveCatalogue::Tables() const {
    std::vector<TableInfo> tables;
    for (const auto& each : entries_)
        tables.push_back(each->table);
    return tables;
}

void LiveCatalogue::PutLink(const LinkInfo& link) {
    if (EntryOf(link.name) != nullptr && !isLink(link.name)) {
        Run(database_, "DROP TABLE main." + QuotedName(EntryOf(link.name)->table.sourceTable));
        Remove(link.name);
    }
    if (!hasLinks_)
        Run(database_, "CREATE TABLE IF NOT EXISTS main.MSysLinks (Name TEXT PRIMARY KEY COLLATE NOCASE, File TEXT, "
                       "Password TEXT, SourceTable TEXT, Writable INTEGER)");
    if (putLink_ == nullptr)
        putLink_ = Prepare(database_, "INSERT OR REPLACE INTO main.MSysLinks (Name, File, Password, SourceTable, "
                                      "Writable) VALUES (?, ?, ?, ?, ?)");
    RunAgain(database_, putLink_.get(),
             {link.name, link.file, link.password, link.sourceTable, link.access == LinkAccess::Write ? "1" : "0"});
    hasLinks_ = true;
    Remove(link.name);
    ++version_;
    Entry entry;
    entry.link = link;
    entry.table.name = link.name;
    entry.table.type = TableType::Link;
    Add(std::move(entry));
}

void LiveCatalogue::DropLink(std::string_view name) {
    Run(database_, "DELETE FROM main.MSysLinks WHERE Name = ?", {EntryOf(name)->link.name});
    Remove(name);
    ++version_;
}

} // namespace jet
