#include "jet/engine/Engine.h"

#include "jet/columns/ScanFunctions.h"
#include "jet/columns/ScanTable.h"
#include "jet/emit/Pivot.h"
#include "jet/emit/Scope.h"
#include "jet/engine/ColumnStore.h"
#include "jet/engine/Guard.h"
#include "jet/functions/Functions.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

constexpr int kBusyMilliseconds = 3000;

// Called by SQLite for every table and column while it compiles a statement.
int Note(void* noting, int action, const char* table, const char* column, const char* schema, const char*) {
    auto* const target = *static_cast<PreparedStatement**>(noting);
    if (target == nullptr || table == nullptr) return SQLITE_OK;
    const auto name = [&] { return LowerCased(std::string(schema == nullptr ? "main" : schema) + "." + table); };
    static_cast<void>(column);
    if (action == SQLITE_READ) target->reads.insert(name());
    if (action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE) target->writes.insert(name());
    return SQLITE_OK;
}

Handle OpenFile(const DatabaseFile& file, const WatchedFiles& files) {
    RefuseReachingOut(file.path);
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.uri().c_str(), &raw, flags, files.name());
    Handle handle(raw);
    if (code == SQLITE_CANTOPEN) throw OpenError(file.path, OpenFailure::MayNotBeRead);
    if (code != SQLITE_OK) throw OpenError(file.path, std::string(sqlite3_errstr(code)) + ".");
    Harden(handle.get());
    return handle;
}

} // namespace

Engine::Engine(const std::string& path, const std::string& password, Use use) : keepsLinks_(use == Use::Working) {
    const DatabaseFile file = DatabaseFile::Inspect(path);
    database_ = OpenFile(file, files_);
    sqlite3* const handle = database_.get();
    sqlite3_busy_timeout(handle, kBusyMilliseconds);
    sqlite3_extended_result_codes(handle, 1);
    try {
        CheckPassword(handle, "main", password);
        RegisterFunctions(handle);
        RegisterScans(handle, watch_);
        Run(handle, "PRAGMA main.synchronous = NORMAL");
        notice_.emplace(handle); // from here on what others write is noticed
        catalogue_ = std::make_unique<LiveCatalogue>(handle, path, use);
        statements_.emplace(*catalogue_);
        shells_.emplace(handle, *catalogue_);
        sizes_.emplace(handle);
        own_.emplace(handle);
    } catch (const Error& error) {
        if (error.number() == ErrorNumber::WrongPassword) throw;
        if (error.number() == ErrorNumber::Busy) throw OpenError(path, OpenFailure::InUse);
        if (error.number() == ErrorNumber::NotADatabase) throw OpenError(path, DatabaseFile::Explain(path));
        if (error.number() == ErrorNumber::TooLarge) throw OpenError(path, OpenFailure::TooLarge);
        throw OpenError(path, error.what());
    }
    if (!keepsLinks_) RefuseComputedParts(handle, "main", path);
    readOnly_ = !file.writable || sqlite3_db_readonly(handle, "main") == 1;
    sqlite3_set_authorizer(handle, Note, &noting_);
}

// Tables that were dropped but kept as empty shells are dropped now.
Engine::~Engine() {
    try {
        for (const std::string& name : catalogue_->shells())
            DropShell(name);
    } catch (const Error&) {
        // the file is busy or gone: the shells stay marked, and the next opening treats them as dropped
    }
}

// Only for a statement seen before: a new one may attach a file, and the settings of an attached file can't be made
// within a transaction.
Engine::ReadScope::ReadScope(Engine& engine, std::string_view sql) : engine_(engine) {
    engine.RefuseWithinAnother();
    CachedStatement* const seen = engine.statements_->find(sql);
    if (seen == nullptr || !engine.statements_->isGood(*seen) || engine.sizes_->inDoubt(seen->prepared.reads)) return;
    began_ = engine.own_->Begin();
}

Engine::ReadScope::~ReadScope() {
    if (!began_) return;
    try {
        static_cast<void>(engine_.own_->End());
    } catch (const Error&) {
        sqlite3_exec(engine_.database(), "ROLLBACK", nullptr, nullptr, nullptr); // nothing was written
    }
}

// Another connection may have made tables or links in the file meanwhile. Within a transaction of the user's none
// could.
void Engine::NoticeOthers() {
    if (sqlite3_get_autocommit(database()) == 0 && !own_->isBegun()) return;
    if (!notice_->OthersWrote()) return;
    catalogue_->ReadAll();
    sizes_->ForgetAll();
}

PreparedStatement Engine::PrepareNoting(std::string_view sql, const std::vector<ListParameter>& lists) {
    PreparedStatement prepared;
    noting_ = &prepared;
    try {
        prepared.statement = Prepare(database(), sql);
    } catch (const Error&) {
        noting_ = nullptr;
        throw;
    }
    noting_ = nullptr;
    BindLists(prepared.statement.get(), lists);
    return prepared;
}

