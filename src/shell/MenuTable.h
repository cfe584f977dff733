#pragma once

#include "shell/MenuRow.h"

#include <span>

namespace tessaro {

/// The table of the frame's menus: each menu stands before its entries.
[[nodiscard]] std::span<const MenuRow> MenuRows();

} // namespace tessaro
