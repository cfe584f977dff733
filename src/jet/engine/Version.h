#pragma once

#include <string>

namespace jet {

/// Version of the SQL engine below, for support.
[[nodiscard]] std::string EngineVersion();

} // namespace jet
