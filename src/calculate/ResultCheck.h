#pragma once

#include "calculate/DataEntry.h"

#include <QString>

namespace tessaro {

/// Why a result can't be written into a database, in the language of the program: a name or a row's field is empty or
/// too long, a value is no number, or there are no rows. Empty when it can.
[[nodiscard]] QString ProblemOf(const DataEntrySheet& result);

} // namespace tessaro
