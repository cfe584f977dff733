#pragma once

#include <QString>

/// Names of files that are made from texts.
namespace tessaro {

/// The name with each character that a file name must not hold (\ / : * < > | ? [ ] ") turned into "_".
[[nodiscard]] QString CleanFileName(const QString& name);
/// True for what no disk takes in a file's name: control characters and \ / : * ? " < > |
[[nodiscard]] bool IsForbiddenInFileName(QChar c);
/// The name with "_" for each of those.
[[nodiscard]] QString MakeFileNameSafe(const QString& name);
/// The beginning of a name that any disk takes, so that it can still grow by a number and an ending.
[[nodiscard]] QString CutForDisk(const QString& name);

} // namespace tessaro
