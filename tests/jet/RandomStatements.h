#pragma once

#include "jet/engine/Connection.h"

#include <chrono>
#include <cstdint>
#include <random>
#include <string>

namespace jet {

/// Statements of the dialect at random, on the tables that MakeTables makes: queries, changes of rows and of tables,
/// with odd values, and some of them damaged. The same seed gives the same statements.
class RandomStatements {
  public:
    explicit RandomStatements(std::uint64_t seed) : random_(seed) {}

    static void MakeTables(Connection& connection);
    [[nodiscard]] std::string Next();

  private:
    [[nodiscard]] std::size_t Below(std::size_t count) { return random_() % count; }
    template <class List> auto OneOf(const List& list) { return *(std::begin(list) + Below(std::size(list))); }
    std::string Literal();
    std::string Field();
    std::string Table();
    std::string FieldOf(const std::string& table);
    std::string Expression(int depth);
    std::string Called(int depth);
    std::string Condition(int depth);
    std::string Query(int depth);
    std::string Change();
    std::string SchemaChange();
    std::string Damaged(std::string sql);

    std::mt19937_64 random_;
    std::string table_ = "T"; ///< whose fields the next names are most likely of
};

/// What a run of random statements came to.
struct RandomRun {
    std::int64_t statements = 0;
    std::int64_t failed = 0;
    std::string fault; ///< the statement after whose failure the file was another, and its number; empty when none was
};

/// Runs statements on a new database at `path` until the time is over or a fault is found, and looks after each that
/// fails whether the file is as it was.
[[nodiscard]] RandomRun RunRandomStatements(const std::string& path, std::uint64_t seed,
                                            std::chrono::milliseconds duration);

} // namespace jet
