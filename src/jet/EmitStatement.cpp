#include "jet/Comparing.h"
#include "jet/Emitter.h"
#include "jet/Error.h"
#include "jet/Parser.h"
#include "jet/SemiJoin.h"

#include <algorithm>
#include <utility>

namespace jet {

using namespace tree;

namespace {

/// Position of a field of a table. Throws NoSuchColumn.
std::size_t FieldOf(const TableInfo& table, const std::string& name) {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (SameName(table.columns[i].name, name)) return i;
    throw Error(ErrorNumber::NoSuchColumn, "Table '" + table.name + "' has no field '" + name + "'.");
}

// Without a list of fields, a query's fields go where their names say, or else, as values do, in the order of the
// table.
std::vector<std::size_t> FieldsToFill(const Insert& insert, const TableInfo& table,
                                      const std::vector<OutputColumn>& given, std::size_t count) {
    std::vector<std::size_t> fields;
    for (const std::string& name : insert.columns)
        fields.push_back(FieldOf(table, name));
    if (!insert.columns.empty()) return fields;
    const bool byName = insert.query && std::ranges::all_of(given, [&](const OutputColumn& each) {
                            return table.column(each.name) != nullptr;
                        });
    if (!byName && count > table.columns.size()) FailAt(insert.at, "There are more values than fields");
    for (std::size_t i = 0; i < count; ++i)
        fields.push_back(byName ? FieldOf(table, given[i].name) : i);
    return fields;
}

// Text is unique and searched ignoring case; NOCASE is known to every program that reads the file.
std::string KeyField(const std::string& name, ColumnType type) {
    return QuotedName(name) + (KindOfColumn(name, type) == CompareKind::Number ? "" : " COLLATE NOCASE");
}

const ColumnDefinition& DefinedColumn(const CreateTable& create, const std::string& name) {
    for (const ColumnDefinition& each : create.columns)
        if (SameName(each.name, name)) return each;
    throw Error(ErrorNumber::NoSuchColumn, "Table '" + create.table + "' has no field '" + name + "'.");
}

bool IsCounter(const CreateTable& create, const KeyDefinition& key) {
    return key.columns.size() == 1 && DefinedColumn(create, key.columns[0]).type == ColumnType::Counter;
}

std::string KeyFields(const CreateTable& create, const KeyDefinition& key) {
    std::vector<std::string> fields;
    for (const std::string& name : key.columns) {
        const ColumnDefinition& column = DefinedColumn(create, name);
        fields.push_back(KeyField(column.name, column.type));
    }
    return Joined(fields, ", ");
}

// In the dialect the names of indexes are unique to their table, in the file to all tables.
std::string IndexSql(const TableInfo& table, const std::string& name) {
    const std::string& own = table.sourceTable.empty() ? table.name : table.sourceTable;
    return QuotedName(table.database) + "." + QuotedName(own + "." + name);
}

bool RefersBeyond(const std::string& sql, const Scope& scope, const Source& target) {
    return std::ranges::any_of(scope.sources, [&](const Source& each) {
        return &each != &target && sql.find(QuotedName(each.alias) + ".") != std::string::npos;
    });
}

Translation Change(StatementClass kind, std::string sql, std::string target) {
    Translation made;
    made.kind = kind;
    made.statements.push_back(std::move(sql));
    made.target = std::move(target);
    return made;
}

} // namespace

std::string ColumnDeclaration(const std::string& name, ColumnType type, int width) {
    if (type == ColumnType::Unknown) return QuotedName(name);
    std::string text = QuotedName(name) + " " + DeclaredType(type, width);
    if (type == ColumnType::YesNo) text += " NOT NULL DEFAULT 0";
    return text;
}

Translation Emitter::translate(const Statement& tree) {
    Translation made = std::visit([this](const auto& node) { return statement(node); }, tree);
    made.lists = std::move(lists_);
    return made;
}

Translation Emitter::statement(const Query& query) {
    const bool intoTable = std::ranges::any_of(query.arms, [](const Select& arm) { return !arm.into.empty(); });
    if (intoTable) return makeTable(query);
    SelectText text = emitQuery(query, nullptr);
    Translation made = Change(StatementClass::Select, std::move(text.sql), {});
    made.columns = std::move(text.columns);
    return made;
}

Translation Emitter::makeTable(const Query& query) {
    const Select& first = query.arms.front();
    if (first.into.empty()) FailAt(query.arms.back().at, "INTO belongs into the first query of a union");
    SelectText text = emitQuery(query, nullptr);
    if (!first.intoConnector.empty()) {
        Translation made = Change(StatementClass::Select, std::move(text.sql), first.into);
        made.columns = std::move(text.columns);
        made.connector = first.intoConnector;
        return made;
    }
    if (catalogue_.find(first.into))
        throw Error(ErrorNumber::AlreadyExists, "Table '" + first.into + "' already exists.");
    std::string fields;
    for (const OutputColumn& column : text.columns) {
        const ColumnType type = column.type == ColumnType::Counter   ? ColumnType::Long
                                : column.type == ColumnType::Unknown ? ColumnType::Text
                                                                     : column.type;
        std::string name = column.name; // a field's name can't hold the point of A.x
        std::ranges::replace(name, '.', '_');
        fields += (fields.empty() ? "" : ", ") + ColumnDeclaration(name, type);
    }
    const std::string table = "main." + QuotedName(first.into);
    Translation made = Change(StatementClass::Schema, "CREATE TABLE " + table + " (" + fields + ")", first.into);
    made.statements.push_back("INSERT INTO " + table + " " + text.sql);
    return made;
}

Translation Emitter::statement(const Insert& insert) {
    const TableInfo& table = TableNamed(catalogue_, insert.table);
    Scope none;
    SelectText given;
    if (insert.query) given = emitQuery(*insert.query, nullptr);
    const std::size_t count = insert.query ? given.columns.size() : insert.rows.front().size();
    const std::vector<std::size_t> fields = FieldsToFill(insert, table, given.columns, count);
    std::string names;
    for (const std::size_t field : fields)
        names += (names.empty() ? "" : ", ") + QuotedName(table.columns[field].name);
    // What is not given fills itself: a replication id, and a yes/no field, which is never Null.
    std::string filled;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const ColumnType type = table.columns[i].type;
        if (type != ColumnType::Guid && type != ColumnType::YesNo) continue;
        if (std::ranges::find(fields, i) != fields.end()) continue;
        names += ", " + QuotedName(table.columns[i].name);
        filled += type == ColumnType::Guid ? ", jet_newguid()" : ", 0";
    }
    std::string sql = "INSERT INTO " + TableSql(table) + " (" + names + ") ";
    if (insert.query) {
        if (given.columns.size() != fields.size())
            FailAt(insert.at, "The query gives another number of fields than are named");
        std::string values;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const Typed value{.sql = "\"jet$q\"." + QuotedName(given.columns[i].name),
                              .kind = given.columns[i].kind,
                              .type = given.columns[i].type};
            values += (values.empty() ? "" : ", ") + AsStored(value, table.columns[fields[i]].type);
        }
        sql += "SELECT " + values + filled + " FROM (" + given.sql + ") AS \"jet$q\" WHERE true";
        return Change(StatementClass::Write, std::move(sql), table.name);
    }
    sql += "VALUES ";
    for (std::size_t r = 0; r < insert.rows.size(); ++r) {
        if (insert.rows[r].size() != fields.size())
            FailAt(insert.at, "The number of values differs from the number of fields");
        std::string values;
        for (std::size_t i = 0; i < fields.size(); ++i)
            values +=
                (values.empty() ? "" : ", ") + AsStored(emit(*insert.rows[r][i], none), table.columns[fields[i]].type);
        sql += (r == 0 ? "(" : ", (") + values + filled + ")";
    }
    return Change(StatementClass::Write, std::move(sql), table.name);
}

