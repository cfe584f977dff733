#pragma once

#include "database/JetImport.h"

#include <QString>

/// Checks and opens data databases.
namespace tessaro {

/// True when the file is refused as a data database (message "316" has been shown with the reason, or the user has
/// stopped its copying), False when it is good: it opens with the system's password, has a default language, and the 34
/// tables of that language. A genuine Jet file is copied first; `goOn` is told how far that is.
bool InValidFile(const QString& path, const CopyProgress& goOn = {});
/// Makes the file the session's database; False when it was refused, or the working database can't be written (both
/// told), and nothing changed. The cost does not depend on the number of rows, but for a genuine Jet file that is
/// copied first, as above. Sets Connection; DatabaseOpen and LanguageInDatabase tell whether it has the current
/// language.
bool OpenDatabaseFile(const QString& path, const CopyProgress& goOn = {});

} // namespace tessaro
