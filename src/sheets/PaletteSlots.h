#pragma once

namespace tessaro {

/// Slots of a workbook's palette that our sheets use. The first ones keep the colours of the file format; the tints are
/// set where a workbook wants others.
constexpr int kBlackSlot = 1;
constexpr int kWhiteSlot = 2;
constexpr int kRedSlot = 3;
constexpr int kDarkRedSlot = 9;
constexpr int kLineSlot = 15; ///< light grey: lines of tables
constexpr int kGraySlot = 16;
constexpr int kHeaderSlot = 34;     ///< tint of headings, or of the heads of rows
constexpr int kGlobalSlot = 35;     ///< items that all databases share
constexpr int kFirstRangeSlot = 35; ///< first of the colours of value ranges, in workbooks that mark no shared items

} // namespace tessaro
