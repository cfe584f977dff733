#pragma once

#include "exchange/ImportDraft.h"

#include <QString>

namespace tessaro {

/// What a column with this head usually tells, by the words that files and this program have above their columns;
/// LeftOut when the words say nothing.
[[nodiscard]] Role RoleOfHead(const QString& head);

/// True for a text that usually names a unit ("percent"), or a group of people ("girls").
[[nodiscard]] bool IsWordOf(Role role, const QString& text);
/// True for a text that means all together.
[[nodiscard]] bool IsTotal(const QString& text);

} // namespace tessaro
