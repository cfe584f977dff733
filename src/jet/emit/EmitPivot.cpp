#include "jet/emit/Emitter.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <cmath>

namespace jet {

using namespace tree;

namespace {

/// Whether a crosstab computes over whole rows of its result, beside its cells.
bool TotalsRows(const Transform& transform) {
    const Select& select = transform.query.arms.front();
    return (select.having && HoldsAggregate(*select.having)) ||
           std::ranges::any_of(
               select.items,
               [](const SelectItem& item) { return item.expression && HoldsAggregate(*item.expression); }) ||
           std::ranges::any_of(transform.query.orderBy,
                               [](const OrderItem& item) { return HoldsAggregate(*item.expression); });
}

/// A column named in the statement, of the kind of the pivot values that it is compared with.
Value FixedValue(const std::string& column, CompareKind kind) {
    const auto number = kind == CompareKind::Number ? ReadNumber(column) : std::nullopt;
    if (!number) return column;
    return *number == std::floor(*number) ? Value(ToWhole(*number)) : Value(*number);
}

} // namespace

std::string Emitter::groupTerms(const Select& select, const Scope& scope) {
    std::string terms;
    for (const ExpressionPtr& term : select.groupBy) {
        const Typed value = emit(*term, scope);
        terms += (terms.empty() ? "" : ", ") + AsValue(value) + Collate(value.kind);
    }
    return terms;
}

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
    const std::string groups = groupTerms(select, scope);
    std::string tail = groups.empty() ? std::string() : " GROUP BY " + groups;
    if (select.having) tail += " HAVING " + condition(*select.having, scope);
    const std::vector<OrderKey> keys = orderKeys(transform.query.orderBy, items(select, scope), scope);
    for (std::size_t i = 0; i < keys.size(); ++i)
        tail += (i == 0 ? " ORDER BY " : ", ") + keys[i].text();
    const std::string collation = key.caseless ? std::string() : Collate(key.kind);
    const std::string ofColumn = " FILTER (WHERE source.pivot" + collation + " IS %VALUE%)";
    // The cells are grouped first and put into their columns after: otherwise each row would be tested for every
    // column. Totals over rows can't be computed from the cells, so those queries are written the other way.
    const bool cellsFirst = !key.literal && !TotalsRows(transform);
    if (cellsFirst)
        scope.projected = nullptr;
    else
        aggregateFilter_ = ofColumn;
    const Typed value = emit(*transform.value, scope);
    aggregateFilter_.clear();

    PivotPlan plan;
    for (const std::string& column : transform.columns)
        plan.fixedValues.push_back(FixedValue(column, key.kind));
    if (!transform.columnsGiven)
        plan.valuesSql =
            "SELECT DISTINCT " + AsValue(key) + Collate(key.kind) + rest + " ORDER BY 1" + Collate(key.kind);
    plan.head = "SELECT " + heads;
    const std::string cell = cellsFirst ? "jet_first(source.cell)" + ofColumn : AsValue(value);
    plan.column = (heads.empty() ? "" : ", ") + cell + " AS %NAME%";
    std::string inner = "SELECT " + AsValue(key) + " AS pivot";
    for (std::size_t i = 0; i < fields.size(); ++i)
        inner += ", " + fields[i] + " AS c" + std::to_string(i);
    if (cellsFirst) inner += ", " + AsValue(value) + " AS cell";
    inner += rest;
    if (cellsFirst)
        inner +=
            " GROUP BY " + AsValue(key) + Collate(key.kind) + (groups.empty() ? "" : ", ") + groupTerms(select, scope);
    plan.tail = " FROM (" + inner + " LIMIT -1) AS source" + tail;
    plan.valueColumn = {{}, value.type, value.kind};
    made.pivot.push_back(std::move(plan));
    return made;
}

} // namespace jet
