#pragma once

#include "shell/MenuRow.h"

#include <span>

namespace tessaro {

/// The menus of the frame, each menu before what it holds.
[[nodiscard]] std::span<const MenuRow> MenuRows();

} // namespace tessaro
