#include "Rows.h"

#include <QItemSelection>

#include <algorithm>
#include <numeric>
#include <utility>

namespace tessaro {

std::vector<int> RowsByKey(const KeyedListModel& items) {
    std::vector<int> rows(static_cast<std::size_t>(items.rowCount()));
    std::iota(rows.begin(), rows.end(), 0);
    std::ranges::stable_sort(rows, {}, [&](int row) {
        const QString id = IdOfKey(items.ItemAt(row).key);
        return std::pair(id.toLongLong(), id); // numbers by what they are, others by their letters
    });
    return rows;
}

void SelectRows(KeyedList& list, const std::vector<int>& rows) {
    QItemSelection selection;
    for (const int row : rows)
        selection.select(list.model()->index(row, 0), list.model()->index(row, 0));
    list.setFocus();
    list.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace tessaro
