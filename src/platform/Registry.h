#pragma once

#include <QString>

namespace tessaro {

/// A value of the registry, which is here an INI file: sections are "<root>\<subKey>", for instance
///     [HKEY_LOCAL_MACHINE\Software\TESSARO]
///     Language Path=Languages
/// The user's file is asked first, then the system's ones, then the one of the application folder. They are
/// TESSARO_HOME/registry.ini or tessaro/registry.ini in the user's configuration folder, tessaro/registry.ini in the
/// system's configuration folders, and registry.ini in `appPath`. A value that is no string ("dword:…", "hex:…") is
/// passed over; a string ends at its first Chr(0). When no file has the value: `defaultValue`.
[[nodiscard]] QString GetRegistryValue(const QString& appPath, const QString& root, const QString& subKey,
                                       const QString& valueName, const QString& defaultValue = {});

inline constexpr char kLocalMachine[] = "HKEY_LOCAL_MACHINE";

} // namespace tessaro
