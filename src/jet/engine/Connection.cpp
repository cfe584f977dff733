#include "jet/engine/Connection.h"

#include "jet/engine/DatabaseFile.h"
#include "jet/engine/DbaseTable.h"
#include "jet/engine/Engine.h"
#include "jet/engine/Guard.h"
#include "jet/engine/ResultRows.h"
#include "jet/functions/Functions.h"
#include "jet/values/Collation.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace jet {

struct Connection::Impl {
    std::shared_ptr<Engine> engine; ///< none when closed
    std::string path;
    bool readOnly = false;
};

namespace {

Engine& EngineOf(const Connection::Impl& impl) {
    if (impl.engine == nullptr) throw Error(ErrorNumber::EngineError, "The connection is closed.");
    return *impl.engine;
}

/// True when ";database=" stands in the statement, ignoring case.
bool NamesDatabase(std::string_view sql) {
    constexpr std::string_view kMark = ";database=";
    for (std::size_t at = sql.find(';'); at != std::string_view::npos; at = sql.find(';', at + 1))
        if (EqualFolded(sql.substr(at, kMark.size()), kMark)) return true;
    return false;
}

Handle OpenNew(const std::string& path) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(FileUri(path, "").c_str(), &raw,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK)
        throw Error(ErrorNumber::NotADatabase, "'" + path + "' can't be made: " + sqlite3_errstr(code) + ".");
    return handle;
}

Handle OpenExisting(const DatabaseFile& file) {
    RefuseReachingOut(file.path);
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(file.uri().c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr);
    Handle handle(raw);
    if (opened != SQLITE_OK) throw ErrorOf(handle.get());
    Harden(handle.get());
    sqlite3_busy_timeout(handle.get(), 3000);
    return handle;
}

/// Has a file written beside `target`, which takes its place once it is whole.
template <class Write> void Replace(const std::string& target, Write&& write) {
    const std::string work = target + ".copying";
    std::remove(work.c_str());
    try {
        write(work);
    } catch (const Error&) {
        std::remove(work.c_str());
        throw;
    }
    if (std::rename(work.c_str(), target.c_str()) == 0) return;
    std::remove(work.c_str());
    throw Error(ErrorNumber::ReadOnly, "'" + target + "' can't be written.");
}

} // namespace

void Database::Create(const std::string& path, const std::string& password) {
    if (path.empty()) throw Error(ErrorNumber::NotADatabase, "A database needs a file name.");
    if (::access(path.c_str(), F_OK) == 0) throw Error(ErrorNumber::AlreadyExists, "'" + path + "' is there already.");
    try {
        const Handle handle = OpenNew(path);
        Run(handle.get(), "PRAGMA page_size = 4096");
        Run(handle.get(), "BEGIN");
        StorePassword(handle.get(), password);
        Run(handle.get(), "COMMIT");
    } catch (const Error& error) {
        std::remove(path.c_str());
        throw Error(ErrorNumber::NotADatabase, "'" + path + "' can't be made: " + error.what());
    }
}

void Database::Copy(const std::string& source, const std::string& target) {
    const DatabaseFile file = DatabaseFile::Inspect(source);
    Replace(target, [&](const std::string& work) {
        const Handle from = OpenExisting(file);
        const Handle into = OpenNew(work);
        sqlite3_backup* const backup = sqlite3_backup_init(into.get(), "main", from.get(), "main");
        if (backup == nullptr) throw ErrorOf(into.get());
        const int code = sqlite3_backup_step(backup, -1);
        sqlite3_backup_finish(backup);
        if (code != SQLITE_DONE)
            throw Error(code == SQLITE_BUSY ? ErrorNumber::Busy : ErrorNumber::EngineError,
                        "'" + source + "' can't be copied: " + sqlite3_errstr(code) + ".");
    });
}

void Database::Compact(const std::string& path) {
    const DatabaseFile file = DatabaseFile::Inspect(path);
    Replace(path, [&](const std::string& work) {
        const Handle from = OpenExisting(file);
        RefuseComputedParts(from.get(), "main", path);
        RegisterFunctions(from.get());
        Run(from.get(), "VACUUM INTO ?", {FileUri(work, "")});
    });
}

std::shared_ptr<Connection> Connection::Open(const std::string& path, const std::string& password, Use use) {
    auto impl = std::make_shared<Impl>();
    impl->engine = std::make_shared<Engine>(path, password, use);
    impl->path = path;
    impl->readOnly = impl->engine->readOnly();
    return std::shared_ptr<Connection>(new Connection(std::move(impl)));
}

Connection::Connection(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}
Connection::~Connection() = default;

void Connection::Close() {
    impl_->engine.reset();
}
bool Connection::isOpen() const {
    return impl_->engine != nullptr;
}
bool Connection::isReadOnly() const {
    return impl_->readOnly;
}
const std::string& Connection::path() const {
    return impl_->path;
}

std::int64_t Connection::Execute(std::string_view sql) {
    Engine& engine = EngineOf(*impl_);
    // Looked for in the text first: translating each statement twice would cost all of them.
    if (NamesDatabase(sql)) {
        if (const std::string file = engine.ForeignTarget(sql); !file.empty()) {
            Recordset rows = OpenRecordset(sql);
            return WriteDbaseTable(file, rows);
        }
    }
    return engine.Execute(sql);
}

Recordset Connection::OpenRecordset(std::string_view sql, CursorType cursor) {
    static_cast<void>(EngineOf(*impl_));
    return Recordset(std::make_unique<ResultRows>(impl_->engine, sql, cursor));
}

Explanation Connection::Explain(std::string_view sql) {
    return EngineOf(*impl_).Explain(sql);
}
void Connection::LeaveOutStep(std::string_view name) {
    EngineOf(*impl_).statements().LeaveOutStep(name);
}

std::vector<TableInfo> Connection::Tables() const {
    return EngineOf(*impl_).catalogue().Tables();
}
const Catalogue& Connection::catalogue() const {
    return EngineOf(*impl_).catalogue();
}

std::vector<std::string> Connection::Declarations() const {
    std::vector<std::string> declarations;
    for (const auto& row : Rows(EngineOf(*impl_).database(), "SELECT tbl_name, sql FROM main.sqlite_master "
                                                             "WHERE sql IS NOT NULL ORDER BY type, name"))
        if (!IsReservedName(row[0].toText())) declarations.push_back(row[1].toText());
    return declarations;
}

void Connection::CreateLink(const std::string& linkName, const std::string& file, const std::string& password,
                            const std::string& sourceTable, LinkAccess access) {
    EngineOf(*impl_).PutLink({linkName, file, password, sourceTable, access});
}

void Connection::Relax() {
    EngineOf(*impl_).catalogue().Relax();
}
void Connection::Begin() {
    EngineOf(*impl_).Begin();
}
void Connection::Commit() {
    EngineOf(*impl_).Commit();
}
void Connection::Rollback() {
    EngineOf(*impl_).Rollback();
}

void Connection::UseColumnImages(std::shared_ptr<ColumnImages> images) {
    EngineOf(*impl_).catalogue().UseImages(std::move(images));
}

void Connection::Watch(WorkWatch::Ask ask, std::chrono::milliseconds between) {
    EngineOf(*impl_).Watch(std::move(ask), between);
}

Connection::CacheCounts Connection::cacheCounts() const {
    const StatementCache::Counts counts = EngineOf(*impl_).statements().counts();
    return {counts.translated, counts.reused};
}

} // namespace jet
