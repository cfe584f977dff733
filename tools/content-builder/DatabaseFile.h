#pragma once

#include "jet/engine/Connection.h"

#include <filesystem>
#include <functional>

namespace tessaro::content {

/// Makes a database at a place of its own beside `file`, has `fill` write it, and puts it in place when it is whole; so
/// nobody ever opens half a database. `fill` is given the path of the work file. Throws what `fill` throws.
void MakeDatabase(const std::filesystem::path& file, const std::function<void(const std::string& workFile)>& fill);

/// Opens a work file with the password of all databases.
[[nodiscard]] std::shared_ptr<jet::Connection> OpenWorkFile(const std::string& workFile);

} // namespace tessaro::content
