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

    /// Copies of the session's two files as they stand, for the work by hand: what one side writes must not make the
    /// other look at its files again.
    struct Copies {
        std::string selections, working;
    };
    [[nodiscard]] Copies CopyForHand() const;

    /// Starts the session and opens the database; ends the program when it can't.
    BenchSession(const QString& databaseFile, const QString& installation);
};

/// Selects the first half of areas, periods and combinations, or all of them.
void SelectHalf();
void SelectEverything();
/// 100 combinations in 200 areas and all periods: a million values.
void SelectMillion();

/// How many values a database has, none of which was ever taken out.
[[nodiscard]] double ValuesIn(const QString& databaseFile);

} // namespace tessaro::bench
