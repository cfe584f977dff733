#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

struct sqlite3;

namespace jet {

/// Keeps the planner's figures of small tables true. A join of a selection of some hundred rows with millions of values
/// must begin at the selection, and the engine knows that only from sqlite_stat1. Files of more than 20 MB are left to
/// the programs that make them.
class TableSizes {
  public:
    explicit TableSizes(sqlite3* database) : database_(database) {}

    /// Before a join of these tables ("l1.data"): measures those whose figures are missing or far from the truth.
    /// True when it did, and a statement compiled before should be compiled again.
    bool Refresh(const std::set<std::string>& tables);
    /// Takes the figures of a table that was made a moment ago with so many rows.
    void Made(const std::string& table, std::int64_t rows);
    /// Rows were written to these tables.
    void Changed(const std::set<std::string>& tables, std::int64_t rows);
    /// A table whose figures were taken before was emptied, and then filled with so many rows. True when the figures
    /// still serve.
    bool Refilled(const std::string& table, std::int64_t rows);
    void Forget(const std::string& table);
    void ForgetAll();
    /// True when a table of these has to be looked at.
    [[nodiscard]] bool inDoubt(const std::set<std::string>& tables) const;

  private:
    struct Size {
        std::int64_t rows = 0;
        std::int64_t changed = 0;
    };
    bool Measure(const std::string& schema, const std::string& table, std::int64_t& rows);

    sqlite3* database_;
    std::map<std::string, Size> rows_;             ///< of tables whose figures are right, or not ours to mend
    std::map<std::string, std::int64_t> analysed_; ///< rows that the file's figures name
};

} // namespace jet