PreparedStatement Engine::TakePrepared(CachedStatement& seen) {
    PreparedStatement prepared = std::exchange(seen.prepared, {});
    const bool query = seen.translation.kind == StatementClass::Select;
    const bool doubtful = query && results_.empty() && prepared.reads.size() > 1 && sizes_->inDoubt(prepared.reads);
    if (prepared.statement != nullptr && !doubtful) return prepared;
    const std::string& sql = seen.translation.statements.back();
    return query ? PrepareQuery(sql, seen.translation.lists) : PrepareNoting(sql, seen.translation.lists);
}

// No planner statistics are taken while a result is being read: ANALYZE would end the reading.
PreparedStatement Engine::PrepareQuery(std::string_view sql, const std::vector<ListParameter>& lists) {
    PreparedStatement prepared = PrepareNoting(sql, lists);
    if (prepared.reads.size() < 2 || !results_.empty() || own_->isBegun()) return prepared;
    if (sizes_->Refresh(prepared.reads)) return PrepareNoting(sql, lists);
    return prepared;
}

// A table that isn't there may have been made by another connection a moment ago, in the file or in a linked one.
template <class Work> auto Engine::Retrying(const Work& work) {
    NoticeOthers();
    try {
        return work();
    } catch (const Error& error) {
        if (error.number() != ErrorNumber::NoSuchTable && error.number() != ErrorNumber::NoSuchColumn) throw;
        // To drop a table that isn't there is common; when nobody else can have made it, it is not looked for again.
        const bool known = error.number() == ErrorNumber::NoSuchTable && !catalogue_->missedLink();
        if (known && !notice_->OthersWrote()) throw;
    }
    catalogue_->ReadAll();
    return work();
}

void Engine::Watch(WorkWatch::Ask ask, std::chrono::milliseconds between) {
    constexpr int kSteps = 20'000; // a few milliseconds
    watch_.Set(std::move(ask), between);
    catalogue_->SortInParts(watch_.isSet());
    const auto stops = [](void* watch) { return static_cast<WorkWatch*>(watch)->GoesOn() ? 0 : 1; };
    sqlite3_progress_handler(database(), watch_.isSet() ? kSteps : 0, watch_.isSet() ? +stops : nullptr, &watch_);
}

void Engine::RefuseWithinAnother() const {
    if (watch_.isAsking()) throw Error(ErrorNumber::Busy, "Another statement has not ended yet.");
}

ReadyQuery Engine::Open(std::string_view sql, Way way) {
    RefuseWithinAnother();
    return Retrying([&]() -> ReadyQuery {
        CachedStatement& seen = statements_->Translated(sql, way);
        const Translation& translation = seen.translation;
        if (translation.kind != StatementClass::Select)
            throw Error(ErrorNumber::NoRows, "The statement gives no rows.");
        if (!translation.pivot.empty()) return OpenPivot(translation);
        return {translation.columns, TakePrepared(seen)};
    });
}

Explanation Engine::Explain(std::string_view sql) {
    return Retrying([&] {
        const Translation& translation = statements_->Translated(sql).translation;
        Explanation explained{{translation.steps.begin(), translation.steps.end()}, translation.statements};
        for (const PivotPlan& plan : translation.pivot) {
            if (!plan.valuesSql.empty()) explained.texts.push_back(plan.valuesSql);
            explained.texts.push_back(plan.head + plan.column + plan.tail);
        }
        return explained;
    });
}

ReadyQuery Engine::OpenPivot(const Translation& translation) {
    const PivotPlan& plan = translation.pivot.front();
    std::vector<Value> values = plan.fixedValues;
    if (!plan.valuesSql.empty()) {
        const PreparedStatement distinct = PrepareNoting(plan.valuesSql, translation.lists);
        while (Step(database(), distinct.statement.get()))
            values.push_back(ValueAt(distinct.statement.get(), 0, ColumnType::Unknown));
    }
    CheckPivotWidth(translation.columns.size() + values.size());
    ReadyQuery query{translation.columns, PrepareQuery(PivotText(plan, values), translation.lists)};
    for (const Value& value : values)
        query.columns.push_back({PivotName(value), plan.valueColumn.type, plan.valueColumn.kind});
    return query;
}

std::int64_t Engine::Execute(std::string_view sql) {
    RefuseWithinAnother();
    const CachedStatement* const seen = statements_->find(sql);
    const bool makesTable = seen != nullptr && seen->translation.kind == StatementClass::Schema && !readOnly_;
    const bool alone = sqlite3_get_autocommit(database()) != 0;
    try {
        return makesTable && alone && catalogue_->hasLinks() ? ExecuteClaimed(sql) : ExecuteHere(sql);
    } catch (const Error&) {
        // a stop, or a full disk, has ended the caller's transaction, and taken back the tables made in it
        if (!alone && sqlite3_get_autocommit(database()) != 0) catalogue_->ReadAll();
        throw;
    }
}

