#pragma once

#include <QString>

namespace tessaro::office {

/// True for a file that can be read and begins as a compound file does, the container of workbooks and slides of both
/// our kinds. The program would take anything else for a text, or unpack it.
[[nodiscard]] bool IsCompoundFile(const QString& path);
/// The same for a zip archive, the container of workbooks of later formats.
[[nodiscard]] bool IsZipFile(const QString& path);

} // namespace tessaro::office
