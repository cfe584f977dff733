#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"
#include "jet/functions/Functions.h"
#include "jet/sql/VisitOperands.h"

namespace jet {

using namespace tree;

namespace {

/// Where the columns of an expression come from.
struct Origins {
    bool inner = false;
    bool outer = false;
    bool unknown = false; ///< subqueries, and names that stand for items
};

Origins OriginsOf(const Expression& expression, const Scope& inner) {
    Origins origins;
    const auto visit = [&](const auto& self, const Expression& each) -> bool {
        const auto* column = std::get_if<ColumnName>(&each.node);
        if (!column) return VisitOperands(each, [&](const Expression& operand) { return self(self, operand); });
        const Scope::Found found = inner.lookUp(*column, each.at);
        if (!found.source) return false;
        (found.level == &inner ? origins.inner : origins.outer) = true;
        return true;
    };
    origins.unknown = !visit(visit, expression);
    return origins;
}

/// The SELECT of a query that gives one aggregate over the rows that its WHERE picks; nullptr for any other.
const Select* AggregateSelect(const Query& query) {
    if (query.arms.size() != 1 || !query.orderBy.empty()) return nullptr;
    const Select& select = query.arms.front();
    if (select.top || !select.groupBy.empty() || select.having || !select.where || select.items.size() != 1)
        return nullptr;
    const ExpressionPtr& item = select.items.front().expression;
    const auto* call = item ? std::get_if<Call>(&item->node) : nullptr;
    // Count gives 0 where the others give Null; only Null fails every comparison.
    const bool fits = call && FindFunction(call->name)->aggregate && call->name != "count";
    return fits ? &select : nullptr;
}

void SplitByAnd(const Expression& expression, std::vector<const Expression*>& parts) {
    const auto* chain = std::get_if<Logical>(&expression.node);
    if (!chain || chain->op != LogicalOperator::And) {
        parts.push_back(&expression);
        return;
    }
    for (const ExpressionPtr& operand : chain->operands)
        SplitByAnd(*operand, parts);
}

} // namespace

std::string Emitter::conjunct(const Expression& expression, const Scope& scope) {
    std::vector<const Expression*> parts;
    SplitByAnd(expression, parts);
    std::vector<std::string> terms;
    for (const Expression* part : parts) {
        const auto* comparison = std::get_if<Comparison>(&part->node);
        auto grouped = comparison ? groupedTest(*comparison, scope) : std::nullopt;
        terms.push_back(grouped ? *std::move(grouped) : condition(*part, scope));
    }
    return terms.size() == 1 ? terms.front() : "(" + Joined(terms, " AND ") + ")";
}

// x = (SELECT Max(y) FROM t WHERE t.a = outer.a AND …) asks the whole of t for each row. Computed once for all groups,
// as (x, outer.a) IN (SELECT Max(y), a FROM t GROUP BY a), it is the same test.
std::optional<std::string> Emitter::groupedTest(const Comparison& comparison, const Scope& scope) {
    const auto* scalar = std::get_if<ScalarQuery>(&comparison.right->node);
    if (comparison.op != ComparisonOperator::Equal || !scalar || scope.projected) return std::nullopt;
    const Select* select = AggregateSelect(*scalar->query);
    if (!select) return std::nullopt;
    Scope inner;
    inner.outer = &scope;
    declare(select->from, inner);
    FromClause from = flatten(select->from, inner);
    const Expression& aggregate = *select->items.front().expression;
    const Origins ofAggregate = OriginsOf(aggregate, inner);
    const Origins ofTested = OriginsOf(*comparison.left, inner);
    if (ofAggregate.outer || ofAggregate.unknown || ofTested.unknown || from.outerJoins) return std::nullopt;

    const Typed tested = emit(*comparison.left, scope);
    const Typed given = emit(aggregate, inner);
    const Footing footing = FootingOf(tested, {&given}, false);
    std::string left = footing.shape(tested) + footing.collation;
    std::string fields = footing.shape(given);
    std::string groups;
    std::vector<const Expression*> parts;
    SplitByAnd(*select->where, parts);
    for (const Expression* part : parts) {
        const Origins origins = OriginsOf(*part, inner);
        if (!origins.unknown && !origins.outer) {
            from.conditions.push_back(condition(*part, inner));
            continue;
        }
        const auto* equality = std::get_if<Comparison>(&part->node);
        if (!equality || equality->op != ComparisonOperator::Equal) return std::nullopt;
        const Origins a = OriginsOf(*equality->left, inner);
        const Origins b = OriginsOf(*equality->right, inner);
        if (a.unknown || b.unknown || a.inner == a.outer || b.inner == b.outer || a.inner == b.inner)
            return std::nullopt;
        const Typed own = emit(a.inner ? *equality->left : *equality->right, inner);
        const Typed others = emit(a.inner ? *equality->right : *equality->left, inner);
        const Footing meeting = FootingOf(others, {&own}, false);
        left += ", " + meeting.shape(others) + meeting.collation;
        fields += ", " + meeting.shape(own);
        groups += (groups.empty() ? "" : ", ") + meeting.shape(own) + meeting.collation;
    }
    if (groups.empty()) return std::nullopt;
    std::string query = "SELECT " + fields + " FROM " + fromText(from, inner);
    for (std::size_t i = 0; i < from.conditions.size(); ++i)
        query += (i == 0 ? " WHERE " : " AND ") + from.conditions[i];
    return "((" + left + ") IN (" + query + " GROUP BY " + groups + "))";
}

} // namespace jet