// The rows of a joined UPDATE or DELETE. A Like with a pattern that comes from a row is an equality wherever the
// pattern holds no wildcard, and only then an index can serve: the two cases are gathered apart.
std::string Emitter::matchingRows(const Update& update, const Scope& scope, const std::string& columns) {
    FromClause from = flatten(update.tables, scope);
    const std::string tables = " FROM " + fromText(from, scope);
    std::vector<std::string> shared = std::move(from.conditions);
    std::vector<const Expression*> parts;
    if (update.where) parts.push_back(update.where.get());
    const Like* like = nullptr;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto* chain = std::get_if<Logical>(&parts[i]->node);
        if (chain && chain->op == LogicalOperator::And) {
            for (const ExpressionPtr& operand : chain->operands)
                parts.push_back(operand.get());
            continue;
        }
        const auto* one = std::get_if<Like>(&parts[i]->node);
        if (one && !like && !one->negated && !std::holds_alternative<TextLiteral>(one->pattern->node))
            like = one;
        else
            shared.push_back(conjunct(*parts[i], scope));
    }
    const auto select = [&](const std::vector<std::string>& more) {
        std::string where;
        for (const std::vector<std::string>* list : {&std::as_const(shared), &more})
            for (const std::string& each : *list)
                where += (where.empty() ? " WHERE " : " AND ") + each;
        return "SELECT " + columns + tables + where;
    };
    if (!like) return select({});
    const Typed operand = emit(*like->operand, scope);
    const Typed pattern = emit(*like->pattern, scope);
    const std::string wild = "(" + AsValue(pattern) + " GLOB '*[*?#[]*')";
    Typed plain = pattern;
    if (operand.kind == CompareKind::Identifier) plain.kind = CompareKind::Identifier;
    return select({"NOT " + wild, Compared(operand, "=", plain)}) + " UNION ALL " +
           select({wild, "jet_like(" + AsValue(operand) + ", " + AsValue(pattern) + ")"});
}

