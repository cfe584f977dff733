#pragma once

#include "session/SaveKind.h"

#include <vector>

/// The kinds of files that leave the program, as its dialogs list them.
namespace tessaro {

[[nodiscard]] SaveKind PageKind();
/// .xls, .xlsx and .ods.
[[nodiscard]] std::vector<SaveKind> WorkbookKinds();
/// Texts with tabs between them.
[[nodiscard]] SaveKind TextKind();
/// The forms of values.
[[nodiscard]] std::vector<SaveKind> ValueKinds();
/// All of these.
[[nodiscard]] std::vector<SaveKind> AllKinds();
[[nodiscard]] bool IsWorkbookName(const QString& file);

} // namespace tessaro
