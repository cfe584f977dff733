#include "jet/engine/Engine.h"

#include "jet/emit/Pivot.h"
#include "jet/engine/ColumnStore.h"
#include "jet/engine/Guard.h"
#include "jet/functions/Functions.h"
#include "jet/rewrite/Rewrites.h"
#include "jet/values/Collation.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

constexpr std::size_t MostSeen = 1000;
constexpr std::size_t LongestKept = 64 * 1024;
constexpr int BusyMilliseconds = 3000;

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

/// The catalogue, with a note of every table that it is asked for.
class NotingCatalogue final : public Catalogue {
  public:
    explicit NotingCatalogue(const LiveCatalogue& catalogue) : catalogue_(catalogue) {}

    [[nodiscard]] const TableInfo* find(std::string_view name) const override {
        const TableInfo* const found = catalogue_.find(name);
        const auto asked = [&](const AskedTable& each) { return each.name == name && !each.whetherLink; };
        if (std::ranges::none_of(asked_, asked))
            asked_.push_back({std::string(name), found == nullptr ? 0 : catalogue_.stamp(name), false});
        return found;
    }
    [[nodiscard]] bool isLink(std::string_view name) const override {
        const bool link = catalogue_.isLink(name);
        asked_.push_back({std::string(name), link ? 1U : 0U, true});
        return link;
    }
    [[nodiscard]] unsigned version() const override { return catalogue_.version(); }
    [[nodiscard]] std::int64_t rowsOnRecord(const TableInfo& table) const override {
        return catalogue_.rowsOnRecord(table);
    }
    [[nodiscard]] const std::vector<AskedTable>& asked() const { return asked_; }

  private:
    const LiveCatalogue& catalogue_;
    mutable std::vector<AskedTable> asked_;
};

Handle OpenFile(const DatabaseFile& file) {
    RefuseReachingOut(file.path);
    sqlite3* raw = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.uri().c_str(), &raw, flags, nullptr);
    Handle handle(raw);
    if (code != SQLITE_OK)
        throw Error(ErrorNumber::NotADatabase, "'" + file.path + "' can't be opened: " + sqlite3_errstr(code) + ".");
    Harden(handle.get());
    return handle;
}

} // namespace

Engine::Engine(const std::string& path, const std::string& password, Use use) : keepsLinks_(use == Use::Working) {
    const DatabaseFile file = DatabaseFile::Inspect(path);
    database_ = OpenFile(file);
    sqlite3* const handle = database_.get();
    sqlite3_busy_timeout(handle, BusyMilliseconds);
    sqlite3_extended_result_codes(handle, 1);
    try {
        CheckPassword(handle, "main", password);
        RegisterFunctions(handle);
        Run(handle, "PRAGMA main.synchronous = NORMAL");
        dataVersion_ = Prepare(handle, "PRAGMA main.data_version");
        static_cast<void>(OthersWrote()); // from here on what others write is noticed
        catalogue_ = std::make_unique<LiveCatalogue>(handle, path, use);
        sizes_.emplace(handle);
        begin_ = Prepare(handle, "BEGIN");
        commit_ = Prepare(handle, "COMMIT");
    } catch (const Error& error) {
        if (error.number() == ErrorNumber::WrongPassword || error.number() == ErrorNumber::Busy) throw;
        const bool other = error.number() == ErrorNumber::NotADatabase;
        throw Error(ErrorNumber::NotADatabase,
                    "'" + path + "' can't be opened: " + (other ? DatabaseFile::Explain(path) : error.what()));
    }
    if (!keepsLinks_) RefuseComputedParts(handle, "main", path);
    readOnly_ = !file.writable || sqlite3_db_readonly(handle, "main") == 1;
    sqlite3_set_authorizer(handle, Note, &noting_);
}

// The file is left as if every table that was dropped were gone.
Engine::~Engine() {
    try {
        for (const std::string& name : catalogue_->shells())
            DropShell(name);
    } catch (const Error&) {
        // busy or lost: the next one who opens the file finds them marked
    }
}

// Only for a statement seen before: a new one may have a file to attach, whose settings can't be made in a transaction.
Engine::ReadScope::ReadScope(Engine& engine, std::string_view sql) : engine_(engine) {
    const auto found = engine.byText_.find(sql);
    if (found == engine.byText_.end() || !engine.StillGood(*found->second)) return;
    if (engine.sizes_->inDoubt(found->second->prepared.reads)) return;
    if (engine.scoped_ || sqlite3_get_autocommit(engine.database()) == 0) return;
    engine.scoped_ = sqlite3_step(engine.begin_.get()) == SQLITE_DONE;
    sqlite3_reset(engine.begin_.get());
}

