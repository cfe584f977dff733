#pragma once

#include "formats/TableReader.h"

#include <string>
#include <vector>

namespace tessaro {

/// The first rows of a file, without what they mean.
struct FileSample {
    static constexpr std::size_t kRows = 300;
    static constexpr std::size_t kCells = 200'000; ///< fewer rows of very wide tables

    /// Where a row stands in the file, and what is wrong with it.
    struct Place {
        std::int64_t number = 0;
        RowFault fault = RowFault::None;
    };
    std::vector<std::vector<std::string>> rows;
    std::vector<Place> places;     ///< one for each row
    std::vector<ColumnKind> kinds; ///< what the file says of its columns
};

/// Reads the first rows of a file.
[[nodiscard]] FileSample SampleOf(TableReader& reader);

/// Rows that are in memory, read as a table. The sample is borrowed.
class SampleReader final : public TableReader {
  public:
    explicit SampleReader(const FileSample& sample) : sample_(sample) {}
    bool Next(TableRow& row) override;
    [[nodiscard]] int Percent() const override { return 100; }

  private:
    const FileSample& sample_;
    std::size_t next_ = 0;
};

} // namespace tessaro
