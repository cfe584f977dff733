#include "jet/Emitter.h"
#include "jet/Error.h"
#include "jet/Functions.h"

#include <algorithm>
#include <cstdlib>

namespace jet {

using namespace tree;

namespace {

bool HoldsAggregate(const Expression& expression);

bool HoldsAggregate(const std::vector<ExpressionPtr>& expressions) {
    return std::ranges::any_of(expressions, [](const ExpressionPtr& each) { return HoldsAggregate(*each); });
}

/// True when the expression computes over groups of rows; inner queries have groups of their own.
bool HoldsAggregate(const Expression& expression) {
    return std::visit(
        [](const auto& node) {
            using Node = std::decay_t<decltype(node)>;
            if constexpr (std::is_same_v<Node, Call>) {
                return FindFunction(node.name)->aggregate || HoldsAggregate(node.arguments);
            } else if constexpr (std::is_same_v<Node, Arithmetic> || std::is_same_v<Node, Comparison>) {
                return HoldsAggregate(*node.left) || HoldsAggregate(*node.right);
            } else if constexpr (std::is_same_v<Node, Logical>) {
                return HoldsAggregate(node.operands);
            } else if constexpr (std::is_same_v<Node, Negation> || std::is_same_v<Node, Not> ||
                                 std::is_same_v<Node, IsNull> || std::is_same_v<Node, InQuery>) {
                return HoldsAggregate(*node.operand);
            } else if constexpr (std::is_same_v<Node, Between>) {
                return HoldsAggregate(*node.operand) || HoldsAggregate(*node.low) || HoldsAggregate(*node.high);
            } else if constexpr (std::is_same_v<Node, Like>) {
                return HoldsAggregate(*node.operand) || HoldsAggregate(*node.pattern);
            } else if constexpr (std::is_same_v<Node, InList>) {
                return HoldsAggregate(*node.operand) || HoldsAggregate(node.values);
            } else {
                return false;
            }
        },
        expression.node);
}

bool HasGroups(const Select& select) {
    return !select.groupBy.empty() || select.having || std::ranges::any_of(select.items, [](const SelectItem& item) {
        return item.expression && HoldsAggregate(*item.expression);
    });
}

/// Two fields of one name are told apart by their tables; what has no name is numbered.
template <class Items> void NameItems(Items& items) {
    int unnamed = 1000;
    for (auto& item : items)
        if (item.name.empty() && !item.source) item.name = "Expr" + std::to_string(unnamed++);
    std::vector<std::string> names;
    for (auto& item : items)
        names.push_back(item.name);
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto same = [&](const std::string& name) { return SameName(name, names[i]); };
        if (items[i].source && std::ranges::count_if(names, same) > 1)
            items[i].name = items[i].source->alias + "." + names[i];
    }
}

} // namespace

std::vector<Emitter::Item> Emitter::items(const Select& select, const Scope& scope) {
    std::vector<Item> made;
    const auto addFields = [&](const Source& source) {
        for (std::size_t i = 0; i < source.columns.size(); ++i)
            made.push_back({{source.columnSql(i), source.columns[i].kind, source.columns[i].type},
                            source.columns[i].name,
                            &source});
    };
    for (const SelectItem& item : select.items) {
        if (item.expression) {
            Item one{emit(*item.expression, scope), item.alias, nullptr};
            const auto* column = std::get_if<ColumnName>(&item.expression->node);
            if (column && item.alias.empty()) {
                const Scope::Found found = scope.resolve(*column, item.at);
                one.name = found.source->columns[found.column].name;
                one.source = found.source;
            }
            made.push_back(std::move(one));
        } else if (!item.starTable.empty()) {
            const Source* source = scope.source(item.starTable);
            if (!source) FailAt(item.at, "There is no table '" + item.starTable + "' in the statement");
            addFields(*source);
        } else {
            if (scope.sources.empty()) FailAt(item.at, "A * needs a table");
            for (const Source& source : scope.sources)
                addFields(source);
        }
    }
    NameItems(made);
    return made;
}

std::string Emitter::itemList(const std::vector<Item>& items, bool collated) const {
    std::string list;
    for (const Item& item : items)
        list += (list.empty() ? "" : ", ") + AsValue(item.value) + (collated ? Collate(item.value.kind) : "") + " AS " +
                QuotedName(item.name);
    return list;
}

std::string Emitter::groupBy(const Select& select, const std::vector<Item>& items, const Scope& scope) {
    std::string list;
    const auto add = [&](const std::string& term) { list += (list.empty() ? " GROUP BY " : ", ") + term; };
    for (const ExpressionPtr& term : select.groupBy) {
        const Typed value = emit(*term, scope);
        add(AsValue(value) + Collate(value.kind));
    }
    if (select.duplicates != Duplicates::DropEqualRows || !select.groupBy.empty() || HasGroups(select)) return list;
    // One row for each combination of rows of the tables that give fields, if another table could repeat them.
    std::vector<const Source*> giving;
    for (const SelectItem& item : select.items) {
        for (const Source& source : scope.sources) {
            const bool gives = !item.expression
                                   ? item.starTable.empty() || SameName(item.starTable, source.alias)
                                   : std::ranges::any_of(items, [&](const Item& one) { return one.source == &source; });
            if (gives && std::ranges::find(giving, &source) == giving.end()) giving.push_back(&source);
        }
    }
    const bool haveRows = std::ranges::all_of(giving, [](const Source* source) { return source->table != nullptr; });
    if (giving.empty() || !haveRows || giving.size() == scope.sources.size()) return list;
    for (const Source* source : giving)
        add(source->rowId());
    return list;
}