std::vector<Emitter::Changes> Emitter::changesByTarget(const Update& update, const Scope& scope) {
    std::vector<Changes> all;
    for (const Assignment& assignment : update.assignments) {
        const Scope::Found found = scope.resolve(assignment.target, assignment.at);
        if (!found.source->table) FailAt(assignment.at, "An inner query can't be changed");
        auto place = std::ranges::find(all, found.source, &Changes::target);
        if (place == all.end()) place = all.insert(place, Changes{found.source, {}, {}, false});
        const OutputColumn& field = found.source->columns[found.column];
        place->fields.push_back(QuotedName(field.name));
        place->values.push_back(AsStored(emit(*assignment.value, scope), field.type));
        place->beyond = place->beyond || RefersBeyond(place->values.back(), scope, *found.source);
    }
    return all;
}

std::string Emitter::updateOne(const Update& update, const Changes& changes, const Scope& scope) {
    const Source& target = *changes.target;
    std::string direct;
    std::string carried;
    std::string carriedColumns = target.rowId() + " AS \"jet$row\"";
    for (std::size_t i = 0; i < changes.fields.size(); ++i) {
        const std::string label = "\"jet$" + std::to_string(i) + "\"";
        direct += (i == 0 ? "" : ", ") + changes.fields[i] + " = " + changes.values[i];
        carried += (i == 0 ? "" : ", ") + changes.fields[i] + " = \"jet$q\"." + label;
        carriedColumns += ", " + changes.values[i] + " AS " + label;
    }
    const std::string head = "UPDATE " + TableSql(*target.table) + " AS " + QuotedName(target.alias) + " SET ";
    if (scope.sources.size() == 1)
        return head + direct + (update.where ? " WHERE " + conjunct(*update.where, scope) : "");
    if (!changes.beyond)
        return head + direct + " WHERE " + target.rowId() + " IN (" + matchingRows(update, scope, target.rowId()) + ")";
    return head + carried + " FROM (" + matchingRows(update, scope, carriedColumns) + ") AS \"jet$q\" WHERE " +
           target.rowId() + " = \"jet$q\".\"jet$row\"";
}

