#pragma once

namespace jet {
class Connection;
}

namespace tessaro {

/// Lets statements of the connection read large tables from column images below DataCacheFolder. They are made when the
/// first statement wants one; what goes wrong with them is a note in the log.
void UseColumnCache(jet::Connection& connection);

} // namespace tessaro
