#pragma once

#include <QString>

namespace jet {
class Connection;
}

namespace tessaro {

/// Lets statements of the connection read large tables from column images below DataCacheFolder. They are made when the
/// first statement wants one; what goes wrong with them is a note in the log.
void UseColumnCache(jet::Connection& connection);
/// Has the image of the values of a large database made now, so that it is there when the first statement wants it.
/// Returns at once.
void PrepareColumnCache();
/// True when the statement would be run on such an image now.
[[nodiscard]] bool RunsOnColumns(const QString& sql);

} // namespace tessaro
