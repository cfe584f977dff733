#pragma once

#include <QString>

namespace tessaro {

/// The name with each character that a file name must not hold (\ / : * < > | ? [ ] ") turned into "_".
[[nodiscard]] QString CleanFileName(const QString& name);

} // namespace tessaro
