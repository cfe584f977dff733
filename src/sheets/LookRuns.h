#pragma once

#include "office/Worksheet.h"

#include <map>
#include <vector>

namespace tessaro {

/// Looks of single cells. Neighbours below each other are mostly of one look, so they are kept and written as runs down
/// a column: a look for each cell would take longer than all values.
class LookRuns final {
  public:
    /// Cells of a column must come from top to bottom.
    void Add(int row, int column, const office::CellStyle& look);
    /// Goes from top to bottom, some thousand runs at a time: looks that are set far above others move all those.
    void WriteTo(const office::Worksheet& sheet) const;

  private:
    struct Run {
        int column;
        int first;
        int last;
        std::size_t look = 0;
    };
    struct Look {
        office::CellStyle style;
        std::vector<Run> runs;
        std::map<int, std::size_t> latest; ///< by column
    };
    std::vector<Look> looks_;
};

} // namespace tessaro
