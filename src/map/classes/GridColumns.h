#pragma once

class QTableWidget;

namespace tessaro {

/// Gives each column of a grid room for its head and its cells, and one of them the rest.
void FitColumns(QTableWidget& grid, int widest);

} // namespace tessaro
