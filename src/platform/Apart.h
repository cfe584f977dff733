#pragma once

#include <chrono>
#include <functional>

namespace tessaro {

/// Runs work in a process of its own and waits for it: a crash or an endless loop in it (a foreign library on a damaged
/// file) costs the work, not the program. The work may write files but must not touch windows or open connections; what
/// it changes in memory is lost. True when it gave True within the time limit.
[[nodiscard]] bool RunApart(const std::function<bool()>& work, std::chrono::milliseconds limit);

} // namespace tessaro
