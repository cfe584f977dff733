#include "map/classes/GridColumns.h"

#include "controls/Theme.h"

#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>

namespace tessaro {

void FitColumns(QTableWidget& grid, int widest) {
    QHeaderView& head = *grid.horizontalHeader();
    const QAbstractItemView& cells = grid;
    for (int column = 0; column < grid.columnCount(); ++column) {
        head.setSectionResizeMode(column, column == widest ? QHeaderView::Stretch : QHeaderView::Fixed);
        const int text = head.fontMetrics().horizontalAdvance(grid.horizontalHeaderItem(column)->text());
        head.resizeSection(column, std::max(cells.sizeHintForColumn(column), text + 3 * theme::kGrid));
    }
}

} // namespace tessaro
