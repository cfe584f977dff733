#pragma once

#include "jet/columns/ColumnImage.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3_stmt;

/// Makes a column image from the rows of a table.
namespace jet {

/// The whole numbers of one column, in the narrowest form that holds those seen so far.
class NumberColumn {
  public:
    void Add(std::optional<std::int64_t> number);
    /// Puts the codes in the order of their numbers.
    void Finish();
    /// False when the column holds what no form can: Null among millions of different numbers.
    [[nodiscard]] bool fits() const { return fits_; }

    [[nodiscard]] ColumnForm form() const { return form_; }
    [[nodiscard]] std::int64_t first() const { return first_; }
    [[nodiscard]] std::uint8_t width() const { return width_; }
    [[nodiscard]] bool hasNull() const { return nullCode_ >= 0; }
    [[nodiscard]] const std::vector<std::int64_t>& numbers() const { return numbers_; }
    [[nodiscard]] const std::vector<std::uint32_t>& counts() const { return counts_; }
    [[nodiscard]] const std::vector<unsigned char>& codes() const { return codes_; }
    [[nodiscard]] const std::vector<std::int64_t>& plain() const { return plain_; }

  private:
    void BeginCodes();
    void AddCoded(std::optional<std::int64_t> number);
    [[nodiscard]] std::uint32_t CodeOf(std::int64_t number);
    [[nodiscard]] std::uint32_t NewCode(std::int64_t number);
    void Append(std::uint32_t code);
    void Widen();
    void BecomePlain();

    ColumnForm form_ = ColumnForm::Consecutive;
    bool fits_ = true;
    std::int64_t first_ = 0;
    std::size_t rows_ = 0;
    std::uint8_t width_ = 1;
    std::int64_t nullCode_ = -1;
    std::vector<std::int64_t> numbers_;
    std::vector<std::uint32_t> counts_;
    std::vector<unsigned char> codes_;
    std::vector<std::int64_t> plain_;
    std::vector<std::int32_t> near_; ///< the codes of small numbers, by number; -1 for none
    std::unordered_map<std::int64_t, std::uint32_t> far_;
};

/// Texts that mostly are numbers.
class ValueColumn {
  public:
    /// Nothing stands for Null.
    void Add(std::optional<std::string_view> text);

    [[nodiscard]] const std::vector<double>& values() const { return values_; }
    [[nodiscard]] const std::vector<std::uint8_t>& kinds() const { return kinds_; }
    [[nodiscard]] const std::vector<std::uint32_t>& textRows() const { return textRows_; }
    [[nodiscard]] const std::vector<std::uint64_t>& textEnds() const { return textEnds_; }
    [[nodiscard]] const std::vector<char>& textBytes() const { return textBytes_; }

  private:
    std::vector<double> values_;
    std::vector<std::uint8_t> kinds_;
    std::vector<std::uint32_t> textRows_;
    std::vector<std::uint64_t> textEnds_;
    std::vector<char> textBytes_;
};

/// A column that an image is to have.
struct ImageField {
    std::string name;
    bool isValue = false; ///< texts that mostly are numbers; else whole numbers
};

class ImageWriter {
  public:
    /// Takes 32 fields at most.
    explicit ImageWriter(const std::vector<ImageField>& fields);

    /// Takes the row that a statement stands on, whose columns are the fields, from column `from` on. Throws Error for
    /// a value of a type that the field can't have, and for more rows than an image holds.
    void AddRow(sqlite3_stmt* row, int from);
    [[nodiscard]] std::size_t rows() const { return rows_; }
    /// Writes the file, which must not be there. Throws Error when it can't be written, and Interrupted soon after
    /// `stop` becomes true; nothing is left behind then.
    void Write(const std::string& path, const ImageSubject& subject, const FileMark& mark,
               const std::atomic<bool>& stop);

  private:
    struct Column {
        ImageField field;
        NumberColumn numbers;
        ValueColumn values;
    };
    std::vector<Column> columns_;
    std::size_t rows_ = 0;
};

} // namespace jet
