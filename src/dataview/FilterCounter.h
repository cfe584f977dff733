#pragma once

#include "dataview/ScanCounts.h"
#include "jet/engine/Recordset.h"
#include "view/DataFilters.h"

#include <QString>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace tessaro {

/// Says how many rows would stay under any filters. It reads the values in view once, in slices, so that a window stays
/// alive meanwhile; or asks the column image each time, as soon as that is there.
class FilterCounter final {
  public:
    /// Begins to read the rows in view without filters, those included that were removed one by one.
    void Start();
    /// Reads up to `rows` further ones. False when there are no more.
    bool ReadSome(int rows);
    [[nodiscard]] bool isComplete() const { return complete_; }
    /// Finds out which rows are the most recent, which takes a statement. False when it failed or the user
    /// has stopped it.
    bool ReadMostRecent();
    [[nodiscard]] bool KnowsMostRecent() const { return mostRecent_.has_value(); }

    /// All rows without any filter; so far, while it isn't complete.
    [[nodiscard]] qint64 TotalRows() const { return all_.rows; }
    /// Least and greatest value; nothing when no value is a number.
    [[nodiscard]] std::optional<std::pair<double, double>> Extent() const;
    /// Cells of the selection that have no value.
    [[nodiscard]] qint64 MissingCells() const;
    /// Rows that stay; nothing while that isn't known (not complete, or most recent wanted and not read).
    [[nodiscard]] std::optional<qint64> RowsLeft(const DataFilters& filters) const;

  private:
    struct Values {
        qint64 rows = 0;
        qint64 blank = 0;            ///< rows of Data that hold no value, only perhaps a footnote
        std::vector<double> numbers; ///< of the rows whose value is one
        [[nodiscard]] qint64 Within(const DataFilters& filters) const;
    };
    /// True when the image is there, which counts from now on.
    bool AskScans();
    void Take(Values& values, const jet::Recordset& row) const;
    [[nodiscard]] qint64 RowsWithoutValueLeft(const DataFilters& filters) const;
    [[nodiscard]] qint64 ValuesWithin(const DataFilters& filters) const;
    void Finish();

    std::optional<ScanCounts> scans_; ///< in place of the values themselves
    qint64 nextAsking_ = 100'000;     ///< rows read before it is looked again whether the image is there
    jet::Recordset rows_;
    Values all_;
    std::optional<Values> mostRecent_;
    std::vector<std::array<qint32, 4>> cells_;
    qint64 missingCells_ = 0; ///< without scans_
    bool complete_ = false;
};

} // namespace tessaro
