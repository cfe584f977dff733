#pragma once

#include "database/TargetDatabase.h"

#include <QString>

namespace tessaro {

/// Gives a database the tables of a language, where it lacks them, and the language's row in Language. The code becomes
/// part of their names. Throws.
void AddLanguage(TargetDatabase& target, const QString& name, const QString& code, bool isDefault);

/// Gives a database made from the template the tables of every language of the open database that it lacks, and its
/// rows in Language: the session's language as the default, then the others. Throws.
void CopyLanguageTables(TargetDatabase& target);

/// Brings the language tables of the target to the same items: what only the session's language has comes into the
/// others under the same identifiers, with the text that the database at `source` has for it in that language, or else
/// with the text of the session's language. An empty `source` has no texts. Throws.
void CompleteLanguages(TargetDatabase& target, const QString& source);

} // namespace tessaro
