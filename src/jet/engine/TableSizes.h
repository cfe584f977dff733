#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

struct sqlite3;

namespace jet {

/// Keeps SQLite's planner statistics (sqlite_stat1) of small tables up to date. A join of some hundred selected rows
/// with millions of values must begin at the selection, and the planner knows that only from these statistics. Files of
/// more than 20 MB are analysed by the programs that make them.
class TableSizes {
  public:
    explicit TableSizes(sqlite3* database) : database_(database) {}

    /// Before a join of these tables ("l1.data"): analyses those whose statistics are missing or far wrong. True when
    /// it did; a statement compiled before should then be compiled again.
    bool Refresh(const std::set<std::string>& tables);
    /// Makes the statistics of a table that has just been made with so many rows.
    void Made(const std::string& table, std::int64_t rows);
    /// Rows were written to these tables.
    void Changed(const std::set<std::string>& tables, std::int64_t rows);
    /// A table with statistics was emptied and filled with so many rows. True when its statistics are still near
    /// enough.
    bool Refilled(const std::string& table, std::int64_t rows);
    void Forget(const std::string& table);
    void ForgetAll();
    /// True when the statistics of one of these tables have to be checked.
    [[nodiscard]] bool inDoubt(const std::set<std::string>& tables) const;

  private:
    struct Size {
        std::int64_t rows = 0;
        std::int64_t changed = 0;
    };
    bool Measure(const std::string& schema, const std::string& table, std::int64_t& rows);

    sqlite3* database_;
    std::map<std::string, Size> rows_;             ///< of tables whose statistics are right, or are left alone
    std::map<std::string, std::int64_t> analysed_; ///< rows by the file's statistics
};

} // namespace jet
