#pragma once

#include <QString>

namespace tessaro {

/// Opens a file, folder or address in the desktop's program; False, and the user is told, when there is none.
bool OpenOutside(const QString& target);

} // namespace tessaro
