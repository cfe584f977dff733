#pragma once

#include "jet/emit/Translator.h"
#include "jet/values/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

struct ResultRows;

/// The rows of a query with a cursor on one of them. A default-made recordset is closed: EOF and BOF, no fields.
/// A Static one holds its rows in compact columns and outlives its connection (it is detached from the start).
class Recordset {
  public:
    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    [[nodiscard]] bool isOpen() const;
    void Close();

    [[nodiscard]] bool atEnd() const;   ///< EOF: behind the last row, or no rows
    [[nodiscard]] bool atStart() const; ///< BOF: before the first row, or no rows
    void MoveFirst();                   ///< ForwardOnly: runs the query again
    void MoveNext();
    void MovePrevious(); ///< Static only, else Error
    void MoveLast();     ///< Static only
    /// Moves by `count` rows from the current one (start 0) or from the first one (start 1).
    void Move(std::int64_t count, int start = 0);
    /// Number of rows; Static: known, ForwardOnly: -1.
    [[nodiscard]] std::int64_t RecordCount() const;

    [[nodiscard]] std::size_t FieldCount() const;
    [[nodiscard]] const OutputColumn& Field(std::size_t position) const;
    /// Position of the field of this name, ignoring case; -1 when there is none.
    [[nodiscard]] int FieldIndex(std::string_view name) const;
    /// A field of the current row. Beyond the last field, or at EOF: Error (NoSuchColumn).
    [[nodiscard]] Value Get(std::size_t position) const;
    [[nodiscard]] Value Get(std::string_view name) const;
    /// A text field of a row that is read from the engine itself, without a copy, until the cursor moves; nothing for
    /// other values, and where rows are kept.
    [[nodiscard]] std::optional<std::string_view> TextView(std::size_t position) const;
    [[nodiscard]] Value operator[](std::size_t position) const { return Get(position); }
    [[nodiscard]] Value operator[](std::string_view name) const { return Get(name); }

    /// Moves forward from the current row to the next one that meets "Column = 'text'" (=, <>, <, >, <=, >=, Like;
    /// number or quoted text, ignoring case); at EOF when none does. Throws SyntaxError on anything else.
    void Find(std::string_view criterion);
    /// Moves over up to `count` rows as long as their field is a whole number from 0 to `most`, and appends those
    /// numbers. Gives how many. For results of millions of rows, of which a caller keeps the keys.
    std::int64_t TakeNumbers(std::size_t position, std::int64_t most, std::int64_t count,
                             std::vector<std::int32_t>& into);
    /// Up to `count` rows (-1: all) from the current row on, row by row; the cursor ends behind them.
    [[nodiscard]] std::vector<std::vector<Value>> GetRows(std::int64_t count = -1);
    /// The same as one text; Null gives `nullText`. The row delimiter also stands behind the last row.
    [[nodiscard]] std::string GetString(std::int64_t count = -1, std::string_view columnDelimiter = "\t",
                                        std::string_view rowDelimiter = "\r", std::string_view nullText = "");

    explicit Recordset(std::unique_ptr<ResultRows> rows);

  private:
    std::unique_ptr<ResultRows> rows_;
};

} // namespace jet
