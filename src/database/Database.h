#pragma once

#include <QString>

namespace tessaro {

/// True when the file is refused as a data database (message "316" has been shown), False when it is good.
bool InValidFile(const QString& path);
/// Makes the file the session's database; False when it was refused, and nothing changed.
bool OpenDatabaseFile(const QString& path);
/// Links the working database to CurrentDatabase in the current language. False when the database lacks the language.
bool LinkAllTablesinInfoSel();
/// Replaces the link `linkName` in InfoSel.mdb.
void CreateLink(const QString& databasePath, const QString& sourceTable, const QString& linkName);
[[nodiscard]] bool IsLanguageInDatabase(const QString& path);
/// The text between "[" and "]" of a language name with "_" before it: "English [en]" gives "_en".
[[nodiscard]] QString SuffixOfLanguage(const QString& language);

/// Recomputes the DataExists flags of one database file from its Data table.
void MarkDataExists(const QString& path);

} // namespace tessaro
