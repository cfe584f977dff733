#pragma once

#include "jet/sql/Tree.h"
#include "jet/values/Catalogue.h"

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

/// A step that turns the tree of a statement into one that gives the same rows in less time.
struct Rewrite {
    std::string_view name;
    bool (*apply)(tree::Statement&, const Catalogue&); ///< true when it changed the tree
};

/// The step that reads column images; the engine leaves it out where an image can't serve a statement.
inline constexpr std::string_view kColumnScans = "column-scans";

/// All steps, in the order in which they are taken.
[[nodiscard]] std::span<const Rewrite> Rewrites();

/// Takes all steps but those left out; gives the names of the ones that changed the statement.
[[nodiscard]] std::vector<std::string_view> TakeSteps(tree::Statement& statement, const Catalogue& catalogue,
                                                      const std::set<std::string, std::less<>>& leftOut);

} // namespace jet
