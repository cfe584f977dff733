#pragma once

#include "jet/emit/Translator.h"
#include "jet/engine/Connection.h"
#include "jet/engine/LiveCatalogue.h"
#include "jet/engine/Sqlite.h"
#include "jet/engine/TableSizes.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace jet {

/// An SQLite statement with the tables that it reads and writes ("l1.Data"), in lower case.
struct PreparedStatement {
    Statement statement;
    std::set<std::string> reads;
    std::set<std::string> writes;
};

/// A result that is still being fetched. The engine takes its rows in before a statement would change them.
class OpenResult {
  public:
    virtual ~OpenResult() = default;
    virtual void TakeIn() = 0;
    [[nodiscard]] virtual const std::set<std::string>& tablesRead() const = 0;
};

/// What a translation asked the catalogue: for a table, and the stamp of what it was given, or whether a name is a
/// link, and 1 or 0.
struct AskedTable {
    std::string name;
    std::size_t stamp = 0;
    bool whetherLink = false;
};

/// A query that is ready to be stepped.
struct ReadyQuery {
    std::vector<OutputColumn> columns;
    PreparedStatement prepared;
};

/// What lies behind a Connection, and lives as long as a result still fetches from it.
class Engine {
  public:
    Engine(const std::string& path, const std::string& password, Use use);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// One lock of the file for everything that opening a result reads, the look at what others changed included:
    /// taking the lock costs more than a small query.
    class ReadScope {
      public:
        ReadScope(Engine& engine, std::string_view sql);
        ~ReadScope();
        ReadScope(const ReadScope&) = delete;
        ReadScope& operator=(const ReadScope&) = delete;

      private:
        Engine& engine_;
    };

    std::int64_t Execute(std::string_view sql);
    /// The dBase file that a SELECT … INTO [dBase IV;database=…] names; empty for any other statement.
    [[nodiscard]] std::string ForeignTarget(std::string_view sql);
    [[nodiscard]] Explanation Explain(std::string_view sql);
    void LeaveOutStep(std::string_view name);
    [[nodiscard]] ReadyQuery Open(std::string_view sql);
    /// Keeps the statement of a query that has been read to its end for the next time.
    void GiveBack(std::string_view sql, PreparedStatement prepared);

    void PutLink(const LinkInfo& link);
    void Begin();
    void Commit();
    void Rollback();

    void Register(OpenResult* result) { results_.insert(result); }
    void Unregister(OpenResult* result) { results_.erase(result); }

    [[nodiscard]] sqlite3* database() const { return database_.get(); }
    [[nodiscard]] LiveCatalogue& catalogue() { return *catalogue_; }
    [[nodiscard]] Connection::CacheCounts counts() const { return counts_; }
    [[nodiscard]] bool readOnly() const { return readOnly_; }

  private:
    /// A statement of the dialect that has been translated before.
    struct Seen {
        std::string text;
        Translation translation;
        std::vector<AskedTable> asked; ///< what the translation rests on
        unsigned version = 0;          ///< of the catalogue when that was last found to stand
        PreparedStatement prepared;    ///< of a translation with one statement; empty while it is in use
    };

    Seen& Translated(std::string_view sql);
    void TranslateAnew(Seen& seen);
    bool StillGood(Seen& seen);
    void NoticeOthers();
    [[nodiscard]] bool OthersWrote();
    [[nodiscard]] PreparedStatement PrepareNoting(std::string_view sql, const std::vector<ListParameter>& lists);
    [[nodiscard]] PreparedStatement TakePrepared(Seen& seen);
    [[nodiscard]] PreparedStatement PrepareQuery(std::string_view sql, const std::vector<ListParameter>& lists);
    [[nodiscard]] ReadyQuery OpenPivot(const Translation& translation);
    std::int64_t RunStatements(Seen& seen);
    /// Takes back all that the work did when it fails.
    std::int64_t AsOne(const std::function<std::int64_t()>& work);
    std::int64_t ExecuteHere(std::string_view sql);
    std::int64_t ExecuteClaimed(std::string_view sql);
    void Claim();
    void EndClaim();
    std::int64_t RunOne(const PreparedStatement& prepared);
    void RunKept(Statement& kept, std::string_view sql, const std::vector<std::string>& parameters = {});
    void NoteSchemaChange(const Translation& translation, std::int64_t rows);
    void TakeInReaders(const std::set<std::string>& written);
    void TakeInAll();
    std::int64_t DropLink(const std::string& name);

    // --- Tables that come and go (Shells.cpp) ---
    [[nodiscard]] bool LeavesShell(const Translation& translation) const;
    [[nodiscard]] bool FillsShell(const Translation& translation) const;
    std::int64_t LeaveShell(Seen& seen);
    std::int64_t FillShell(Seen& seen);
    void DropShell(const std::string& name);
    void UnmarkShell(const std::string& name);
    void TakeFiguresOf(const std::string& table, std::int64_t rows);
    template <class Work> auto Retrying(const Work& work);

    Handle database_;
    std::unique_ptr<LiveCatalogue> catalogue_;
    std::optional<TableSizes> sizes_;
    bool readOnly_ = false;
    bool keepsLinks_ = false;
    std::list<Seen> seen_; ///< the one used last in front
    std::unordered_map<std::string_view, std::list<Seen>::iterator> byText_;
    Seen passing_; ///< a statement too long to be kept
    Statement begin_;
    Statement commit_;
    Statement savepoint_;
    Statement release_;
    Statement markShell_;
    Statement unmarkShell_;
    Statement claim_;     ///< takes the write lock of a working database and writes nothing
    bool scoped_ = false; ///< within a transaction begun here, by a ReadScope or by Claim
    Statement dataVersion_;
    std::int64_t lastVersion_ = -1;
    std::set<OpenResult*> results_;
    PreparedStatement* noting_ = nullptr;
    Connection::CacheCounts counts_;
    LeftOutSteps leftOut_; ///< of the rewrites
};

struct Connection::Impl {
    std::shared_ptr<Engine> engine; ///< none when closed
    std::string path;
    bool readOnly = false;
};

} // namespace jet
