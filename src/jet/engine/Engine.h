#pragma once

#include "jet/columns/WorkWatch.h"
#include "jet/engine/LiveCatalogue.h"
#include "jet/engine/Locks.h"
#include "jet/engine/Options.h"
#include "jet/engine/Shells.h"
#include "jet/engine/StatementCache.h"
#include "jet/engine/TableSizes.h"
#include "jet/engine/WatchedFiles.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The inside of a Connection: runs translated statements on SQLite.
namespace jet {

/// A result that is still being fetched. Before a statement changes its tables the engine has it read its rows to the
/// end.
class OpenResult {
  public:
    virtual ~OpenResult() = default;
    virtual void TakeIn() = 0;
    [[nodiscard]] virtual const std::set<std::string>& tablesRead() const = 0;
};

/// A query that is ready to be stepped.
struct ReadyQuery {
    std::vector<OutputColumn> columns;
    PreparedStatement prepared;
};

/// The open database of a Connection. It lives on as long as a result still fetches rows from it.
class Engine {
  public:
    Engine(const std::string& path, const std::string& password, Use use);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// One read transaction for everything that the opening of a result reads, including the check for changes by
    /// others: taking the lock anew each time costs more than a small query.
    class ReadScope {
      public:
        ReadScope(Engine& engine, std::string_view sql);
        ~ReadScope();
        ReadScope(const ReadScope&) = delete;
        ReadScope& operator=(const ReadScope&) = delete;

      private:
        Engine& engine_;
        bool began_ = false;
    };

    std::int64_t Execute(std::string_view sql);
    /// The dBase file that a SELECT … INTO [dBase IV;database=…] names; empty for any other statement.
    [[nodiscard]] std::string ForeignTarget(std::string_view sql);
    [[nodiscard]] Explanation Explain(std::string_view sql);
    [[nodiscard]] ReadyQuery Open(std::string_view sql, Way way = Way::Any);
    /// A statement failed because a column image can't serve it, and is to be run the plain way.
    void NoteUnfit(const Error& error);
    [[nodiscard]] StatementCache& statements() { return *statements_; }

    void PutLink(const LinkInfo& link);
    void Begin();
    void Commit();
    void Rollback();

    /// From now on statements that take long call `ask` (see WorkWatch); an empty one ends that.
    void Watch(WorkWatch::Ask ask, std::chrono::milliseconds between);
    /// Throws Error (Busy) while the watch is being asked: the statement that it asks for has not ended.
    void RefuseWithinAnother() const;

    void Register(OpenResult* result) { results_.insert(result); }
    void Unregister(OpenResult* result) { results_.erase(result); }

    [[nodiscard]] sqlite3* database() const { return database_.get(); }
    [[nodiscard]] LiveCatalogue& catalogue() { return *catalogue_; }
    [[nodiscard]] bool readOnly() const { return readOnly_; }

  private:
    void NoticeOthers();
    [[nodiscard]] PreparedStatement PrepareNoting(std::string_view sql, const std::vector<ListParameter>& lists);
    [[nodiscard]] PreparedStatement TakePrepared(CachedStatement& seen);
    [[nodiscard]] PreparedStatement PrepareQuery(std::string_view sql, const std::vector<ListParameter>& lists);
    [[nodiscard]] ReadyQuery OpenPivot(const Translation& translation);
    std::int64_t RunStatements(CachedStatement& seen);
    /// Runs the work in a savepoint, which is rolled back when it fails.
    std::int64_t AsOne(const std::function<std::int64_t()>& work);
    std::int64_t ExecuteHere(std::string_view sql);
    std::int64_t ExecuteOneWay(std::string_view sql, Way way);
    std::int64_t ExecuteClaimed(std::string_view sql);
    void Claim();
    void EndClaim();
    std::int64_t RunOne(const PreparedStatement& prepared);
    void NoteSchemaChange(const Translation& translation, std::int64_t rows);
    void TakeInReaders(const std::set<std::string>& written);
    void TakeInAll();
    std::int64_t DropLink(const std::string& name);

    std::int64_t LeaveShell(CachedStatement& seen);
    std::int64_t FillShell(CachedStatement& seen);
    void DropShell(const std::string& name);
    void TakeFiguresOf(const std::string& table, std::int64_t rows);
    template <class Work> auto Retrying(const Work& work);

    WorkWatch watch_;
    WatchedFiles files_{watch_};
    Handle database_; ///< outlives the statements of all below
    std::unique_ptr<LiveCatalogue> catalogue_;
    std::optional<StatementCache> statements_;
    std::optional<ChangeNotice> notice_;
    std::optional<OwnTransaction> own_;
    std::optional<Shells> shells_;
    std::optional<TableSizes> sizes_;
    bool readOnly_ = false;
    bool keepsLinks_ = false;
    Statement savepoint_;
    Statement release_;
    Statement claim_; ///< takes the write lock of a working database and writes nothing
    std::set<OpenResult*> results_;
    PreparedStatement* noting_ = nullptr; ///< what is being compiled
};

} // namespace jet