Engine::ReadScope::~ReadScope() {
    if (!engine_.scoped_) return;
    engine_.scoped_ = false;
    if (sqlite3_get_autocommit(engine_.database()) == 0) sqlite3_step(engine_.commit_.get());
    sqlite3_reset(engine_.commit_.get());
}

// Another connection may have made tables or links in the file meanwhile.
void Engine::NoticeOthers() {
    if (sqlite3_get_autocommit(database()) == 0 && !scoped_) return;
    if (!OthersWrote()) return;
    catalogue_->ReadAll();
    sizes_->ForgetAll();
}

// True when another connection has written to the file since this was last asked.
bool Engine::OthersWrote() {
    const bool row = Step(database(), dataVersion_.get());
    const std::int64_t version = row ? sqlite3_column_int64(dataVersion_.get(), 0) : lastVersion_;
    sqlite3_reset(dataVersion_.get());
    return std::exchange(lastVersion_, version) != version;
}

Engine::Seen& Engine::Translated(std::string_view sql) {
    const auto found = byText_.find(sql);
    if (found != byText_.end()) {
        seen_.splice(seen_.begin(), seen_, found->second);
        Seen& seen = *found->second;
        if (StillGood(seen)) {
            ++counts_.reused;
        } else {
            TranslateAnew(seen);
        }
        return seen;
    }
    Seen made;
    made.text = sql;
    TranslateAnew(made);
    if (sql.size() > LongestKept) return passing_ = std::move(made);
    if (seen_.size() >= MostSeen) {
        byText_.erase(seen_.back().text);
        seen_.pop_back();
    }
    seen_.push_front(std::move(made));
    byText_[seen_.front().text] = seen_.begin();
    return seen_.front();
}

void Engine::TranslateAnew(Seen& seen) {
    const NotingCatalogue noting(*catalogue_);
    seen.translation = Translate(seen.text, noting, leftOut_);
    seen.asked = noting.asked();
    seen.version = catalogue_->version();
    seen.prepared = {};
    ++counts_.translated;
}

