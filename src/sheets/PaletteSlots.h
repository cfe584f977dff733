#pragma once

namespace tessaro {

/// Slots of a workbook's palette that our sheets use. The first ones keep the colours of the file format; the tints are
/// set where a workbook wants others.
constexpr int BlackSlot = 1;
constexpr int WhiteSlot = 2;
constexpr int RedSlot = 3;
constexpr int DarkRedSlot = 9;
constexpr int LineSlot = 15; ///< light grey: lines of tables
constexpr int GraySlot = 16;
constexpr int HeaderSlot = 34;     ///< tint of headings, or of the heads of rows
constexpr int GlobalSlot = 35;     ///< items that all databases share
constexpr int FirstRangeSlot = 35; ///< first of the colours of value ranges, in workbooks that mark no shared items

} // namespace tessaro
