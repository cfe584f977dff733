#pragma once

#include "view/DataFilters.h"

#include <QtGlobal>

#include <optional>
#include <utility>

namespace tessaro {

/// Counts the rows in view under a value range by one statement each, as long as these run on the column image of the
/// values, which takes a few hundredths of a second for millions of them.
class ScanCounts final {
  public:
    /// Nothing when the statements would read the values row by row, and when one of these is an empty text, which
    /// counts as no value.
    [[nodiscard]] static std::optional<ScanCounts> Begin();

    [[nodiscard]] qint64 Rows() const { return rows_; }
    /// Rows without a value.
    [[nodiscard]] qint64 Blank() const { return blank_; }
    /// Least and greatest value; nothing without any.
    [[nodiscard]] std::optional<std::pair<double, double>> Extent() const { return extent_; }
    /// Rows whose value is in the range. The last answer is kept.
    [[nodiscard]] qint64 Within(const DataFilters& range) const;
    /// Different cells that the rows stand in. Found out once.
    [[nodiscard]] qint64 Cells() const;

  private:
    qint64 rows_ = 0;
    qint64 blank_ = 0;
    std::optional<std::pair<double, double>> extent_;
    struct Counted {
        double from = 0, to = 0;
        qint64 rows = 0;
    };
    mutable std::optional<Counted> last_;
    mutable std::optional<qint64> cells_;
};

} // namespace tessaro
