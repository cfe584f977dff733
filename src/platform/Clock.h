#pragma once

#include <QDateTime>

#include <functional>

namespace tessaro {

/// The time by which files, logs and workbooks are stamped; tests set it.
[[nodiscard]] QDateTime Now();
/// Installs a clock; an empty one brings the system's back.
void SetClock(std::function<QDateTime()> clock);

} // namespace tessaro
