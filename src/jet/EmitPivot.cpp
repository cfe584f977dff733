#include "jet/Emitter.h"
#include "jet/Error.h"

namespace jet {

using namespace tree;

// One derived table gives the fields that the crosstab needs and the pivot value, computed once for each row. LIMIT -1
// keeps SQLite from folding it into the outer query, where the pivot value would be computed anew for each column.
Translation Emitter::statement(const Transform& transform) {
    if (transform.query.arms.size() != 1) FailAt(transform.pivot->at, "A crosstab takes one query, no union");
    const Select& select = transform.query.arms.front();
    if (!select.into.empty()) FailAt(select.at, "A crosstab can't make a table");
    if (!HoldsAggregate(*transform.value)) FailAt(transform.value->at, "The value of a crosstab must be an aggregate");
    Scope scope;
    declare(select.from, scope);
    scope.items = &select.items;
    Translation made;
    for (const Item& head : items(select, scope))
        made.columns.push_back({head.name, head.value.type, head.value.kind});
    const Typed key = emit(*transform.pivot, scope);
    const std::string rest = fromWhere(select.from, select.where.get(), scope);

    std::vector<std::string> fields;
    scope.projected = &fields;
    std::string heads;
    for (const Item& head : items(select, scope))
        heads += (heads.empty() ? "" : ", ") + AsValue(head.value) + " AS " + QuotedName(head.name);
    std::string tail;
    for (const ExpressionPtr& term : select.groupBy) {
        const Typed group = emit(*term, scope);
        tail += (tail.empty() ? " GROUP BY " : ", ") + AsValue(group) + Collate(group.kind);
    }
    if (select.having) tail += " HAVING " + condition(*select.having, scope);
    const std::vector<OrderKey> keys = orderKeys(transform.query.orderBy, items(select, scope), scope);
    for (std::size_t i = 0; i < keys.size(); ++i)
        tail += (i == 0 ? " ORDER BY " : ", ") + keys[i].text();
    const std::string collation = key.caseless ? std::string() : Collate(key.kind);
    aggregateFilter_ = " FILTER (WHERE source.pivot" + collation + " IS %VALUE%)";
    const Typed value = emit(*transform.value, scope);
    aggregateFilter_.clear();

    PivotPlan plan;
    plan.fixedValues = transform.columns;
    if (!transform.columnsGiven)
        plan.valuesSql =
            "SELECT DISTINCT " + AsValue(key) + Collate(key.kind) + rest + " ORDER BY 1" + Collate(key.kind);
    plan.head = "SELECT " + heads;
    plan.column = (heads.empty() ? "" : ", ") + AsValue(value) + " AS %NAME%";
    std::string inner = "SELECT " + AsValue(key) + " AS pivot";
    for (std::size_t i = 0; i < fields.size(); ++i)
        inner += ", " + fields[i] + " AS c" + std::to_string(i);
    plan.tail = " FROM (" + inner + rest + " LIMIT -1) AS source" + tail;
    plan.valueColumn = {{}, value.type, value.kind};
    made.pivot.push_back(std::move(plan));
    return made;
}

} // namespace jet
