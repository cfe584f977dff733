#pragma once

#include <QString>

#include <string>

namespace tessaro::bench {

/// A session on the benchmark database in a home of its own. Language tables are those of English.
struct BenchSession {
    std::string database;
    std::string selections;      ///< UserSelections.mdb of the session
    std::string working;         ///< InfoSel.mdb of the session
    std::string workingTemplate; ///< its template in the installation

    /// Starts the session and opens the database; ends the program when it can't.
    BenchSession(const QString& databaseFile, const QString& installation);
};

/// Selects the first half of areas, periods and combinations, or all of them.
void SelectHalf();
void SelectEverything();

} // namespace tessaro::bench
