#pragma once

#include <QString>

/// The log file.
namespace tessaro {

/// Writes a note to the log file (what "nothing is shown" for).
void LogNote(const QString& text);
/// CacheFolder/Tessaro.log; before CacheFolder is known, the same in the root of the writable tree. At 1 MB it
/// becomes Tessaro.log.1 and a new one begins.
[[nodiscard]] QString LogFile();
/// Appends one line with the time before it; line breaks become blanks, passwords are taken out.
void WriteLogLine(const QString& text);
/// The text with the password of the database files replaced by "***".
[[nodiscard]] QString WithoutPasswords(QString text);

} // namespace tessaro
