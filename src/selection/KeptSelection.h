#pragma once

#include "selection/AutoSelect.h"

/// The selection that the tables keep from an earlier run, or from before a change of language.
namespace tessaro::selection {

/// Makes the kept selection fit the connected database: rows that it does not have are deleted (after a crash they may
/// be those of another database), and texts are replaced by those of the current language. Nothing is written when it
/// fits already. True when rows were deleted.
bool FitKeptSelection();

/// How many of the kept items the list of a stage will show; 0 without an open database.
[[nodiscard]] int CountOfSelection(Stage stage);

} // namespace tessaro::selection
