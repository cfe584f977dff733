#pragma once

#include "database/TargetDatabase.h"

namespace tessaro {

/// Copies the data in view, as _Data holds them, and all that they refer to from the open database into a database made
/// from the template: classifications, units, subgroups, sources with their regions, periods, areas with all their
/// parents, and the languages, of which the current one becomes the default. Texts go into the tables of the session's
/// language; CompleteLanguages fills the others. Throws, also BuildingStopped.
void Copy_Data(TargetDatabase& target);

} // namespace tessaro
