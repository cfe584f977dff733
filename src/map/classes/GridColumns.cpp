#include "map/classes/GridColumns.h"

#include "controls/Theme.h"

#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>

namespace tessaro {

namespace {

constexpr int kLeastWidth = 72; ///< of the column that gives its room to the others

} // namespace

void FitColumns(QTableWidget& grid, int widest) {
    QHeaderView& head = *grid.horizontalHeader();
    const QAbstractItemView& cells = grid;
    head.setMinimumSectionSize(theme::kGrid * 4); // else the widest letter of the font, which is 90 pixels in Arabic
    int wanted = 0;
    if (grid.columnCount() == 0 || !grid.horizontalHeaderItem(grid.columnCount() - 1)) return; // not yet filled
    for (int column = 0; column < grid.columnCount(); ++column) {
        const int text = head.fontMetrics().horizontalAdvance(grid.horizontalHeaderItem(column)->text());
        const int width = std::max(cells.sizeHintForColumn(column), text + 2 * theme::kGrid);
        head.setSectionResizeMode(column, QHeaderView::Fixed);
        head.resizeSection(column, width);
        wanted += width;
    }
    const int spare = grid.viewport()->width() - wanted;
    if (spare >= 0)
        head.setSectionResizeMode(widest, QHeaderView::Stretch);
    else
        head.resizeSection(widest, std::max(kLeastWidth, head.sectionSize(widest) + spare));
}

} // namespace tessaro
