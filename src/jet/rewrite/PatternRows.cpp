#include "jet/rewrite/PatternRows.h"

#include "jet/sql/MakeTree.h"

#include <algorithm>
#include <utility>

namespace jet {

using namespace tree;

namespace {

bool HasComputedPattern(const ExpressionPtr& condition) {
    const auto* like = std::get_if<Like>(&condition->node);
    return like != nullptr && !like->negated && !std::holds_alternative<TextLiteral>(like->pattern->node);
}

} // namespace

bool SetPatternApart(Update& update) {
    const bool joined = update.tables.size() > 1 || std::holds_alternative<Join>(update.tables.front()->node);
    if (!joined || !update.where) return false;
    const Position at = update.where->at;
    std::vector<ExpressionPtr> parts;
    TakeApart(std::move(update.where), parts);
    const auto found = std::ranges::find_if(parts, HasComputedPattern);
    const bool any = found != parts.end();
    if (any) {
        update.pattern = std::move(*found);
        parts.erase(found);
    }
    update.where = AllOf(at, std::move(parts));
    return any;
}

} // namespace jet
