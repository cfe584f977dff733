#pragma once

#include <QString>

namespace tessaro::office {

/// The letters of a column counted from 1: "A" for 1, "AA" for 27.
[[nodiscard]] QString ColumnLetters(int column);

} // namespace tessaro::office
