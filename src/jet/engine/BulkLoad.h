#pragma once

#include "jet/values/Value.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

/// Writes many rows into a database file without translating statements: one prepared statement a table and one
/// transaction in all. For programs that make databases; the file must not be in use by anyone else. Throws Error.
class BulkLoad final {
  public:
    /// Opens an existing file; everything until Finish is one transaction.
    explicit BulkLoad(const std::string& path);
    /// Takes back what was not finished.
    ~BulkLoad();
    BulkLoad(const BulkLoad&) = delete;
    BulkLoad& operator=(const BulkLoad&) = delete;

    /// What becomes of a row whose key the table has already.
    enum class SameKey { Fails, Replaces };
    /// The rows that follow go into these columns of this table.
    void Into(std::string_view table, const std::vector<std::string>& columns, SameKey same = SameKey::Fails);
    /// Adds a row: one value for each column of Into. Yes/No values are -1 and 0.
    void Add(std::span<const Value> row);
    void Finish();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// Makes the planner statistics of all tables of a database file anew (ANALYZE), so that joins begin at small tables.
void Analyze(const std::string& path);

} // namespace jet
