#pragma once

#include <sqlite3.h>
#include <string>

namespace jet {

/// Keeps a file that is opened on the connection from running anything of its own: no triggers, views, virtual tables,
/// or functions of ours in its schema. Also bounds the size of values and statements.
void Harden(sqlite3* database);

/// Throws OpenError when a table or index of the file under that schema name has the engine compute more than a simple
/// comparison. `path` is for the message.
void RefuseComputedParts(sqlite3* database, const std::string& schema, const std::string& path);

/// Throws OpenError when a file that the engine takes along on opening `path` ("-journal", "-wal", "-shm") is no
/// plain file, or is a journal that names a further file: the engine would write to that one, or delete it.
void RefuseReachingOut(const std::string& path);

} // namespace jet
