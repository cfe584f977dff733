#pragma once

#include "jet/engine/OpenError.h"

#include <QString>

namespace tessaro {

/// Why the engine does not open a file, in the user's language. What is no database at all needs no word of the engine;
/// of a database that it refuses the kind of the refusal is told, with the names that belong to it.
[[nodiscard]] QString ReasonInWords(const jet::OpenError& error);

} // namespace tessaro