// Rows and values are put aside before the first table changes: the second must not see what the first became.
std::vector<std::string> Emitter::updateSeveral(const Update& update, const std::vector<Changes>& all,
                                                const Scope& scope) {
    std::string columns;
    std::vector<std::string> updates;
    for (std::size_t t = 0; t < all.size(); ++t) {
        const Source& target = *all[t].target;
        const std::string row = "\"row" + std::to_string(t) + "\"";
        columns += (t == 0 ? "" : ", ") + target.rowId() + " AS " + row;
        std::string sets;
        for (std::size_t i = 0; i < all[t].fields.size(); ++i) {
            const std::string label = "\"value" + std::to_string(t) + "_" + std::to_string(i) + "\"";
            columns += ", " + all[t].values[i] + " AS " + label;
            sets += (i == 0 ? "" : ", ") + all[t].fields[i] + " = \"jet$q\"." + label;
        }
        updates.push_back("UPDATE " + TableSql(*target.table) + " AS " + QuotedName(target.alias) + " SET " + sets +
                          " FROM temp.\"jet$changes\" AS \"jet$q\" WHERE " + target.rowId() + " = \"jet$q\"." + row);
    }
    std::vector<std::string> statements = {"DROP TABLE IF EXISTS temp.\"jet$changes\"",
                                           "CREATE TEMP TABLE \"jet$changes\" AS " +
                                               matchingRows(update, scope, columns)};
    statements.insert(statements.end(), updates.begin(), updates.end());
    return statements;
}

Translation Emitter::statement(const Update& update) {
    Scope scope;
    declare(update.tables, scope);
    const std::vector<Changes> all = changesByTarget(update, scope);
    Translation made;
    made.kind = StatementClass::Write;
    made.target = all.front().target->table->name;
    if (all.size() == 1)
        made.statements.push_back(updateOne(update, all.front(), scope));
    else
        made.statements = updateSeveral(update, all, scope);
    return made;
}

Translation Emitter::statement(const Delete& remove) {
    Scope scope;
    declare(remove.tables, scope);
    const Source* target = remove.table.empty() ? &scope.sources.front() : scope.source(remove.table);
    if (!target || (remove.table.empty() && scope.sources.size() > 1))
        FailAt(remove.at, "Say of which table the rows are to go");
    if (!target->table) FailAt(remove.at, "Rows of an inner query can't be deleted");
    std::string sql = "DELETE FROM " + TableSql(*target->table) + " AS " + QuotedName(target->alias);
    if (scope.sources.size() > 1)
        sql += " WHERE " + target->rowId() + " IN (SELECT " + target->rowId() +
               fromWhere(remove.tables, remove.where.get(), scope) + ")";
    else if (remove.where)
        sql += " WHERE " + conjunct(*remove.where, scope);
    return Change(StatementClass::Write, std::move(sql), target->table->name);
}

