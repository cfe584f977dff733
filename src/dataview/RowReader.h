#pragma once

#include "dataview/DataPaging.h"
#include "dataview/GridModel.h"

#include <vector>

namespace tessaro {

/// Reads all rows of the view in the grid's order for an export, those included that haven't been loaded into the grid
/// yet. It reads them in larger pieces than the grid does and doesn't change how far the grid has loaded.
class RowReader final {
  public:
    /// Both must outlive it, and the number of rows has to be known (DataPaging::CountRowsUnless).
    RowReader(const GridModel& grid, DataPaging& paging);

    [[nodiscard]] int Count() const { return count_; }
    /// The row (from 0), until the next call; nullptr when it can't be read any more.
    [[nodiscard]] const GridRow* At(int row);

  private:
    static constexpr int kPiece = 500;

    const GridModel& grid_;
    DataPaging& paging_;
    int count_;
    qint64 first_ = 0; ///< row of the query that piece_ begins with
    std::vector<GridRow> piece_;
};

} // namespace tessaro
