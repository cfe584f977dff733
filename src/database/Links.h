#pragma once

#include "jet/engine/Connection.h"

#include <QString>

#include <memory>

/// The working database InfoSel.mdb and its links to the tables of the open database.
namespace tessaro {

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
/// The same on connections that are open already: `data` to CurrentDatabase, `working` to the working database; one
/// that is null is opened here. Opening a file costs more than what is read from it.
LinkResult LinkAllTablesinInfoSel(std::shared_ptr<jet::Connection> data, std::shared_ptr<jet::Connection> working);
/// Replaces the link `linkName` in InfoSel.mdb, on a connection of its own.
void CreateLink(const QString& databasePath, const QString& sourceTable, const QString& linkName);

/// Whether the database has texts in the current language.
[[nodiscard]] bool IsLanguageInDatabase(const QString& path);
[[nodiscard]] bool IsLanguageInDatabase(jet::Connection& connection);
/// The text between "[" and "]" of a language name with "_" before it: "English [en]" gives "_en". Without brackets:
/// "_".
[[nodiscard]] QString SuffixOfLanguage(const QString& language);

} // namespace tessaro
