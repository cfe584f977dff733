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
/// The font for latin letters and digits beside texts in a font that has none; empty where it has them.
[[nodiscard]] QString LatinFontBeside(const QString& family);
/// Writes a table at A1, its heading first, and dresses it: font, bold tinted heading, lines, columns as wide as their
/// texts, printed over the pages with its heading and page numbers, the heading kept in view. All rows have the
/// heading's length; an empty table does nothing.
void WriteTable(office::Worksheet& sheet, const office::Block& table);
/// Height in points of a row in a font whose letters stand higher than a sheet takes them for, as Arabic ones do; 0 for
/// other fonts.
[[nodiscard]] double TallRowHeight(const office::CellStyle& font);
/// The rows of a table that decide how wide its columns are: the first ones, and those with the longest texts.
[[nodiscard]] office::Block RowsToFit(const office::Block& table);

} // namespace tessaro
