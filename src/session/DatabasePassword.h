#pragma once

#include <string>

namespace tessaro {

/// The password of every database file of the system.
[[nodiscard]] std::string DatabasePassword();

} // namespace tessaro
