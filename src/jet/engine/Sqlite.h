#pragma once

#include "jet/values/Error.h"
#include "jet/values/Quoting.h"
#include "jet/values/Value.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

/// Small helpers around SQLite's C interface: handles, statements, errors.
namespace jet {

struct CloseHandle {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The failure that a connection reports now, as one of ours.
[[nodiscard]] Error ErrorOf(sqlite3* database);
[[nodiscard]] Statement Prepare(sqlite3* database, std::string_view sql);
/// True: there is a row. False: the end. Throws Error.
bool Step(sqlite3* database, sqlite3_stmt* statement);
/// Runs one statement to its end, with texts for its parameters.
void Run(sqlite3* database, std::string_view sql, const std::vector<std::string>& parameters = {});
/// The same with a statement that is kept.
void RunAgain(sqlite3* database, sqlite3_stmt* statement, const std::vector<std::string>& parameters = {});
/// All rows of a query, texts for its parameters.
[[nodiscard]] std::vector<std::vector<Value>> Rows(sqlite3* database, std::string_view sql,
                                                   const std::vector<std::string>& parameters = {});

/// The name under which SQLite opens a file whatever its characters, with options ("mode=ro").
[[nodiscard]] std::string FileUri(const std::string& path, std::string_view options);

} // namespace jet
