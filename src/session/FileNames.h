#pragma once

#include <QString>

namespace tessaro {

/// The name with each character that a file name must not hold (\ / : * < > | ? [ ] ") turned into "_".
[[nodiscard]] QString CleanFileName(const QString& name);
/// True for what no disk takes in a file's name: control characters and \ / : * ? " < > |
[[nodiscard]] bool IsForbiddenInFileName(QChar c);

} // namespace tessaro
