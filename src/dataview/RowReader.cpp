#include "dataview/RowReader.h"

#include <algorithm>

namespace tessaro {

RowReader::RowReader(const GridModel& grid, DataPaging& paging)
    : grid_(grid), paging_(paging), count_(static_cast<int>(paging.TotalRows()) - grid.RemovedRows()) {}

const GridRow* RowReader::At(int row) {
    // Rows sorted in the grid are in another order than in the query. They are few then, and the grid has them all.
    if (grid_.IsSortedInGrid()) return grid_.RowAt(row);
    const qint64 wanted = grid_.QueryRowOf(row);
    if (wanted < first_ || wanted >= first_ + static_cast<qint64>(piece_.size())) {
        first_ = wanted;
        piece_ = paging_.ReadRows(first_, static_cast<int>(std::min<qint64>(kPiece, paging_.TotalRows() - first_)));
        if (piece_.empty()) return nullptr;
    }
    // A row that can't be read any more comes back blank, without a RowNId.
    const GridRow& found = piece_[static_cast<std::size_t>(wanted - first_)];
    return found.hasRowNId == paging_.RowNIdOf(wanted).has_value() ? &found : nullptr;
}

} // namespace tessaro
