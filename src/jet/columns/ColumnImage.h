#pragma once

#include "jet/columns/FileMark.h"
#include "jet/columns/MappedFile.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The columns of one large table in a file of their own, so that statements over millions of rows read a few bytes a
/// row. The file is mapped into memory; the rows stand in the order of the table.
namespace jet {

enum class ColumnForm : std::uint8_t {
    Consecutive, ///< first, first + 1 …: takes no room
    Coded,       ///< places in a list of all numbers that occur, of 1, 2 or 4 bytes
    Plain,       ///< 8 bytes a number
    Values,      ///< texts that mostly are numbers: a double and a kind each
};

/// What a text of a column of values is; from FixedPoint on it is a number written with so many decimals.
enum class ValueKind : std::uint8_t { Null, Unreadable, OtherForm, FixedPoint = 16 };

/// Rows are gone through in blocks of so many.
inline constexpr std::size_t kBlockRows = 4096;

/// The codes of the rows of a block lie between these.
struct CodeBounds {
    std::uint32_t least = 0;
    std::uint32_t greatest = 0;
};

struct ImageColumn {
    std::string name;
    ColumnForm form = ColumnForm::Coded;
    std::uint8_t width = 0;                  ///< bytes a code
    bool hasNull = false;                    ///< code 0 stands for Null
    std::int64_t first = 0;                  ///< of consecutive numbers
    std::span<const std::int64_t> numbers;   ///< what each code stands for, ascending behind the Null
    std::span<const std::uint32_t> counts;   ///< rows that have each code
    const unsigned char* codes = nullptr;    ///< `width` bytes a row
    std::vector<CodeBounds> blocks;          ///< by block, where there are codes
    std::span<const std::int64_t> plain;     ///< one a row
    std::span<const double> values;          ///< one a row; 0 where the text is no number
    std::span<const std::uint8_t> kinds;     ///< one a row
    std::span<const std::uint32_t> textRows; ///< the rows, ascending, whose texts are kept as they are
    std::span<const std::uint64_t> textEnds; ///< where each of these texts ends among the bytes
    std::span<const char> textBytes;
};

/// Which table of which database an image is of.
struct ImageSubject {
    std::string file;  ///< path of the database
    std::string table; ///< its name there

    /// A hash that the image holds, so that none is taken for another's.
    [[nodiscard]] std::uint64_t stamp() const;
    bool operator==(const ImageSubject&) const = default;
};

class ColumnImage final {
  public:
    /// Maps a file and checks all of it: its sum, its bounds, and that each code has a number. Throws Error with the
    /// reason when it is no whole image of the subject.
    [[nodiscard]] static std::shared_ptr<const ColumnImage> Open(const std::string& path, const ImageSubject& subject);
    ColumnImage(const ColumnImage&) = delete;
    ColumnImage& operator=(const ColumnImage&) = delete;

    /// The state of the database that the image was made from.
    [[nodiscard]] const FileMark& mark() const { return mark_; }
    [[nodiscard]] std::size_t rows() const { return rows_; }
    [[nodiscard]] const std::vector<ImageColumn>& columns() const { return columns_; }
    /// Position of a column, ignoring case; -1 when the image doesn't have it.
    [[nodiscard]] int find(std::string_view name) const;
    /// False when somebody has cut or changed the file since it was opened. What was read from it since the last time
    /// counts for nothing then; to read it is safe still where it was cut.
    [[nodiscard]] bool isIntact() const { return file_.isIntact(); }
    /// True when it was read where it had been cut. Costs nothing, and doesn't see other changes.
    [[nodiscard]] bool wasCut() const { return file_.wasCut(); }

    /// The text of a value, which is not Null.
    [[nodiscard]] std::string_view TextOf(const ImageColumn& column, std::size_t row, std::string& room) const;

  private:
    explicit ColumnImage(const std::string& path) : file_(path) {}
    void CheckHead(const ImageSubject& subject);
    void ReadColumns();
    void KeepNumbers(ImageColumn& column);

    MappedFile file_;
    FileMark mark_;
    std::size_t rows_ = 0;
    std::vector<ImageColumn> columns_;
    // in our own memory: a number that changed would be the wrong number of its rows
    std::list<std::vector<std::int64_t>> numbers_;
    std::list<std::vector<std::uint32_t>> counts_;
};

} // namespace jet
