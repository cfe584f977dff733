#pragma once

#include "exchange/ImportDraft.h"

#include <QString>

namespace tessaro {

/// What a column with this head usually tells, by the words that files and this program have above their columns;
/// LeftOut when the words say nothing.
[[nodiscard]] Role RoleOfHead(const QString& head);

} // namespace tessaro
