#include "jet/emit/Emitter.h"
#include "jet/values/Error.h"

namespace jet {

using namespace tree;

void Emitter::declare(const std::vector<TableReferencePtr>& from, Scope& scope) {
    for (const TableReferencePtr& each : from)
        declare(*each, scope);
}

// Sources stand in the order in which the statement names them; a star gives their fields in that order.
void Emitter::declare(const TableReference& reference, Scope& scope) {
    if (const auto* join = std::get_if<tree::Join>(&reference.node)) {
        declare(*join->left, scope);
        declare(*join->right, scope);
        return;
    }
    Source source;
    source.number = ++sources_;
    if (const auto* named = std::get_if<NamedTable>(&reference.node)) {
        source.alias = named->alias;
        source.table = &TableNamed(catalogue_, named->name);
        source.sql = TableSql(*source.table) + " AS " + QuotedName(source.alias);
        for (const ColumnInfo& column : source.table->columns)
            source.columns.push_back({column.name, column.type, KindOfColumn(column.name, column.type)});
    } else if (const auto* scan = std::get_if<ScanTable>(&reference.node)) {
        declareScan(*scan, source);
    } else {
        const auto& derived = std::get<DerivedTable>(reference.node);
        SelectText inner = emitQuery(*derived.query, scope.outer);
        source.alias = derived.alias;
        source.sql = "(" + inner.sql + ") AS " + QuotedName(source.alias);
        source.columns = std::move(inner.columns);
    }
    for (const Source& each : scope.sources)
        if (SameName(each.alias, source.alias))
            FailAt(reference.at, "Two tables of the statement are called '" + source.alias + "'");
    scope.sources.push_back(std::move(source));
}

Emitter::FromClause Emitter::flatten(const std::vector<TableReferencePtr>& from, const Scope& scope) {
    FromClause all;
    std::size_t next = 0;
    for (const TableReferencePtr& each : from) {
        FromClause part = flatten(*each, scope, next);
        std::move(part.order.begin(), part.order.end(), std::back_inserter(all.order));
        std::move(part.conditions.begin(), part.conditions.end(), std::back_inserter(all.conditions));
        all.outerJoins = all.outerJoins || part.outerJoins;
    }
    return all;
}

// Inner joins, whatever their brackets, become one list of tables with the conditions in WHERE: SQLite then chooses the
// order of the tables, and builds no intermediate table. A RIGHT JOIN is written as a LEFT JOIN with the sides swapped.
Emitter::FromClause Emitter::flatten(const TableReference& reference, const Scope& scope, std::size_t& next) {
    const auto* join = std::get_if<tree::Join>(&reference.node);
    if (!join) {
        FromClause one;
        one.order.push_back({next++, {}, {}});
        return one;
    }
    FromClause left = flatten(*join->left, scope, next);
    FromClause right = flatten(*join->right, scope, next);
    const std::string on = condition(*join->on, scope);
    if (join->kind == JoinKind::Inner) {
        std::move(right.order.begin(), right.order.end(), std::back_inserter(left.order));
        std::move(right.conditions.begin(), right.conditions.end(), std::back_inserter(left.conditions));
        left.conditions.push_back(on);
        left.outerJoins = left.outerJoins || right.outerJoins;
        return left;
    }
    if (join->kind == JoinKind::Right) std::swap(left, right);
    Join outer;
    if (right.order.size() == 1 && right.order[0].text.empty()) {
        outer.source = right.order[0].source;
        outer.text = scope.sources[outer.source].sql;
    } else {
        std::string group = fromText(right, scope);
        // Within brackets a condition of its inner joins is a condition of the whole.
        outer.text = "(" + group + ")";
    }
    outer.on = on;
    for (const std::string& each : right.conditions)
        outer.on += " AND " + each;
    left.order.push_back(std::move(outer));
    left.outerJoins = true;
    return left;
}

std::string Emitter::fromText(const FromClause& from, const Scope& scope) {
    std::string text;
    for (const Join& join : from.order) {
        if (!join.on.empty()) {
            text += " LEFT JOIN " + join.text + " ON " + join.on;
        } else {
            text += (text.empty() ? "" : " JOIN ") + scope.sources[join.source].sql;
        }
    }
    return text;
}

std::string Emitter::fromWhere(const std::vector<TableReferencePtr>& from, const Expression* where,
                               const Scope& scope) {
    std::string text;
    FromClause flat = flatten(from, scope);
    if (!flat.order.empty()) text = " FROM " + fromText(flat, scope);
    if (where) flat.conditions.push_back(condition(*where, scope));
    for (std::size_t i = 0; i < flat.conditions.size(); ++i)
        text += (i == 0 ? " WHERE " : " AND ") + flat.conditions[i];
    return text;
}

} // namespace jet
