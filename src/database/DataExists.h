#pragma once

#include "jet/engine/Connection.h"

namespace tessaro {

/// The clearing step of MarkDataExists: sets DataExists to False in the six tables whose marks are made anew.
void UpdateDataExistsTables(jet::Connection& connection);

} // namespace tessaro
