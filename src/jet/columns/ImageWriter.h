#pragma once

#include "jet/columns/ColumnImage.h"
#include "jet/columns/RowStore.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
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
    /// `folder` takes what is too much for memory.
    explicit NumberColumn(const std::string& folder) : folder_(folder) {}

    void Add(std::optional<std::int64_t> number);
    /// Puts the codes in the order of their numbers. They must not be added to any more.
    void Finish();
    /// False when the column holds what no form can: Null among millions of different numbers.
    [[nodiscard]] bool fits() const { return fits_; }

    [[nodiscard]] ColumnForm form() const { return form_; }
    [[nodiscard]] std::int64_t first() const { return first_; }
    [[nodiscard]] std::uint8_t width() const { return width_; }
    [[nodiscard]] bool hasNull() const { return nullCode_ >= 0; }
    [[nodiscard]] const std::vector<std::int64_t>& numbers() const { return numbers_; }
    [[nodiscard]] const std::vector<std::uint32_t>& counts() const { return counts_; }
    /// Calls `put` with the codes of all rows, `width` bytes each, some rows at a time.
    void EachBlockOfCodes(const std::function<void(std::span<const unsigned char>)>& put) const;
    [[nodiscard]] const RowStore<std::int64_t>& plain() const { return plain_; }

  private:
    void BeginCodes();
    void AddCoded(std::optional<std::int64_t> number);
    [[nodiscard]] std::uint32_t CodeOf(std::int64_t number);
    [[nodiscard]] std::uint32_t NewCode(std::int64_t number);
    void Append(std::uint32_t code);
    void BecomePlain();
    template <class Use> void EachCode(const Use& use) const;

    std::string folder_;
    ColumnForm form_ = ColumnForm::Consecutive;
    bool fits_ = true;
    std::int64_t first_ = 0;
    std::size_t rows_ = 0;
    std::int64_t nullCode_ = -1;
    std::vector<std::int64_t> numbers_;
    std::vector<std::uint32_t> counts_;
    std::vector<std::uint32_t> placeOf_;     ///< by code as it was given out: the one that it has in the end
    RowStore<std::uint8_t> narrow_{folder_}; ///< the codes of the first rows, as long as they had room in a byte
    RowStore<std::uint16_t> middle_{folder_};
    RowStore<std::uint32_t> wide_{folder_};
    std::uint8_t width_ = 1;
    RowStore<std::int64_t> plain_{folder_};
    std::vector<std::int32_t> near_; ///< the codes of small numbers, by number; -1 for none
    std::unordered_map<std::int64_t, std::uint32_t> far_;
};

/// Texts that mostly are numbers.
class ValueColumn {
  public:
    /// `folder` takes what is too much for memory.
    explicit ValueColumn(const std::string& folder)
        : values_(folder), kinds_(folder), textRows_(folder), textEnds_(folder), textBytes_(folder) {}

    /// Nothing stands for Null.
    void Add(std::optional<std::string_view> text);

    [[nodiscard]] const RowStore<double>& values() const { return values_; }
    [[nodiscard]] const RowStore<std::uint8_t>& kinds() const { return kinds_; }
    [[nodiscard]] const RowStore<std::uint32_t>& textRows() const { return textRows_; }
    [[nodiscard]] const RowStore<std::uint64_t>& textEnds() const { return textEnds_; }
    [[nodiscard]] const RowStore<char>& textBytes() const { return textBytes_; }

  private:
    RowStore<double> values_;
    RowStore<std::uint8_t> kinds_;
    RowStore<std::uint32_t> textRows_;
    RowStore<std::uint64_t> textEnds_;
    RowStore<char> textBytes_;
};

/// A column that an image is to have.
struct ImageField {
    std::string name;
    bool isValue = false; ///< texts that mostly are numbers; else whole numbers
};

/// Memory holds the different numbers and a few rows; the rest stands in files without a name until it is written.
class ImageWriter {
  public:
    /// Takes 32 fields at most. `folder` is where the image will be.
    ImageWriter(const std::vector<ImageField>& fields, const std::string& folder);

    /// Takes the row that a statement stands on, whose columns are the fields, from column `from` on. Throws Error for
    /// a value of a type that the field can't have, for more rows than an image holds, and when the folder can't be
    /// written.
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
