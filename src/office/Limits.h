#pragma once

namespace tessaro::office {

/// The most that a workbook's file format holds.
constexpr int kMaxRows = 65536;
constexpr int kMaxColumns = 256;
constexpr int kMaxCellText = 32767; ///< characters
constexpr int kMaxSheetName = 31;   ///< characters

} // namespace tessaro::office
