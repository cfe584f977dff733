#pragma once

#include <QString>

/// Which database files the program itself uses.
namespace tessaro {

/// The empty data database of the installation.
[[nodiscard]] QString DatabaseTemplate();
/// True when both paths lead to one file, whatever their case and whatever links are in them.
[[nodiscard]] bool IsSameFile(const QString& a, const QString& b);
/// True for a file that no new database may be saved to: the open database (message "012"), whatever the case and way
/// in which the path names it, and the program's own working files.
[[nodiscard]] bool IsDatabaseInUse(const QString& path);

} // namespace tessaro
