#pragma once

#include <QString>

/// The folder below which everything of the program is written.
namespace tessaro {

/// What TESSARO_HOME in the environment names, otherwise the user's XDG data home. Everything that is written lies
/// below.
[[nodiscard]] QString WritableHome();
/// The folder in it that is this program's own: Tessaro. Only the running user may enter it.
[[nodiscard]] QString OwnFolder();
/// Root of the writable tree: Tessaro/TessaroCache below WritableHome. It need not exist yet.
[[nodiscard]] QString WritableRoot();
/// The system's name of the running user, to tell users of one machine apart.
[[nodiscard]] QString UserMark();

} // namespace tessaro
