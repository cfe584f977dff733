#pragma once

#include <QString>

/// The texts that tell how many rows the data view shows.
namespace tessaro {

class ViewRows;

/// How far the load is, and of how many rows once they are counted: "Loading: 150 of 2,000".
[[nodiscard]] QString LoadText(const ViewRows& rows);
/// How many rows there are, or how many have been loaded: "2,000 rows"; empty for an empty grid.
[[nodiscard]] QString CountText(const ViewRows& rows);
/// What stands above the grid while rows `first` to `last` (from 1) can be seen, with the load that is running.
[[nodiscard]] QString SeenText(const ViewRows& rows, int first, int last);
/// The same above a panel or the statistics, which show no rows.
[[nodiscard]] QString UnseenText(const ViewRows& rows);
/// Rows passed while they are being counted.
[[nodiscard]] QString CountingText(qint64 rows);

} // namespace tessaro
