#pragma once

#include <QString>

namespace tessaro {

/// Why a file can't be written, in the user's words: its folder is gone, it or the folder may not be changed, the disk
/// is full. Empty when there is no such reason.
[[nodiscard]] QString WhyNotWritable(const QString& file);
/// Shows that a file could not be written, with the reason.
void TellNotWritten(const QString& file);

} // namespace tessaro