std::string Emitter::orderText(const std::vector<OrderItem>& orderBy, const std::vector<Item>& items,
                               const Scope& scope, bool byPosition) {
    std::string list;
    for (const OrderItem& item : orderBy) {
        const auto* number = std::get_if<NumberLiteral>(&item.expression->node);
        const auto* column = std::get_if<ColumnName>(&item.expression->node);
        std::size_t position = items.size();
        if (number) {
            position = static_cast<std::size_t>(std::atol(number->text.c_str()) - 1);
            if (position >= items.size()) FailAt(item.expression->at, "There is no field of this number to sort by");
        } else if (column) {
            // A union sorts by its result; elsewhere a field of a table comes first, then a name of the result.
            const auto named =
                std::ranges::find_if(items, [&](const Item& one) { return SameName(one.name, column->name); });
            const bool isField = std::ranges::any_of(
                scope.sources, [&](const Source& source) { return source.find(column->name) >= 0; });
            if (byPosition || (column->table.empty() && !isField))
                position = static_cast<std::size_t>(named - items.begin());
        }
        std::string term;
        if (position < items.size()) {
            term = byPosition ? std::to_string(position + 1) : AsValue(items[position].value);
            term += Collate(items[position].value.kind);
        } else if (byPosition) {
            FailAt(item.expression->at, "A union can be sorted by its fields alone");
        } else {
            const Typed value = emit(*item.expression, scope);
            term = AsValue(value) + Collate(value.kind);
        }
        list += (list.empty() ? "" : ", ") + term + (item.descending ? " DESC" : "");
    }
    return list;
}

// TOP counts rows that tie with the last one in.
std::string Emitter::topText(const Top& top, const std::string& fields, const std::string& tail,
                             const std::vector<Item>& items, const std::string& order) {
    std::string names;
    for (const Item& item : items)
        names += (names.empty() ? "" : ", ") + QuotedName(item.name);
    const std::string limit = top.percent ? "(\"jet$all\" * " + top.count + " + 99) / 100" : top.count;
    return "SELECT " + names + " FROM (SELECT " + fields + ", RANK() OVER (ORDER BY " + order + ") AS \"jet$rank\"" +
           (top.percent ? ", COUNT(*) OVER () AS \"jet$all\"" : "") + tail + ") WHERE \"jet$rank\" <= " + limit +
           " ORDER BY \"jet$rank\"";
}

Emitter::SelectText Emitter::emitSelect(const Select& select, const std::vector<OrderItem>& orderBy, const Scope* outer,
                                        bool inUnion) {
    Scope scope;
    scope.outer = outer;
    declare(select.from, scope);
    const std::vector<Item> made = items(select, scope);
    const bool distinct = select.duplicates == Duplicates::DropEqualValues;
    const std::string rest = fromWhere(select.from, select.where.get(), scope);
    std::string tail = rest + groupBy(select, made, scope);
    if (select.having) tail += " HAVING " + condition(*select.having, scope);

    SelectText text;
    for (const Item& item : made)
        text.columns.push_back({item.name, item.value.type, item.value.kind});
    const std::string head = distinct ? "SELECT DISTINCT " : "SELECT ";
    const std::string order = orderText(orderBy, made, scope, false);
    if (select.top && !order.empty() && !distinct) {
        text.sql = topText(*select.top, itemList(made, false), tail, made, order);
        return text;
    }
    text.sql = head + itemList(made, distinct || inUnion) + tail;
    if (!order.empty()) text.sql += " ORDER BY " + order;
    if (select.top && select.top->percent)
        text.sql = "SELECT * FROM (" + text.sql + ") LIMIT (SELECT (COUNT(*) * " + select.top->count +
                   " + 99) / 100 FROM (" + text.sql + "))";
    else if (select.top)
        text.sql += " LIMIT " + select.top->count;
    return text;
}

Emitter::SelectText Emitter::emitQuery(const Query& query, const Scope* outer) {
    if (query.arms.size() == 1) return emitSelect(query.arms.front(), query.orderBy, outer, false);
    SelectText all;
    for (std::size_t i = 0; i < query.arms.size(); ++i) {
        SelectText arm = emitSelect(query.arms[i], {}, outer, true);
        if (i == 0) {
            all.columns = arm.columns;
        } else if (arm.columns.size() != all.columns.size()) {
            FailAt(query.arms[i].at, "The queries of a union must have equally many fields");
        }
        for (std::size_t c = 0; i > 0 && c < all.columns.size(); ++c) {
            // A constant of the first query says little of what the others hold.
            if (all.columns[c].type == ColumnType::Unknown)
                all.columns[c] = {all.columns[c].name, arm.columns[c].type, arm.columns[c].kind};
        }
        if (query.arms[i].top) arm.sql = "SELECT * FROM (" + arm.sql + ")";
        all.sql += (i == 0 ? "" : query.keepAll[i - 1] ? " UNION ALL " : " UNION ") + arm.sql;
    }
    if (query.orderBy.empty()) return all;
    std::vector<Item> results;
    for (const OutputColumn& column : all.columns)
        results.push_back({{{}, column.kind, column.type}, column.name, nullptr});
    // SQLite loses sight of the tables of grouped arms when the union itself is sorted.
    all.sql = "SELECT * FROM (" + all.sql + ") ORDER BY " + orderText(query.orderBy, results, Scope{}, true);
    return all;
}

} // namespace jet
