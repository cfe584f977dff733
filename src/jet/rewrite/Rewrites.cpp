#include "jet/rewrite/Rewrites.h"

#include "jet/rewrite/ColumnScans.h"
#include "jet/rewrite/GroupConditions.h"
#include "jet/rewrite/GroupedAggregate.h"
#include "jet/rewrite/IndexJumps.h"
#include "jet/rewrite/PatternRows.h"
#include "jet/rewrite/SemiJoin.h"
#include "jet/rewrite/TextJoins.h"

namespace jet {

namespace {

/// The query of a SELECT, or the one whose rows an INSERT takes; nullptr for anything else.
tree::Query* QueryOf(tree::Statement& statement) {
    if (auto* const insert = std::get_if<tree::Insert>(&statement)) return insert->query.get();
    return std::get_if<tree::Query>(&statement);
}

bool FilterGroups(tree::Statement& statement, const Catalogue& catalogue) {
    tree::Query* const query = QueryOf(statement);
    return query != nullptr && FilterBeforeGrouping(*query, catalogue);
}

bool ScanInColumns(tree::Statement& statement, const Catalogue& catalogue) {
    if (auto* const crosstab = std::get_if<tree::Transform>(&statement)) return ScanColumns(*crosstab, catalogue);
    tree::Query* const query = QueryOf(statement);
    return query != nullptr && ScanColumns(*query, catalogue);
}

bool GroupAggregates(tree::Statement& statement, const Catalogue& catalogue) {
    if (auto* const update = std::get_if<tree::Update>(&statement))
        return GroupCorrelatedAggregates(update->tables, update->where, catalogue);
    if (auto* const remove = std::get_if<tree::Delete>(&statement))
        return GroupCorrelatedAggregates(remove->tables, remove->where, catalogue);
    tree::Query* const query = QueryOf(statement);
    bool changed = false;
    if (query == nullptr) return changed;
    for (tree::Select& select : query->arms)
        changed = GroupCorrelatedAggregates(select.from, select.where, catalogue) || changed;
    return changed;
}

bool TestInsteadOfJoin(tree::Statement& statement, const Catalogue& catalogue) {
    tree::Query* const query = QueryOf(statement);
    return query != nullptr && TurnJoinsIntoTests(*query, catalogue);
}

bool TextsFirst(tree::Statement& statement, const Catalogue& catalogue) {
    tree::Query* const query = QueryOf(statement);
    return query != nullptr && JoinTextsFirst(*query, catalogue);
}

bool DistinctByJumps(tree::Statement& statement, const Catalogue& catalogue) {
    tree::Query* const query = QueryOf(statement);
    return query != nullptr && JumpThroughIndex(*query, catalogue);
}

bool ListInsteadOfJoin(tree::Statement& statement, const Catalogue& catalogue) {
    auto* const update = std::get_if<tree::Update>(&statement);
    return update != nullptr && TurnJoinsIntoTests(*update, catalogue);
}

bool PatternApart(tree::Statement& statement, const Catalogue&) {
    auto* const update = std::get_if<tree::Update>(&statement);
    return update != nullptr && SetPatternApart(*update);
}

} // namespace

std::span<const Rewrite> Rewrites() {
    static constexpr Rewrite kAll[] = {
        {"filter-before-grouping", FilterGroups},
        {kColumnScans, ScanInColumns},
        {"correlated-aggregates-to-groups", GroupAggregates},
        {"distinct-joins-to-tests", TestInsteadOfJoin},
        {"distinct-by-jumps", DistinctByJumps},
        {"update-joins-to-lists", ListInsteadOfJoin},
        {"update-patterns-apart", PatternApart},
        {"text-joins-first", TextsFirst},
    };
    return kAll;
}

std::vector<std::string_view> TakeSteps(tree::Statement& statement, const Catalogue& catalogue,
                                        const std::set<std::string, std::less<>>& leftOut) {
    std::vector<std::string_view> taken;
    for (const Rewrite& each : Rewrites())
        if ((leftOut.empty() || !leftOut.contains(each.name)) && each.apply(statement, catalogue))
            taken.push_back(each.name);
    return taken;
}

} // namespace jet
