#include "jet/emit/Emitter.h"
#include "jet/functions/Functions.h"
#include "jet/sql/VisitOperands.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <cstdlib>

namespace jet {

using namespace tree;

bool HoldsAggregate(const Expression& expression) {
    const auto* const call = std::get_if<Call>(&expression.node);
    if (call && FindFunction(call->name)->aggregate) return true;
    if (const auto* const scanned = std::get_if<ScannedAggregate>(&expression.node)) return !scanned->whole;
    // The query after IN has groups of its own; the left operand belongs to this query.
    if (const auto* const in = std::get_if<InQuery>(&expression.node)) return HoldsAggregate(*in->operand);
    if (const auto* const each = std::get_if<Quantified>(&expression.node)) return HoldsAggregate(*each->operand);
    bool holds = false;
    (void)VisitOperands(expression, [&](const Expression& operand) {
        holds = HoldsAggregate(operand);
        return !holds;
    });
    return holds;
}

namespace {

bool HasGroups(const Select& select) {
    return !select.groupBy.empty() || select.having || std::ranges::any_of(select.items, [](const SelectItem& item) {
        return item.expression && HoldsAggregate(*item.expression);
    });
}

/// The names of the result: two fields of one name get their table's name before it, expressions get a number.
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

/// The type of a field that can hold the values of both.
OutputColumn Common(const OutputColumn& a, const OutputColumn& b) {
    if (a.type == ColumnType::Unknown) return {a.name, b.type, b.kind};
    if (b.type == ColumnType::Unknown) return a;
    OutputColumn common = a;
    const bool numbers = a.kind == CompareKind::Number && b.kind == CompareKind::Number;
    const bool value = a.kind == CompareKind::ValueText || b.kind == CompareKind::ValueText;
    if (a.kind != b.kind) {
        const bool mixed = a.kind == CompareKind::Number || b.kind == CompareKind::Number;
        common.kind = value || mixed ? CompareKind::ValueText : CompareKind::Text;
    }
    if (a.type != b.type) common.type = numbers ? ColumnType::Double : ColumnType::Text;
    return common;
}

// The ORDER BY of a union names its field by position: the output fields already have a collation, and SQLite refuses a
// second one there.
std::size_t UnionPosition(const OrderItem& item, const std::vector<OutputColumn>& columns) {
    const Expression& expression = *item.expression;
    std::size_t position = 0;
    if (const auto* number = std::get_if<NumberLiteral>(&expression.node))
        position = static_cast<std::size_t>(std::atol(number->text.c_str()));
    if (const auto* column = std::get_if<ColumnName>(&expression.node)) {
        const auto named =
            std::ranges::find_if(columns, [&](const OutputColumn& each) { return SameName(each.name, column->name); });
        position = named == columns.end() ? 0 : static_cast<std::size_t>(named - columns.begin()) + 1;
    }
    if (position < 1 || position > columns.size()) FailAt(expression.at, "A union can be sorted by its fields alone");
    return position;
}

} // namespace

std::vector<Emitter::Item> Emitter::items(const Select& select, const Scope& scope) {
    std::vector<Item> made;
    const auto addFields = [&](const Source& source) {
        for (std::size_t i = 0; i < source.columns.size(); ++i)
            made.push_back({Field(scope, source, i), source.columns[i].name, &source, i, nullptr, 0, 0});
    };
    for (const SelectItem& item : select.items) {
        if (item.expression) {
            const std::size_t before = read_.size();
            Item one{emit(*item.expression, scope), item.alias, nullptr,     0,
                     item.expression.get(),         before,     read_.size()};
            const auto* column = std::get_if<ColumnName>(&item.expression->node);
            if (column && item.alias.empty() && scope.lookUp(*column, item.at).source) {
                const Scope::Found found = scope.resolve(*column, item.at);
                one.name = found.source->columns[found.column].name;
                one.source = found.source;
                one.column = found.column;
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
    // "SELECT *, *" of an inner query of the same kind doubles the fields at each level.
    constexpr std::size_t kMostFields = 2000;
    if (made.size() > kMostFields) FailAt(select.at, "The query has too many fields");
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

bool Emitter::Read(const Source& source, std::size_t before, std::size_t after) const {
    return std::ranges::find(read_.begin() + static_cast<std::ptrdiff_t>(before),
                             read_.begin() + static_cast<std::ptrdiff_t>(after),
                             source.number) != read_.begin() + static_cast<std::ptrdiff_t>(after);
}

std::string Emitter::groupBy(const Select& select, const std::vector<Item>& items, const Scope& scope) {
    const std::string terms = groupTerms(select, scope);
    std::string list = terms.empty() ? terms : " GROUP BY " + terms;
    if (select.duplicates != Duplicates::DropEqualRows || !select.groupBy.empty() || HasGroups(select)) return list;
    // One row for each combination of rows of the tables that give fields, if another table could repeat them.
    std::vector<const Source*> giving;
    for (const Source& source : scope.sources) {
        const auto gives = [&](const Item& item) {
            return item.source == &source || Read(source, item.readBefore, item.readAfter);
        };
        if (std::ranges::any_of(items, gives)) giving.push_back(&source);
    }
    const bool haveRows = std::ranges::all_of(giving, [](const Source* source) { return source->table != nullptr; });
    if (giving.empty() || !haveRows || giving.size() == scope.sources.size()) return list;
    // The unary plus keeps SQLite from reading the whole table by an index only because that gives the order.
    for (const Source* source : giving)
        list += (list.empty() ? " GROUP BY +" : ", +") + source->rowId();
    return list;
}

// A counter has no equal values, so no two rows are equal in the order.
bool Emitter::SortsByCounter(const Select& select, const Scope& scope, const std::vector<OrderKey>& keys) {
    return scope.sources.size() == 1 && !HasGroups(select) && std::ranges::any_of(keys, [](const OrderKey& key) {
               return key.value.column && key.value.type == ColumnType::Counter;
           });
}

std::string Emitter::OrderKey::text() const {
    // A bare constant would be taken for a position.
    const std::string key = value.literal ? "(" + value.sql + " + 0)" : AsValue(value) + Collate(value.kind);
    return key + (descending ? " DESC" : "");
}

// A number is a position. A field of a table comes first, then a name of the result.
std::vector<Emitter::OrderKey> Emitter::orderKeys(const std::vector<OrderItem>& orderBy, const std::vector<Item>& items,
                                                  const Scope& scope) {
    std::vector<OrderKey> keys;
    for (const OrderItem& item : orderBy) {
        const Expression& expression = *item.expression;
        const auto* column = std::get_if<ColumnName>(&expression.node);
        const auto named = std::ranges::find_if(items, [&](const Item& one) {
            return column && column->table.empty() && SameName(one.name, column->name);
        });
        if (const auto* number = std::get_if<NumberLiteral>(&expression.node)) {
            const long position = std::atol(number->text.c_str());
            if (position < 1 || position > static_cast<long>(items.size()))
                FailAt(expression.at, "There is no field of this number to sort by");
            keys.push_back({items[static_cast<std::size_t>(position - 1)].value, item.descending, true});
        } else if (named != items.end() && !scope.lookUp(*column, expression.at).source) {
            keys.push_back({named->value, item.descending, true});
        } else {
            keys.push_back({emit(expression, scope), item.descending, false});
        }
    }
    return keys;
}

// A number to sort by is read from its text once a row, not at every comparison.
void Emitter::KeyValues(std::vector<OrderKey>& keys) {
    for (OrderKey& key : keys) {
        if (!key.value.column || key.value.kind != CompareKind::ValueText) continue;
        key.value = {"jet_sortkey(" + key.value.sql + ")", CompareKind::Text, ColumnType::Text};
    }
}

// TOP takes the rows that tie with the last one, too.
std::string Emitter::topText(const Select& select, const std::string& fields, const std::string& tail,
                             const std::vector<Item>& items, const std::vector<OrderKey>& keys) {
    const bool distinct = select.duplicates == Duplicates::DropEqualValues;
    std::string inner = (distinct ? "SELECT DISTINCT " : "SELECT ") + fields;
    std::string order;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::string name = "\"jet$k" + std::to_string(i) + "\"";
        inner += ", " + AsValue(keys[i].value) + Collate(keys[i].value.kind) + " AS " + name;
        order += (order.empty() ? "" : ", ") + name + Collate(keys[i].value.kind) + (keys[i].descending ? " DESC" : "");
    }
    std::string names;
    for (const Item& item : items)
        names += (names.empty() ? "" : ", ") + QuotedName(item.name);
    const bool percent = select.top->percent;
    const std::string rank = keys.empty() ? "ROW_NUMBER() OVER ()" : "RANK() OVER (ORDER BY " + order + ")";
    const std::string limit = percent ? "(\"jet$all\" * " + select.top->count + " + 99) / 100" : select.top->count;
    return "SELECT " + names + " FROM (SELECT *, " + rank + " AS \"jet$rank\"" +
           (percent ? ", COUNT(*) OVER () AS \"jet$all\"" : "") + " FROM (" + inner + tail +
           ")) WHERE \"jet$rank\" <= " + limit + " ORDER BY \"jet$rank\"";
}

Emitter::ReadSelect Emitter::readSelect(const Select& select, const std::vector<OrderItem>& orderBy,
                                        const Scope* outer) {
    ReadSelect read{&select, std::make_unique<Scope>(), {}, {}, {}};
    Scope& scope = *read.scope;
    scope.outer = outer;
    declare(select.from, scope);
    scope.items = &select.items;
    read.items = items(select, scope);
    read.tail = fromWhere(select.from, select.where.get(), scope);
    read.tail += groupBy(select, read.items, scope);
    if (select.having) read.tail += " HAVING " + condition(*select.having, scope);
    read.keys = orderKeys(orderBy, read.items, scope);
    const bool distinct = select.duplicates == Duplicates::DropEqualValues;
    // DISTINCT and GROUP BY sort the rows already, in the order of the collation.
    if (!distinct && !HasGroups(select)) KeyValues(read.keys);
    if (HasGroups(select)) CheckGroups(select, orderBy, scope);
    if (distinct) checkDistinctOrder(orderBy, read.keys, read.items, scope);
    return read;
}

std::vector<OutputColumn> Emitter::ReadSelect::columns() const {
    std::vector<OutputColumn> all;
    for (const Item& item : items)
        all.push_back({item.name, item.value.type, item.value.kind});
    return all;
}

// Numbers found one by one, as far as they are few; the rest of very many are read as they come.
std::string Emitter::jumpsText(const ReadSelect& read) {
    const std::string most = "20000";
    const std::string& number = read.items.front().value.sql;
    const std::string least = "SELECT MIN(" + number + ")" + read.tail;
    const std::string found = "\"jet$found\"";
    return "WITH RECURSIVE " + found + "(n) AS MATERIALIZED (" + least + " UNION ALL SELECT (" + least + " WHERE " +
           number + " > n) FROM " + found + " WHERE n IS NOT NULL LIMIT " + most + ") SELECT NULL AS " +
           QuotedName(read.items.front().name) + " WHERE EXISTS (SELECT 1" + read.tail + " WHERE " + number +
           " IS NULL) UNION ALL SELECT n FROM " + found + " WHERE n IS NOT NULL UNION ALL SELECT DISTINCT " + number +
           read.tail + " WHERE " + number + " > (SELECT CASE COUNT(n) WHEN " + most + " THEN MAX(n) END FROM " + found +
           ")";
}

std::string Emitter::written(const ReadSelect& read, bool collated) const {
    const Select& select = *read.select;
    if (select.byJumps) return jumpsText(read);
    const bool distinct = select.duplicates == Duplicates::DropEqualValues;
    const std::string fields = itemList(read.items, distinct || collated);
    const bool ranked =
        select.top && (select.top->percent || (!read.keys.empty() && !SortsByCounter(select, *read.scope, read.keys)));
    if (ranked) return topText(select, fields, read.tail, read.items, read.keys);
    std::string sql = (distinct ? "SELECT DISTINCT " : "SELECT ") + fields + read.tail;
    for (std::size_t i = 0; i < read.keys.size(); ++i)
        sql += (i == 0 ? " ORDER BY " : ", ") + read.keys[i].text();
    if (select.top) sql += " LIMIT " + select.top->count;
    return sql;
}

Emitter::SelectText Emitter::emitQuery(const Query& query, const Scope* outer) {
    if (query.arms.size() > 1) return emitUnion(query, outer);
    const ReadSelect read = readSelect(query.arms.front(), query.orderBy, outer);
    return {written(read, false), read.columns()};
}

// A union compares by the collations of its first query, which therefore must suit the fields of the others.
Emitter::SelectText Emitter::emitUnion(const Query& query, const Scope* outer) {
    SelectText all;
    std::vector<ReadSelect> arms;
    for (const Select& arm : query.arms) {
        arms.push_back(readSelect(arm, {}, outer));
        const std::vector<OutputColumn> columns = arms.back().columns();
        if (all.columns.empty()) all.columns = columns;
        if (columns.size() != all.columns.size())
            FailAt(arm.at, "The queries of a union must have equally many fields");
        for (std::size_t c = 0; c < columns.size(); ++c)
            all.columns[c] = Common(all.columns[c], columns[c]);
    }
    for (std::size_t i = 0; i < arms.size(); ++i) {
        for (std::size_t c = 0; c < all.columns.size(); ++c)
            arms[i].items[c].value.kind = all.columns[c].kind;
        std::string arm = written(arms[i], true);
        if (query.arms[i].top) arm = "SELECT * FROM (" + arm + ")";
        all.sql += (i == 0 ? "" : query.keepAll[i - 1] ? " UNION ALL " : " UNION ") + arm;
    }
    for (std::size_t i = 0; i < query.orderBy.size(); ++i)
        all.sql += (i == 0 ? " ORDER BY " : ", ") + std::to_string(UnionPosition(query.orderBy[i], all.columns)) +
                   (query.orderBy[i].descending ? " DESC" : "");
    return all;
}

} // namespace jet
