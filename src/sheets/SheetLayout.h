#pragma once

#include "office/Worksheet.h"
#include "sheets/SheetFont.h"

/// Page layout and row heights of sheets.
namespace tessaro {

/// Landscape, so many pages wide, pages numbered through the workbook; `titleRows` rows (and, on several pages side by
/// side, the columns before `firstColumn`) are repeated on each page and stay in view. A sheet without them lies in the
/// middle of its page. For an empty sheet: on a full one each setting breaks all its pages anew.
void SetUpSheet(office::Worksheet& sheet, int titleRows, int firstColumn, int pagesWide = 1);
/// Rows that part the titles from a table: one narrow line, whose number can still be read beside it on the screen, and
/// the others out of sight.
void SetGap(office::Worksheet& sheet, int first, int last);
/// Lets texts begin on the side where the language begins its lines.
void SetLeading(office::CellStyle& look);
/// Height in points of a row in a font whose letters stand higher than a sheet takes them for, as Arabic ones do; 0 for
/// other fonts, and where fonts can't be measured.
[[nodiscard]] double TallRowHeight(const SheetFont& font);
/// Gives rows in such a font their height, and puts all that stands in them in the middle, beside the smaller latin
/// letters and digits. Does nothing for other fonts.
void SetTallRows(office::Worksheet& sheet, int first, int last, int columns, const SheetFont& font);
/// The same for rows that have numbers in `body` and texts in TextFont(body): the larger size counts.
void SetTallDataRows(office::Worksheet& sheet, int first, int last, int columns, const SheetFont& body);
/// Sends the looks that wait before the values come: on cells that are still empty no height of a row has to be found
/// anew for each of them.
void SendLooks(const office::Worksheet& sheet);

} // namespace tessaro
