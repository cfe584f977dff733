#pragma once

#include "office/Worksheet.h"

namespace tessaro {

/// Slots of the palette that our sheets use.
constexpr int HeaderSlot = 34; ///< tint of headings
constexpr int GlobalSlot = 35; ///< items that all databases share
constexpr int LineSlot = 15;   ///< lines of tables

/// The language's font as sheets have it: ProductFont with its size and style; in English DEFAULT FONT, elsewhere
/// DEFAULT FONT SIZE where the settings say so.
[[nodiscard]] office::CellStyle SheetFont();
/// Dresses a table that begins at A1: font, bold tinted heading, lines, widths, printed over the pages with its heading
/// and page numbers, the heading kept in view.
void DressTable(office::Worksheet& sheet, int rows, int columns);

} // namespace tessaro
