#pragma once

#include "jet/engine/LiveCatalogue.h"
#include "jet/engine/Sqlite.h"

#include <string>

namespace jet {

/// The filters drop and make the same working tables again and again. In a working database a dropped table is kept as
/// a shell: empty, marked in the list of links, and unknown to the catalogue. The next query that makes a table of that
/// name and fields fills it, and the statements compiled for it stay valid. This class decides what becomes a shell and
/// keeps the marks; the engine runs the statements that empty and fill one.
class Shells {
  public:
    Shells(sqlite3* database, LiveCatalogue& catalogue) : database_(database), catalogue_(catalogue) {}

    /// True when the statement drops a table that a query made, and nobody changed.
    [[nodiscard]] bool canBeLeftBy(const Translation& translation) const;
    /// True when the statement makes a table for which there is a shell with the same fields.
    [[nodiscard]] bool canBeFilledBy(const Translation& translation) const;
    void Mark(const std::string& name);
    void Unmark(const std::string& name);

  private:
    sqlite3* database_;
    LiveCatalogue& catalogue_;
    Statement mark_;
    Statement unmark_;
};

} // namespace jet
