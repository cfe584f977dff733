#pragma once

#include "jet/values/Error.h"

#include <string>
#include <vector>

namespace jet {

/// Why a file is not opened as a database.
enum class OpenFailure {
    Other, ///< none of those below; what() has the engine's own words
    NoSuchFile,
    NoPlainFile, ///< a folder, a pipe, a device
    NoDatabase,
    GenuineJet, ///< it has to be imported first
    MayNotBeRead,
    Damaged,
    InUse,               ///< another program writes to it
    TooLarge,            ///< its schema takes more memory than one file is given
    ComputedField,       ///< in a table; names: the table
    MakesTexts,          ///< a condition, default or index of a table does; names: the table
    SearchesTexts,       ///< likewise
    CallsFunction,       ///< likewise; names: the table, the function
    NoPlainFileBeside,   ///< what the engine would take along; names: that file
    JournalNamesAnother, ///< the journal beside it would have the engine change another file; names: the journal
};

/// The failed opening of a file, as a kind and the names that belong to it, for who tells it in another language;
/// what() tells it in English. Its number is Busy for a file in use, otherwise NotADatabase.
class OpenError final : public Error {
  public:
    OpenError(const std::string& path, OpenFailure why, std::vector<std::string> names = {});
    /// Of the kind Other, with the engine's sentence.
    OpenError(const std::string& path, const std::string& sentence);

    [[nodiscard]] OpenFailure why() const { return why_; }
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

  private:
    OpenFailure why_;
    std::vector<std::string> names_;
};

} // namespace jet
