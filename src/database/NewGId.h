#pragma once

#include "jet/engine/Connection.h"

#include <QString>

namespace tessaro {

/// A new global identifier, a GUID in braces, from the GUId table of an open database; empty when the connection is not
/// open. It begins with no "-", so it is a local item's.
[[nodiscard]] QString NewGId(jet::Connection* connection);

} // namespace tessaro
