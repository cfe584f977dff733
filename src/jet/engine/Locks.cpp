#include "jet/engine/Locks.h"

#include <utility>

namespace jet {

ChangeNotice::ChangeNotice(sqlite3* database)
    : database_(database), version_(Prepare(database, "PRAGMA main.data_version")) {
    static_cast<void>(OthersWrote());
}

bool ChangeNotice::OthersWrote() {
    const bool row = Step(database_, version_.get());
    const std::int64_t version = row ? sqlite3_column_int64(version_.get(), 0) : last_;
    sqlite3_reset(version_.get());
    return std::exchange(last_, version) != version;
}

OwnTransaction::OwnTransaction(sqlite3* database)
    : database_(database), begin_(Prepare(database, "BEGIN")), commit_(Prepare(database, "COMMIT")) {}

bool OwnTransaction::Begin() {
    if (begun_ || sqlite3_get_autocommit(database_) == 0) return false;
    begun_ = sqlite3_step(begin_.get()) == SQLITE_DONE;
    sqlite3_reset(begin_.get());
    return begun_;
}

bool OwnTransaction::End() {
    begun_ = false;
    if (sqlite3_get_autocommit(database_) != 0) return false;
    RunAgain(database_, commit_.get());
    return true;
}

} // namespace jet