// A statement that makes or drops a table reads the schema before and after it, each time with a lock of its own; here
// one transaction covers all. It begins with the write lock, since SQLite doesn't wait for that while it holds a read
// lock.
std::int64_t Engine::ExecuteClaimed(std::string_view sql) {
    Claim();
    try {
        const std::int64_t changes = ExecuteHere(sql);
        EndClaim();
        return changes;
    } catch (const Error&) {
        if (own_->isBegun()) EndClaim(); // a statement that fails has taken back what it did
        throw;
    }
}

void Engine::Claim() {
    if (claim_ == nullptr) claim_ = Prepare(database(), "DELETE FROM main.MSysLinks WHERE 0");
    if (!own_->Begin()) throw ErrorOf(database());
    try {
        RunAgain(database(), claim_.get());
    } catch (const Error&) {
        EndClaim();
        throw;
    }
}

void Engine::EndClaim() {
    try {
        if (!own_->End()) catalogue_->ReadAll();
    } catch (const Error&) {
        Rollback();
        throw;
    }
}

std::int64_t Engine::ExecuteHere(std::string_view sql) {
    try {
        return ExecuteOneWay(sql, Way::Any);
    } catch (const Error& error) {
        if (error.number() != ErrorNumber::ColumnsUnfit) throw;
        NoteUnfit(error);
        return ExecuteOneWay(sql, Way::Plain);
    }
}

void Engine::NoteUnfit(const Error& error) {
    catalogue_->NoteUnfit(error.what(), error.what() == kStaleImage);
}

std::int64_t Engine::ExecuteOneWay(std::string_view sql, Way way) {
    NoticeOthers();
    return Retrying([&]() -> std::int64_t {
        CachedStatement& seen = statements_->Translated(sql, way);
        if (seen.translation.kind == StatementClass::Select) {
            static_cast<void>(Open(sql)); // its rows are of no use to anyone
            return 0;
        }
        return RunStatements(seen);
    });
}

// "dBase IV;database=folder" and "name.dbf" name the file.
std::string Engine::ForeignTarget(std::string_view sql) {
    const Translation& translation = statements_->Translated(sql).translation;
    if (translation.connector.empty()) return {};
    constexpr std::string_view kMark = ";database=";
    const std::size_t mark = LowerCased(translation.connector).find(kMark);
    if (mark == std::string::npos || !LowerCased(translation.connector).starts_with("dbase"))
        throw Error(ErrorNumber::EngineError, "Tables of the kind '" + translation.connector + "' can't be written.");
    std::string folder = translation.connector.substr(mark + kMark.size());
    std::ranges::replace(folder, '\\', '/');
    return folder + "/" + translation.target;
}

std::int64_t Engine::RunOne(const PreparedStatement& prepared) {
    TakeInReaders(prepared.writes);
    const std::int64_t before = sqlite3_total_changes64(database());
    while (Step(database(), prepared.statement.get())) {
    }
    sqlite3_reset(prepared.statement.get());
    const std::int64_t changes = sqlite3_total_changes64(database()) - before;
    sizes_->Changed(prepared.writes, changes);
    return changes;
}

std::int64_t Engine::AsOne(const std::function<std::int64_t()>& work) {
    if (savepoint_ == nullptr) {
        savepoint_ = Prepare(database(), "SAVEPOINT one_statement");
        release_ = Prepare(database(), "RELEASE one_statement");
    }
    RunAgain(database(), savepoint_.get());
    try {
        const std::int64_t changes = work();
        RunAgain(database(), release_.get());
        return changes;
    } catch (const Error&) {
        // some failures, a full disk for one, have ended the transaction already
        sqlite3_exec(database(), "ROLLBACK TO one_statement; RELEASE one_statement", nullptr, nullptr, nullptr);
        throw;
    }
}

std::int64_t Engine::RunStatements(CachedStatement& seen) {
    const bool schema = seen.translation.kind == StatementClass::Schema;
    if (schema) {
        if (seen.translation.change == TargetChange::DropLink) return DropLink(seen.translation.target);
        if (own_->isBegun() && shells_->canBeLeftBy(seen.translation)) return LeaveShell(seen);
        if (shells_->canBeFilledBy(seen.translation)) return FillShell(seen);
        DropShell(seen.translation.target);
        TakeInAll();
    }
    if (!schema && seen.translation.statements.size() == 1) {
        PreparedStatement prepared = TakePrepared(seen);
        const std::int64_t changes = RunOne(prepared);
        seen.prepared = std::move(prepared);
        return changes;
    }
    const Translation translation = seen.translation;
    const std::int64_t changes = AsOne([&] {
        std::int64_t ofLast = 0;
        for (const std::string& each : translation.statements)
            ofLast = RunOne(PrepareNoting(each, translation.lists));
        return ofLast;
    });
    if (!schema) return changes;
    NoteSchemaChange(translation, changes);
    return translation.change == TargetChange::Make ? changes : 0;
}

