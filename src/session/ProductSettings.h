#pragma once

namespace tessaro {

/// Reads TS.ini. Missing, or without a single key of ours: message "002" and False (the program ends). LocalizeApp runs
/// after name and version are read.
[[nodiscard]] bool ReadInfoINIFile();

} // namespace tessaro
