#pragma once

#include "jet/engine/Sqlite.h"

#include <cstdint>

namespace jet {

/// Tells whether another connection has written to the file.
class ChangeNotice {
  public:
    explicit ChangeNotice(sqlite3* database);
    /// True when somebody else has written since this was last asked, or since the notice was made.
    [[nodiscard]] bool OthersWrote();

  private:
    sqlite3* database_;
    Statement version_;
    std::int64_t last_ = -1;
};

/// A transaction that the engine opens by itself around one statement, so that all its reads of the file share one
/// lock. The user's own transactions (Connection::Begin) are none of these.
class OwnTransaction {
  public:
    explicit OwnTransaction(sqlite3* database);

    /// True from Begin to End, also after SQLite gave the transaction up because of a failure.
    [[nodiscard]] bool isBegun() const { return begun_; }
    /// False, and nothing is begun, within any transaction, and when the file is busy.
    bool Begin();
    /// Commits. False when SQLite has given up the transaction meanwhile; throws when it can't commit, and the
    /// transaction then still stands in SQLite.
    bool End();

  private:
    sqlite3* database_;
    Statement begin_;
    Statement commit_;
    bool begun_ = false;
};

} // namespace jet
