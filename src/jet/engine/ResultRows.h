#pragma once

#include "jet/engine/ColumnStore.h"
#include "jet/engine/Engine.h"
#include "jet/engine/Options.h"

#include <memory>
#include <optional>
#include <string>

namespace jet {

/// The rows of a result: those read already are in a store, the others still come from the SQLite statement.
struct ResultRows final : OpenResult {
    ResultRows(const std::shared_ptr<Engine>& engine, std::string_view sql, CursorType cursor);
    ~ResultRows() override;

    void TakeIn() override;
    [[nodiscard]] const std::set<std::string>& tablesRead() const override { return query.prepared.reads; }

    /// True while the statement has rows that were not taken.
    [[nodiscard]] bool fetching() const { return engine != nullptr; }
    void Begin();
    void Start();
    void Fetch();
    void Stop();
    void TakeAll();
    /// Takes rows in until there is one with this number, or no more.
    void TakeUpTo(std::int64_t row);
    [[nodiscard]] bool atEnd();
    [[nodiscard]] bool empty();
    [[nodiscard]] Value Get(std::size_t column);
    void MoveTo(std::int64_t row);

    std::string sql;
    Way way = Way::Any;
    CursorType cursor;
    std::shared_ptr<Engine> engine; ///< only while rows are fetched
    std::weak_ptr<Engine> origin;   ///< to run the query again
    ReadyQuery query;
    ColumnStore store;
    bool begun = false;  ///< the first row, or all of them, could be read
    bool direct = false; ///< rows are read from the statement itself, none is stored
    bool anyRow = false;
    std::optional<Error>
        failure;               ///< happened while the rows were read ahead; thrown when the reader has come to that row
    std::int64_t position = 0; ///< in the store; -1 before the first row
};

} // namespace jet
