#include "jet/rewrite/SemiJoin.h"

#include "jet/rewrite/JoinedTables.h"
#include "jet/sql/MakeTree.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numeric>
#include <utility>

namespace jet {

namespace {

using namespace tree;

constexpr std::int64_t kFewRows = 10'000; ///< a table of at most so many rows counts as small

class SemiJoin final : JoinedTables {
  public:
    SemiJoin(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : JoinedTables(select, orderBy, catalogue) {}

    bool Apply() {
        if (!HasFittingShape() || !ReadTables() || !FindGiving()) return false;
        const TableSet all = Bit(tables_.size()) - 1;
        if (giving_ == 0 || giving_ == all || !AllConditionsArePlaced()) return false;
        TakeConditions();
        Rewrite(all & ~giving_);
        return true;
    }

    /// The select has the tables and conditions of an UPDATE.
    bool ApplyToUpdate(const std::vector<Assignment>& assignments) {
        if (!ReadTables() || !FindChanged(assignments) || !AllConditionsArePlaced()) return false;
        const TableSet testing = (Bit(tables_.size()) - 1) & ~giving_;
        if (testing == 0) return false;
        TakeConditions();
        const std::vector<TableSet> groups = GroupsOf(testing);
        if (std::ranges::all_of(groups, [&](TableSet group) { return LinkOf(group) != nullptr; })) {
            std::vector<ExpressionPtr> tests;
            for (const TableSet group : groups)
                tests.push_back(ListTestFor(group));
            for (Condition& condition : conditions_)
                if (condition.expression) tests.push_back(std::move(condition.expression));
            select_.from = References(giving_);
            select_.where = AllOf(select_.at, std::move(tests));
            return true;
        }
        // As it was, but for the order of the conditions.
        std::vector<ExpressionPtr> where;
        for (Condition& condition : conditions_)
            where.push_back(std::move(condition.expression));
        select_.from = References(testing | giving_);
        select_.where = AllOf(select_.at, std::move(where));
        return false;
    }

  private:
    [[nodiscard]] bool HasFittingShape() const {
        return select_.duplicates == Duplicates::DropEqualValues && !select_.top && select_.groupBy.empty() &&
               !select_.having;
    }

    // --- Reading, without a change to the tree. ---

    bool FindGiving() {
        for (const SelectItem& item : select_.items) {
            if (item.expression) {
                if (!AddTables(*item.expression, giving_)) return false;
                continue;
            }
            const auto table = std::ranges::find_if(
                tables_, [&](const JoinedTable& joined) { return SameName(item.starTable, joined.name.alias); });
            if (table == tables_.end()) return false;
            giving_ |= Bit(static_cast<std::size_t>(table - tables_.begin()));
        }
        return std::ranges::all_of(orderBy_, [&](const OrderItem& item) {
            return IsAlias(*item.expression) || AddTables(*item.expression, giving_);
        });
    }

    /// True when one table is changed, and by values of its own.
    bool FindChanged(const std::vector<Assignment>& assignments) {
        TableSet read = 0;
        for (const Assignment& assignment : assignments) {
            const std::size_t table = TableOf(assignment.target);
            if (table >= tables_.size() || !AddTables(*assignment.value, read)) return false;
            giving_ |= Bit(table);
        }
        return std::has_single_bit(giving_) && (read & ~giving_) == 0;
    }

    // --- Rewriting. ---

    void Rewrite(TableSet testing) {
        const std::vector<TableSet> groups = GroupsOf(testing);
        std::vector<ExpressionPtr> where;
        std::vector<std::vector<ExpressionPtr>> tests(groups.size());
        for (Condition& condition : conditions_) {
            const auto group =
                std::ranges::find_if(groups, [&](TableSet set) { return (set & condition.tables) != 0; });
            auto& target = group == groups.end() ? where : tests[static_cast<std::size_t>(group - groups.begin())];
            target.push_back(std::move(condition.expression));
        }
        for (std::size_t group = 0; group < groups.size(); ++group)
            where.push_back(TestFor(groups[group], std::move(tests[group])));
        select_.from = References(giving_);
        select_.where = AllOf(select_.at, std::move(where));
    }

    /// The tables that only test, in groups: those connected by a condition are in one group.
    [[nodiscard]] std::vector<TableSet> GroupsOf(TableSet testing) const {
        std::vector<TableSet> groups;
        for (std::size_t table = 0; table < tables_.size(); ++table) {
            if ((testing & Bit(table)) != 0) groups.push_back(Bit(table));
        }
        for (const Condition& condition : conditions_) {
            TableSet merged = condition.tables & testing;
            if (merged == 0) continue;
            std::erase_if(groups, [&](TableSet group) {
                const bool touched = (group & condition.tables & testing) != 0;
                if (touched) merged |= group;
                return touched;
            });
            groups.push_back(merged);
        }
        return groups;
    }

    [[nodiscard]] ExpressionPtr TestFor(TableSet group, std::vector<ExpressionPtr> conditions) const {
        if (conditions.size() == 1) {
            if (ExpressionPtr membership = MembershipFor(group, *conditions.front())) return membership;
        }
        return MakeExpression(select_.at, Exists{QueryOf(group, MakeExpression(select_.at, NumberLiteral{"1"}),
                                                         AllOf(select_.at, std::move(conditions)))});
    }

    /// "given IN (SELECT tested FROM table)" for the one condition given = tested; nothing when it is of another form.
    [[nodiscard]] ExpressionPtr MembershipFor(TableSet group, Expression& condition) const {
        auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return nullptr;
        TableSet left = 0;
        (void)AddTables(*comparison->left, left);
        ExpressionPtr& tested = left == group ? comparison->left : comparison->right;
        ExpressionPtr& given = left == group ? comparison->right : comparison->left;
        TableSet givenTables = 0;
        (void)AddTables(*given, givenTables);
        if (!IsNumberColumn(*tested) || !IsNumberColumn(*given) || (givenTables & group) != 0) return nullptr;
        // The engine may read the whole of the list at once; that must not be the larger table of the two.
        if (RowsOf(group) > RowsOf(givenTables)) return nullptr;
        return MakeExpression(condition.at,
                              InQuery{false, std::move(given), QueryOf(group, std::move(tested), nullptr)});
    }

    /// The one condition that joins these small tables to the changed one, when it is an equality of two fields.
    [[nodiscard]] Condition* LinkOf(TableSet group) {
        const std::int64_t most = std::max(kFewRows, RowsOf(giving_));
        Condition* link = nullptr;
        for (std::size_t table = 0; table < tables_.size(); ++table)
            if ((group & Bit(table)) != 0 && RowsOf(Bit(table)) > most) return nullptr;
        for (Condition& condition : conditions_) {
            if ((condition.tables & group) == 0 || (condition.tables & ~group) == 0) continue;
            const auto* comparison = std::get_if<Comparison>(&condition.expression->node);
            if (link != nullptr || comparison == nullptr || comparison->op != ComparisonOperator::Equal) return nullptr;
            for (const ExpressionPtr* side : {&comparison->left, &comparison->right})
                if (!std::holds_alternative<ColumnName>((*side)->node)) return nullptr;
            link = &condition;
        }
        return link;
    }

    /// "changed IN (SELECT field FROM group WHERE …)"; takes the group's conditions out of the list.
    [[nodiscard]] ExpressionPtr ListTestFor(TableSet group) {
        Condition& link = *LinkOf(group);
        auto& comparison = std::get<Comparison>(link.expression->node);
        TableSet left = 0;
        (void)AddTables(*comparison.left, left);
        ExpressionPtr tested = std::move(left == giving_ ? comparison.right : comparison.left);
        ExpressionPtr changed = std::move(left == giving_ ? comparison.left : comparison.right);
        link.expression = nullptr;
        std::vector<ExpressionPtr> where;
        for (Condition& condition : conditions_)
            if (condition.expression && (condition.tables & group) != 0)
                where.push_back(std::move(condition.expression));
        return MakeExpression(
            select_.at,
            InQuery{false, std::move(changed), QueryOf(group, std::move(tested), AllOf(select_.at, std::move(where)))});
    }

    TableSet giving_ = 0; ///< tables of which a column is in the output or the order
};

} // namespace

bool TurnJoinsIntoTests(tree::Update& update, const Catalogue& catalogue) {
    Select select;
    select.from = std::move(update.tables);
    select.where = std::move(update.where);
    const bool changed = SemiJoin(select, {}, catalogue).ApplyToUpdate(update.assignments);
    update.tables = std::move(select.from);
    update.where = std::move(select.where);
    return changed;
}

bool TurnJoinsIntoTests(tree::Query& query, const Catalogue& catalogue) {
    static const std::vector<OrderItem> noOrder;
    bool changed = false;
    for (Select& select : query.arms)
        changed = SemiJoin(select, query.arms.size() == 1 ? query.orderBy : noOrder, catalogue).Apply() || changed;
    return changed;
}

} // namespace jet
