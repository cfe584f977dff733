#pragma once

class QTableWidget;

namespace tessaro {

/// Gives each column of a grid room for its head and its cells, and one of them the rest; where there is too little
/// room for all, the grid is scrolled.
void FitColumns(QTableWidget& grid, int widest);

} // namespace tessaro
