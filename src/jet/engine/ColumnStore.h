#pragma once

#include "jet/values/Catalogue.h"
#include "jet/values/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct sqlite3_stmt;

namespace jet {

/// The values of one column of a result, packed in blocks: whole numbers in as few bytes as their range needs, texts
/// in one run of bytes, Nulls as bits. Five million identifiers of a few thousand kinds take two bytes each.
class Column {
  public:
    explicit Column(ColumnType type) : type_(type) {}

    /// Takes column `position` of the row that the statement stands on.
    void Append(sqlite3_stmt* row, int position);
    [[nodiscard]] Value Get(std::size_t row) const;
    /// Packs the last block; nothing can be appended after this.
    void Finish();

  private:
    enum class Kind : std::uint8_t { Null, Whole, Real, Text };

    struct Block {
        bool mixed = false;
        Kind kind = Kind::Null;  ///< of all values, unless mixed
        std::uint8_t width = 0;  ///< bytes a number, or an end of a text
        std::int64_t base = 0;   ///< the least of the numbers
        std::vector<Kind> kinds; ///< one a row, when mixed or before packing
        std::vector<bool> nulls; ///< empty when there are none
        std::string numbers;     ///< `width` bytes a row
        std::string bytes;       ///< of the texts
    };

    void Pack();
    [[nodiscard]] static Value At(const Block& block, std::size_t row);
    void PackNumbers(Block& block) const;

    ColumnType type_;
    std::vector<Block> packed_;
    std::vector<Kind> kinds_;           ///< of the open block
    std::vector<std::int64_t> numbers_; ///< its numbers, doubles by their bits, texts by their end in bytes_
    std::string bytes_;
};

/// The rows of a result on the client. Throws TooLarge for rows whose texts take more than 512 MB in all.
class ColumnStore {
  public:
    ColumnStore() = default;
    explicit ColumnStore(const std::vector<ColumnType>& types);
    void AppendRow(sqlite3_stmt* row);
    void Finish();
    [[nodiscard]] std::size_t rows() const { return rows_; }
    [[nodiscard]] Value Get(std::size_t row, std::size_t column) const { return columns_[column].Get(row); }

  private:
    std::vector<Column> columns_;
    std::size_t rows_ = 0;
    std::int64_t textBytes_ = 0;
};

/// Column `position` of the row that a statement stands on; Yes/No as -1 or 0 and Double as double, whatever the file
/// holds.
[[nodiscard]] Value ValueAt(sqlite3_stmt* row, int position, ColumnType type);

} // namespace jet
