#pragma once

#include "jet/engine/Connection.h"

#include <QString>

#include <functional>
#include <memory>

namespace tessaro {

/// True when the file is refused as a data database (message "316" has been shown with the reason, or the user has
/// stopped its copying), False when it is good: it opens
/// with the system's password, has a default language, and the 34 tables of that language. A genuine Jet file is copied
/// first.
bool InValidFile(const QString& path);
/// Makes the file the session's database; False when it was refused, or the working database can't be written (both
/// told), and nothing changed. The cost does not depend on
/// the number of rows. Sets Connection; DatabaseOpen and LanguageInDatabase tell whether it has the current language.
bool OpenDatabaseFile(const QString& path);
enum class LinkResult {
    Made,
    LanguageMissing, ///< no link is touched; DatabaseOpen and LanguageInDatabase are False
    NotWritten       ///< the working database takes no writing (a full disk); its links are the old ones
};
/// A connection to InfoSel.mdb in CacheFolder, the one file whose links count; null when it can't be opened, which is
/// reported.
[[nodiscard]] std::shared_ptr<jet::Connection> ConnectWorkingDatabase();
/// Links the working database to CurrentDatabase in the current language. What is on the screen is the caller's.
LinkResult LinkAllTablesinInfoSel();
/// The same on connections that stand: `data` to CurrentDatabase, `working` to the working database, each opened here
/// when it is null. Opening a file costs more than what is read from it.
LinkResult LinkAllTablesinInfoSel(std::shared_ptr<jet::Connection> data, std::shared_ptr<jet::Connection> working);
/// Replaces the link `linkName` in InfoSel.mdb, on a connection of its own.
void CreateLink(const QString& databasePath, const QString& sourceTable, const QString& linkName);
[[nodiscard]] bool IsLanguageInDatabase(const QString& path);
[[nodiscard]] bool IsLanguageInDatabase(jet::Connection& connection);
/// The text between "[" and "]" of a language name with "_" before it: "English [en]" gives "_en". Without brackets:
/// "_".
[[nodiscard]] QString SuffixOfLanguage(const QString& language);

/// Recomputes the DataExists flags of one database file from its Data table; `progress` is told after each step how far
/// it is, in per cent. False when a step failed (it is reported, and the others have run).
bool MarkDataExists(const QString& path, const std::function<void(int)>& progress = {});

} // namespace tessaro