// A filter drops and makes its working tables each time, always alike; what was translated for them stays good.
bool Engine::StillGood(Seen& seen) {
    if (seen.version == catalogue_->version()) return true;
    const bool same = std::ranges::all_of(seen.asked, [&](const AskedTable& each) {
        if (each.whetherLink) return catalogue_->isLink(each.name) == (each.stamp != 0);
        return catalogue_->stamp(each.name) == each.stamp;
    });
    if (same) seen.version = catalogue_->version();
    return same;
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

PreparedStatement Engine::TakePrepared(Seen& seen) {
    PreparedStatement prepared = std::exchange(seen.prepared, {});
    const bool query = seen.translation.kind == StatementClass::Select;
    const bool doubtful = query && results_.empty() && prepared.reads.size() > 1 && sizes_->inDoubt(prepared.reads);
    if (prepared.statement != nullptr && !doubtful) return prepared;
    const std::string& sql = seen.translation.statements.back();
    return query ? PrepareQuery(sql, seen.translation.lists) : PrepareNoting(sql, seen.translation.lists);
}

// Figures are not taken while a result is being read: new ones would end it.
PreparedStatement Engine::PrepareQuery(std::string_view sql, const std::vector<ListParameter>& lists) {
    PreparedStatement prepared = PrepareNoting(sql, lists);
    if (prepared.reads.size() < 2 || !results_.empty() || scoped_) return prepared;
    if (sizes_->Refresh(prepared.reads)) return PrepareNoting(sql, lists);
    return prepared;
}

void Engine::GiveBack(std::string_view sql, PreparedStatement prepared) {
    sqlite3_reset(prepared.statement.get());
    const auto found = byText_.find(sql);
    if (found == byText_.end()) return;
    Seen& seen = *found->second;
    if (seen.version == catalogue_->version() && seen.prepared.statement == nullptr)
        seen.prepared = std::move(prepared);
}

// A table that isn't there may have been made by another connection a moment ago, in the file or in a linked one.
template <class Work> auto Engine::Retrying(const Work& work) {
    NoticeOthers();
    try {
        return work();
    } catch (const Error& error) {
        if (error.number() != ErrorNumber::NoSuchTable && error.number() != ErrorNumber::NoSuchColumn) throw;
        // The DROP of a table that isn't there is common, and needs no second look when nobody can have made it.
        const bool known = error.number() == ErrorNumber::NoSuchTable && !catalogue_->missedLink();
        if (known && !OthersWrote()) throw;
    }
    catalogue_->ReadAll();
    return work();
}

ReadyQuery Engine::Open(std::string_view sql) {
    return Retrying([&]() -> ReadyQuery {
        Seen& seen = Translated(sql);
        const Translation& translation = seen.translation;
        if (translation.kind != StatementClass::Select)
            throw Error(ErrorNumber::NoRows, "The statement gives no rows.");
        if (!translation.pivot.empty()) return OpenPivot(translation);
        return {translation.columns, TakePrepared(seen)};
    });
}

Explanation Engine::Explain(std::string_view sql) {
    return Retrying([&] {
        const Translation& translation = Translated(sql).translation;
        Explanation explained{{translation.steps.begin(), translation.steps.end()}, translation.statements};
        for (const PivotPlan& plan : translation.pivot) {
            if (!plan.valuesSql.empty()) explained.texts.push_back(plan.valuesSql);
            explained.texts.push_back(plan.head + plan.column + plan.tail);
        }
        return explained;
    });
}

void Engine::LeaveOutStep(std::string_view name) {
    if (std::ranges::find(Rewrites(), name, &Rewrite::name) == Rewrites().end())
        throw Error(ErrorNumber::SyntaxError, "There is no step '" + std::string(name) + "'.");
    leftOut_.emplace(name);
    byText_.clear();
    seen_.clear();
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
    const auto seen = byText_.find(sql);
    const bool makesTable =
        seen != byText_.end() && seen->second->translation.kind == StatementClass::Schema && !readOnly_;
    const bool alone = !scoped_ && sqlite3_get_autocommit(database()) != 0;
    return makesTable && alone && catalogue_->hasLinks() ? ExecuteClaimed(sql) : ExecuteHere(sql);
}

// What a statement that makes or drops a table looks up before and after takes more locks than its own work: here one
// serves all. The write lock comes first, since SQLite doesn't wait for one while it holds the lock for reading.
std::int64_t Engine::ExecuteClaimed(std::string_view sql) {
    Claim();
    try {
        const std::int64_t changes = ExecuteHere(sql);
        EndClaim();
        return changes;
    } catch (const Error&) {
        if (scoped_) EndClaim(); // a statement that fails has taken back what it did
        throw;
    }
}

void Engine::Claim() {
    if (claim_ == nullptr) claim_ = Prepare(database(), "DELETE FROM main.MSysLinks WHERE 0");
    Step(database(), begin_.get());
    sqlite3_reset(begin_.get());
    scoped_ = true;
    try {
        Step(database(), claim_.get());
        sqlite3_reset(claim_.get());
    } catch (const Error&) {
        EndClaim();
        throw;
    }
}

void Engine::EndClaim() {
    scoped_ = false;
    if (sqlite3_get_autocommit(database()) != 0) return catalogue_->ReadAll(); // the engine gave up the whole
    try {
        Step(database(), commit_.get());
        sqlite3_reset(commit_.get());
    } catch (const Error&) {
        Rollback();
        throw;
    }
}

std::int64_t Engine::ExecuteHere(std::string_view sql) {
    NoticeOthers();
    return Retrying([&]() -> std::int64_t {
        Seen& seen = Translated(sql);
        if (seen.translation.kind == StatementClass::Select) {
            static_cast<void>(Open(sql)); // its rows are of no use to anyone
            return 0;
        }
        return RunStatements(seen);
    });
}

// "dBase IV;database=folder" and "name.dbf" name the file.
std::string Engine::ForeignTarget(std::string_view sql) {
    const Translation& translation = Translated(sql).translation;
    if (translation.connector.empty()) return {};
    constexpr std::string_view Mark = ";database=";
    const std::size_t mark = LowerCased(translation.connector).find(Mark);
    if (mark == std::string::npos || !LowerCased(translation.connector).starts_with("dbase"))
        throw Error(ErrorNumber::EngineError, "Tables of the kind '" + translation.connector + "' can't be written.");
    std::string folder = translation.connector.substr(mark + Mark.size());
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
    RunKept(savepoint_, "SAVEPOINT one_statement");
    try {
        const std::int64_t changes = work();
        RunKept(release_, "RELEASE one_statement");
        return changes;
    } catch (const Error&) {
        // some failures, a full disk for one, have ended the transaction already
        sqlite3_exec(database(), "ROLLBACK TO one_statement; RELEASE one_statement", nullptr, nullptr, nullptr);
        throw;
    }
}

std::int64_t Engine::RunStatements(Seen& seen) {
    const bool schema = seen.translation.kind == StatementClass::Schema;
    if (schema) {
        if (seen.translation.change == TargetChange::DropLink) return DropLink(seen.translation.target);
        if (LeavesShell(seen.translation)) return LeaveShell(seen);
        if (FillsShell(seen.translation)) return FillShell(seen);
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

void Engine::RunKept(Statement& kept, std::string_view sql, const std::vector<std::string>& parameters) {
    if (kept == nullptr) kept = Prepare(database(), sql);
    RunAgain(database(), kept.get(), parameters);
}

// Of a table that a query made, and of one that was dropped, all is known; what else changed is read.
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

// Within a transaction that has read, SQLite doesn't wait for its turn to write. A file without links is claimed at
// once; with links the claim would hold up whoever writes to any of their files.
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
