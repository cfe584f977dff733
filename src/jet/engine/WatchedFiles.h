#pragma once

#include "jet/columns/WorkWatch.h"

#include <sqlite3.h>
#include <string>

namespace jet {

/// The way to files for one connection. SQLite asks nobody while it merges what it has sorted, which takes a second for
/// millions of rows; here each reading and writing of its sorting files asks the watch of the connection, and a no ends
/// the statement. They are closed in the background. All other files are those of the default way.
class WatchedFiles final {
  public:
    /// The watch must live as long.
    explicit WatchedFiles(WorkWatch& watch);
    /// The connections that were opened by the name must be closed.
    ~WatchedFiles();
    WatchedFiles(const WatchedFiles&) = delete;
    WatchedFiles& operator=(const WatchedFiles&) = delete;

    /// What sqlite3_open_v2 takes.
    [[nodiscard]] const char* name() const { return name_.c_str(); }

  private:
    std::string name_;
    sqlite3_vfs files_{};
};

} // namespace jet
