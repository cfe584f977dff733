#pragma once

#include <QString>

namespace tessaro {

enum class StartResult { GoOn, EndProgram };

/// The start-up steps that need no window, in their order: language list, TS.ini (with the writable tree), Pref.ini,
/// string table, start values of the navigation, an empty TempFolder, no half-made files of a killed run,
/// MapFilesFolder. AppPath must be set. EndProgram after message "002".
[[nodiscard]] StartResult Initialize();

/// The exit steps that need no window, after the user has said yes: Pref.ini, the connection, the map folder below
/// TempFolder, the string table.
void ShutDown();

/// As at the start of the process: the session's values, the settings and the texts that were read.
void ResetSession();

} // namespace tessaro
