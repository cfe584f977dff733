#pragma once

#include "map/classes/ClassEditing.h"

#include <vector>

namespace tessaro {

/// How an entry of cboBBreak is named and explained. Caption and explanation are keys of the string table.
struct BreakChoiceTexts {
    BreakChoice choice;
    const char* caption;
    const char* explanation; ///< one line
    const char* reference;   ///< where the method is described; empty for what needs none
};

/// The entries in their order: the four that have always been there first.
[[nodiscard]] const std::vector<BreakChoiceTexts>& BreakChoices();

} // namespace tessaro
