#pragma once

#include <sqlite3.h>
#include <string>

namespace jet {

/// Keeps whatever file is opened on the connection from acting by itself: no triggers, no views, no virtual tables, no
/// functions of ours in its schema, and bounds on what a value or a statement may take.
void Harden(sqlite3* database);

/// Throws OpenError when a table or index of the file under that schema name has the engine compute more than a simple
/// comparison. `path` is for the message.
void RefuseComputedParts(sqlite3* database, const std::string& schema, const std::string& path);

/// Throws OpenError when a file that the engine takes along on opening `path` ("-journal", "-wal", "-shm") is no
/// plain file, or is a journal that names a further file: the engine would write to that one, or delete it.
void RefuseReachingOut(const std::string& path);

} // namespace jet