Translation Emitter::statement(const CreateTable& create) {
    if (catalogue_.find(create.table))
        throw Error(ErrorNumber::AlreadyExists, "Table '" + create.table + "' already exists.");
    std::vector<std::string> parts;
    const auto counters = std::ranges::count(create.columns, ColumnType::Counter, &ColumnDefinition::type);
    if (counters > 1) throw Error(ErrorNumber::SyntaxError, "A table can have one counter only.");
    for (const ColumnDefinition& column : create.columns)
        parts.push_back(definition(column));
    std::vector<KeyDefinition> keys = create.keys;
    for (const ColumnDefinition& column : create.columns)
        if (column.primaryKey || column.unique) keys.push_back({column.primaryKey, {column.name}});
    // A counter is the row's own number and so the file's primary key; any other key beside it is unique all the same.
    bool primaryTaken = counters > 0;
    for (const KeyDefinition& key : keys) {
        if (IsCounter(create, key)) continue;
        parts.push_back((key.primary && !primaryTaken ? "PRIMARY KEY (" : "UNIQUE (") + KeyFields(create, key) + ")");
        primaryTaken = primaryTaken || key.primary;
    }
    return Change(StatementClass::Schema,
                  "CREATE TABLE main." + QuotedName(create.table) + " (" + Joined(parts, ", ") + ")", create.table);
}

std::string Emitter::definition(const ColumnDefinition& column) {
    std::string text = ColumnDeclaration(column.name, column.type, column.width);
    if (column.type == ColumnType::Counter || column.type == ColumnType::YesNo) return text;
    if (column.notNull) text += " NOT NULL";
    if (column.defaultValue) text += " DEFAULT (" + AsStored(emit(*column.defaultValue, Scope{}), column.type) + ")";
    return text;
}

Translation Emitter::statement(const CreateIndex& create) {
    const TableInfo& table = TableNamed(catalogue_, create.table);
    std::string columns;
    for (const IndexColumn& each : create.columns) {
        const ColumnInfo& column = table.columns[FieldOf(table, each.name)];
        columns +=
            (columns.empty() ? "" : ", ") + KeyField(column.name, column.type) + (each.descending ? " DESC" : "");
    }
    const std::string& own = table.sourceTable.empty() ? table.name : table.sourceTable;
    const std::string sql = std::string(create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                            IndexSql(table, create.name) + " ON " + QuotedName(own) + " (" + columns + ")";
    return Change(StatementClass::Schema, sql, table.name);
}

Translation Emitter::statement(const DropTable& drop) {
    const TableInfo& table = TableNamed(catalogue_, drop.table);
    Translation made =
        Change(StatementClass::Schema, (table.type == TableType::View ? "DROP VIEW " : "DROP TABLE ") + TableSql(table),
               table.name);
    // Of a link only the link goes; the connection takes it out of its list.
    if (table.type == TableType::Link) made.statements.clear();
    return made;
}

Translation Emitter::statement(const DropIndex& drop) {
    const TableInfo& table = TableNamed(catalogue_, drop.table);
    return Change(StatementClass::Schema, "DROP INDEX " + IndexSql(table, drop.name), table.name);
}

Translation Emitter::statement(const AlterTable& alter) {
    const TableInfo& table = TableNamed(catalogue_, alter.table);
    if (!alter.dropped.empty()) {
        const std::string& name = table.columns[FieldOf(table, alter.dropped)].name;
        return Change(StatementClass::Schema, "ALTER TABLE " + TableSql(table) + " DROP COLUMN " + QuotedName(name),
                      table.name);
    }
    const ColumnDefinition& column = *alter.added;
    if (column.type == ColumnType::Counter)
        throw Error(ErrorNumber::SyntaxError, "A counter can't be added to a table that stands.");
    if (table.column(column.name))
        throw Error(ErrorNumber::AlreadyExists, "Table '" + table.name + "' has a field '" + column.name + "'.");
    return Change(StatementClass::Schema, "ALTER TABLE " + TableSql(table) + " ADD COLUMN " + definition(column),
                  table.name);
}

Translation Translate(std::string_view sql, const Catalogue& catalogue) {
    Statement statement = Parse(sql);
    if (auto* query = std::get_if<Query>(&statement)) TurnJoinsIntoTests(*query, catalogue);
    if (auto* insert = std::get_if<Insert>(&statement); insert != nullptr && insert->query)
        TurnJoinsIntoTests(*insert->query, catalogue);
    return Emitter(catalogue).translate(statement);
}

} // namespace jet
