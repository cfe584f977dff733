#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Tables of files from elsewhere, read row by row.
namespace tessaro {

/// What is wrong with a row of a file.
enum class RowFault {
    None,
    BadText,       ///< bytes that mean nothing in the file's encoding
    OpenQuote,     ///< a quotation mark that nothing closes; nothing is read after it
    TooManyFields, ///< more than kMostFields; the others are left out
    CutShort       ///< the file ends within the row
};

constexpr std::size_t kMostFields = 16384; ///< of a row
constexpr std::size_t kLongestField = std::size_t{1} << 20U;

/// One row of a table, texts in UTF-8. A row that is read again keeps its memory: only the first `count` fields count.
struct TableRow {
    std::int64_t number = 0; ///< line of the file where it begins, or row of the sheet, from 1
    std::vector<std::string> fields;
    std::size_t count = 0;
    RowFault fault = RowFault::None;

    /// The next field, empty.
    std::string& Add() {
        if (count == fields.size()) fields.emplace_back();
        fields[count].clear();
        return fields[count++];
    }
    void Clear() {
        count = 0;
        fault = RowFault::None;
    }
};

/// What a file itself says that a column is.
enum class ColumnKind { Unknown, Time, Area, AreaCode, Indicator, Dimension };

class TableReader {
  public:
    virtual ~TableReader() = default;
    /// Reads the next row over `row`; false at the end. Blank rows are passed over. Throws ReadError.
    virtual bool Next(TableRow& row) = 0;
    /// How far the reading is.
    [[nodiscard]] virtual int Percent() const = 0;
    /// Of each column, where the file says it; known when the first row was read.
    [[nodiscard]] virtual std::vector<ColumnKind> Kinds() const { return {}; }
};

} // namespace tessaro
