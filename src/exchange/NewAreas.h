#pragma once

#include "exchange/ImportCheck.h"

#include <string>
#include <vector>

namespace tessaro {

/// An area as it is made: with its id in the tree, on the level that this gives.
struct NewArea {
    int number = 0; ///< that of the check, below 0; 0 for a parent that nothing names
    std::string id;
    std::string name;

    [[nodiscard]] int Level() const;
};

/// The areas that an import makes, each with an id that fits into the tree: the file's own where it is one (three
/// letters or digits a level) and free, else the next free one below the draft's parent. Parents that are missing are
/// made too, and stand before their children.
[[nodiscard]] std::vector<NewArea> PlanNewAreas(const CheckedImport& checked);

} // namespace tessaro
