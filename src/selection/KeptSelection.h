#pragma once

#include "selection/AutoSelect.h"

/// What a start finds in the selection tables.
namespace tessaro::selection {

/// Brings a selection that an earlier run left in line with the database that is connected: rows that it does not have
/// go (a run that broke off may have left those of another database), and the texts become those of the language that
/// is set. A selection that fits already is not written. True when rows have gone.
bool FitKeptSelection();

/// How many items the list of a stage will show of it; 0 without an open database.
[[nodiscard]] int CountOfSelection(Stage stage);

} // namespace tessaro::selection
