#pragma once

#include "session/Frame.h"

namespace tessaro {

/// Thrown when the user has asked for the making of a database to stop. Nothing is told of it.
struct BuildingStopped {};

/// Lets the window paint, a few times a second during long work. Throws BuildingStopped.
inline void LookForStop() {
    if (TheFrame().IsStopAsked()) throw BuildingStopped();
}

} // namespace tessaro
