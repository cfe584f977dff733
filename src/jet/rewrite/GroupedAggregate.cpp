#include "jet/rewrite/GroupedAggregate.h"

#include "jet/functions/Functions.h"
#include "jet/rewrite/FieldsOfTables.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace jet {

namespace {

using namespace tree;

/// The SELECT of a query that gives one aggregate over the rows that its WHERE picks; nullptr for any other.
Select* AggregateSelect(Query& query) {
    if (query.arms.size() != 1 || !query.orderBy.empty()) return nullptr;
    Select& select = query.arms.front();
    if (select.top || !select.groupBy.empty() || select.having || !select.where || select.items.size() != 1)
        return nullptr;
    const ExpressionPtr& item = select.items.front().expression;
    const auto* call = item ? std::get_if<Call>(&item->node) : nullptr;
    const FunctionInfo* function = call != nullptr ? FindFunction(call->name) : nullptr;
    return function != nullptr && function->aggregate && function->name != "count" ? &select : nullptr;
}

bool HoldsQuery(const Expression& expression) {
    if (std::holds_alternative<ScalarQuery>(expression.node)) return true;
    bool holds = false;
    (void)VisitOperands(expression, [&](const Expression& operand) {
        holds = HoldsQuery(operand);
        return !holds;
    });
    return holds;
}

/// "inner = outer", two fields.
struct Link {
    ColumnName inner;
    ColumnName outer;
};

class GroupedAggregate final {
  public:
    GroupedAggregate(const FieldsOfTables& outer, const Catalogue& catalogue) : outer_(outer), catalogue_(catalogue) {}

    /// Changes every condition joined by And that can be.
    bool ApplyToAll(Expression& condition) const {
        auto* chain = std::get_if<Logical>(&condition.node);
        if (chain == nullptr || chain->op != LogicalOperator::And) return Apply(condition);
        bool changed = false;
        for (const ExpressionPtr& operand : chain->operands)
            changed = ApplyToAll(*operand) || changed;
        return changed;
    }

  private:
    bool Apply(Expression& condition) const {
        auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return false;
        auto* scalar = std::get_if<ScalarQuery>(&comparison->right->node);
        Select* select = scalar != nullptr ? AggregateSelect(*scalar->query) : nullptr;
        if (select == nullptr) return false;
        const FieldsOfTables inner(select->from, catalogue_);
        if (!inner.plain() || !IsOf(*select->items.front().expression, inner) || !IsOf(*comparison->left, outer_))
            return false;
        std::vector<Link> links;
        if (!ReadLinks(*select->where, inner, links) || links.empty()) return false;
        InQuery tested{false, std::move(comparison->left), std::move(scalar->query), {}};
        for (const Link& link : links)
            tested.further.push_back(MakeExpression(condition.at, link.outer));
        Group(*select, inner, links);
        condition.node = std::move(tested);
        return true;
    }

    /// True when all names are fields of these tables, and there is no inner query.
    [[nodiscard]] static bool IsOf(const Expression& expression, const FieldsOfTables& tables) {
        if (const auto* column = std::get_if<ColumnName>(&expression.node)) return tables.field(*column) != nullptr;
        return VisitOperands(expression, [&](const Expression& operand) { return IsOf(operand, tables); });
    }

    /// Collects the equalities of an inner with an outer field from a WHERE clause. False when another of its
    /// conditions reads an outer field.
    [[nodiscard]] bool ReadLinks(const Expression& where, const FieldsOfTables& inner, std::vector<Link>& links) const {
        const auto* chain = std::get_if<Logical>(&where.node);
        if (chain != nullptr && chain->op == LogicalOperator::And)
            return std::ranges::all_of(chain->operands,
                                       [&](const ExpressionPtr& each) { return ReadLinks(*each, inner, links); });
        if (IsOf(where, inner)) return true;
        std::optional<Link> link = LinkOf(where, inner);
        if (link) links.push_back(*std::move(link));
        return link.has_value();
    }

    [[nodiscard]] std::optional<Link> LinkOf(const Expression& condition, const FieldsOfTables& inner) const {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return std::nullopt;
        const auto* a = std::get_if<ColumnName>(&comparison->left->node);
        const auto* b = std::get_if<ColumnName>(&comparison->right->node);
        if (a == nullptr || b == nullptr) return std::nullopt;
        if (!inner.knows(*a)) std::swap(a, b);
        const ColumnInfo* own = inner.field(*a);
        const ColumnInfo* others = inner.knows(*b) ? nullptr : outer_.field(*b);
        if (own == nullptr || others == nullptr) return std::nullopt;
        // GROUP BY compares as the inner field does, the equality as both fields do: only of one kind they agree.
        if (KindOfColumn(own->name, own->type) != KindOfColumn(others->name, others->type)) return std::nullopt;
        return Link{*a, *b};
    }

    static void Group(Select& select, const FieldsOfTables& inner, const std::vector<Link>& links) {
        std::vector<ExpressionPtr> parts;
        TakeApart(std::move(select.where), parts);
        std::erase_if(parts, [&](const ExpressionPtr& part) { return !IsOf(*part, inner); });
        select.where = AllOf(select.at, std::move(parts));
        for (const Link& link : links) {
            SelectItem item;
            item.expression = MakeExpression(select.at, link.inner);
            item.at = select.at;
            select.items.push_back(std::move(item));
            select.groupBy.push_back(MakeExpression(select.at, link.inner));
        }
    }

    const FieldsOfTables& outer_;
    const Catalogue& catalogue_;
};

} // namespace

bool GroupCorrelatedAggregates(const std::vector<TableReferencePtr>& from, ExpressionPtr& where,
                               const Catalogue& catalogue) {
    if (!where || !HoldsQuery(*where)) return false; // checked first, since it costs less than to look at the tables
    return GroupedAggregate(FieldsOfTables(from, catalogue), catalogue).ApplyToAll(*where);
}

} // namespace jet