std::int64_t Engine::DropLink(const std::string& name) {
    TakeInAll();
    catalogue_->DropLink(name);
    return 0;
}

// The fields of a table made by a query are known, a dropped table is gone; any other change is read from the file.
void Engine::NoteSchemaChange(const Translation& translation, std::int64_t rows) {
    const std::string& target = translation.target;
    sizes_->Forget(LowerCased("main." + target));
    if (target.empty()) return catalogue_->ReadAll();
    if (translation.change == TargetChange::Make) {
        catalogue_->NoteMade(target, translation.columns);
        TakeFiguresOf(target, rows);
    } else if (translation.change == TargetChange::Drop) {
        catalogue_->NoteDropped(target);
    } else {
        catalogue_->ReadTable(target);
    }
}

std::int64_t Engine::LeaveShell(CachedStatement& seen) {
    const std::string name = seen.translation.target;
    AsOne([&] {
        PreparedStatement emptying = std::exchange(seen.prepared, {});
        if (emptying.statement == nullptr) emptying = PrepareNoting("DELETE FROM " + seen.translation.droppedTable, {});
        shells_->Mark(name);
        const std::int64_t rows = RunOne(emptying);
        seen.prepared = std::move(emptying);
        return rows;
    });
    catalogue_->NoteEmptied(name);
    return 0;
}

std::int64_t Engine::FillShell(CachedStatement& seen) {
    const std::string name = seen.translation.target;
    const std::int64_t rows = AsOne([&] {
        shells_->Unmark(name);
        PreparedStatement filling = TakePrepared(seen);
        const std::int64_t filled = RunOne(filling);
        seen.prepared = std::move(filling);
        return filled;
    });
    catalogue_->NoteShellGone(name);
    catalogue_->NoteMade(name, seen.translation.columns);
    TakeFiguresOf(name, rows);
    return rows;
}

void Engine::DropShell(const std::string& name) {
    const TableInfo* const shell = catalogue_->shell(name);
    if (shell == nullptr) return;
    TakeInAll();
    AsOne([&]() -> std::int64_t {
        shells_->Unmark(name);
        Run(database(), "DROP TABLE " + TableSql(*shell));
        return 0;
    });
    catalogue_->NoteShellGone(name);
    sizes_->Forget(LowerCased("main." + name));
}

// Within a transaction of the engine's own, which holds the write lock, the planner statistics of a new table cost
// little.
void Engine::TakeFiguresOf(const std::string& table, std::int64_t rows) {
    const std::string figures = LowerCased("main." + table);
    if (sizes_->Refilled(figures, rows)) return;
    sizes_->Forget(figures);
    if (own_->isBegun()) sizes_->Made(figures, rows);
}

void Engine::TakeInReaders(const std::set<std::string>& written) {
    const std::vector<OpenResult*> results(results_.begin(), results_.end());
    for (OpenResult* const each : results)
        if (std::ranges::any_of(written, [&](const std::string& table) { return each->tablesRead().contains(table); }))
            each->TakeIn();
}

void Engine::TakeInAll() {
    const std::vector<OpenResult*> results(results_.begin(), results_.end());
    for (OpenResult* const each : results)
        each->TakeIn();
}

void Engine::PutLink(const LinkInfo& link) {
    if (!keepsLinks_) throw Error(ErrorNumber::ReadOnly, "Only a working database keeps links.");
    NoticeOthers();
    DropShell(link.name);
    TakeInAll();
    if (sqlite3_get_autocommit(database()) == 0) return catalogue_->PutLink(link);
    catalogue_->Relax();
    Run(database(), "BEGIN IMMEDIATE");
    try {
        catalogue_->PutLink(link);
        Run(database(), "COMMIT");
    } catch (const Error&) {
        if (sqlite3_get_autocommit(database()) == 0) Run(database(), "ROLLBACK");
        catalogue_->ReadAll();
        throw;
    }
}

// A transaction that has begun by reading can't wait for the write lock. So a file without links is locked for writing
// at the start; with links that would lock all linked files, and hold up whoever writes to one of them.
void Engine::Begin() {
    Run(database(), catalogue_->hasLinks() ? "BEGIN" : "BEGIN IMMEDIATE");
}

void Engine::Commit() {
    Run(database(), "COMMIT");
}

void Engine::Rollback() {
    TakeInAll();
    Run(database(), "ROLLBACK");
    catalogue_->ReadAll();
}

} // namespace jet
