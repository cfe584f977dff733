#pragma once

#include <QColor>

#include <array>

namespace tessaro::office {

/// The 56 colours that an ".xls" file has unless it says otherwise, at 1 to 56 (facts of the BIFF8 format; the slots
/// are numbered as ColorIndex).
[[nodiscard]] const std::array<QColor, 57>& DefaultPalette();

} // namespace tessaro::office
