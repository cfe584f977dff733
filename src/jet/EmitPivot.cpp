#include "jet/Emitter.h"
#include "jet/Error.h"
#include "jet/Functions.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

/// The aggregate that a crosstab's value must be; what it computes over.
const Call& AggregateOf(const Expression& value) {
    const auto* call = std::get_if<Call>(&value.node);
    if (!call || !FindFunction(call->name)->aggregate) FailAt(value.at, "The value of a crosstab must be an aggregate");
    return *call;
}

} // namespace

// Values are computed once for each pair of row and column head; the columns are then laid side by side over that much
// smaller result, so that the cost doesn't grow with rows times columns.
Translation Emitter::statement(const Transform& transform) {
    if (transform.query.arms.size() != 1) FailAt(transform.pivot->at, "A crosstab takes one query, no union");
    const Select& select = transform.query.arms.front();
    if (!select.into.empty()) FailAt(select.at, "A crosstab can't make a table");
    Scope scope;
    declare(select.from, scope);
    const std::vector<Item> heads = items(select, scope);
    AggregateOf(*transform.value);
    const Typed value = emit(*transform.value, scope);
    const Typed key = emit(*transform.pivot, scope);
    const std::string rest = fromWhere(select.from, select.where.get(), scope);

    std::string inner = "SELECT ";
    std::string groups;
    std::string outer;
    std::string outerGroups;
    Translation made;
    for (std::size_t i = 0; i < heads.size(); ++i) {
        const std::string label = "\"h" + std::to_string(i) + "\"";
        const Typed& head = heads[i].value;
        inner += AsValue(head) + " AS " + label + ", ";
        groups += (groups.empty() ? "" : ", ") + AsValue(head) + Collate(head.kind);
        outer += (outer.empty() ? "" : ", ") + label + " AS " + QuotedName(heads[i].name);
        outerGroups += (outerGroups.empty() ? "" : ", ") + label + Collate(head.kind);
        made.columns.push_back({heads[i].name, head.type, head.kind});
    }
    inner += AsValue(key) + " AS \"k\", " + AsValue(value) + " AS \"v\"" + rest + " GROUP BY " + groups +
             (groups.empty() ? "" : ", ") + AsValue(key) + Collate(key.kind);
    if (select.having) inner += " HAVING " + condition(*select.having, scope);

    PivotPlan plan;
    plan.fixedValues = transform.columns;
    if (!transform.columnsGiven)
        plan.valuesSql = "SELECT DISTINCT " + AsValue(key) + Collate(key.kind) + " AS \"k\"" + rest + " ORDER BY 1";
    plan.head = "WITH \"jet$p\" AS MATERIALIZED (" + inner + ") SELECT " + outer;
    plan.column = std::string(outer.empty() ? "" : ", ") + "MAX(CASE WHEN \"k\" IS %VALUE%" + Collate(key.kind) +
                  " THEN \"v\" END) AS %NAME%";
    plan.tail = " FROM \"jet$p\"" + (outerGroups.empty() ? std::string() : " GROUP BY " + outerGroups);
    std::string order;
    for (const OrderItem& item : transform.query.orderBy) {
        const Typed term = emit(*item.expression, scope);
        for (std::size_t i = 0; i < heads.size(); ++i) {
            if (AsValue(heads[i].value) != AsValue(term)) continue;
            order += (order.empty() ? " ORDER BY " : ", ") + std::string("\"h") + std::to_string(i) + "\"" +
                     Collate(term.kind) + (item.descending ? " DESC" : "");
        }
    }
    plan.tail += order.empty() && !outerGroups.empty() ? " ORDER BY " + outerGroups : order;
    plan.valueColumn = {{}, value.type, value.kind};
    made.pivot.push_back(std::move(plan));
    return made;
}

} // namespace jet
