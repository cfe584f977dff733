#pragma once

#include <QString>

namespace tessaro {

/// Reads Pref.ini into the session's values. A damaged file is put aside and the template read instead.
void ReadPrefINIFile();
/// Writes Pref.ini; on any failure the old file stays and False is given.
bool SavePrefINIFile();
/// The condition that goes with a DATA_EXISTS of 0, 1 or 2: "DataExists = True ", empty, "DataExists = False ".
[[nodiscard]] QString CriterionOfDataExists(long mode);

} // namespace tessaro
