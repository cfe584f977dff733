#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"
#include "jet/values/Error.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

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

} // namespace

std::string ColumnDeclaration(const std::string& name, ColumnType type, int width) {
    if (type == ColumnType::Unknown) return QuotedName(name);
    std::string text = QuotedName(name) + " " + DeclaredType(type, width);
    if (type == ColumnType::YesNo) text += " NOT NULL DEFAULT 0";
    return text;
}

void RefuseReservedName(const std::string& table) {
    if (IsReservedName(table))
        throw Error(ErrorNumber::ReadOnly, "'" + table + "' is a name that the engine keeps for itself.");
}

Translation Emitter::statement(const CreateTable& create) {
    RefuseReservedName(create.table);
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
    constexpr int kWidest = 255;
    if (column.type == ColumnType::Text && column.width > 0 && column.width < kWidest)
        text += " CHECK (length(" + QuotedName(column.name) + ") <= " + std::to_string(column.width) + ")";
    if (column.defaultValue) text += " DEFAULT (" + defaultText(column) + ")";
    return text;
}

// It becomes part of the file's schema, which must not call functions of ours.
std::string Emitter::defaultText(const ColumnDefinition& column) {
    const Typed value = emit(*column.defaultValue, Scope{});
    const bool constant = value.literal || value.type == ColumnType::Unknown;
    std::string stored = constant ? AsStored(value, column.type) : std::string();
    if (!constant || stored.starts_with("jet_"))
        throw Error(ErrorNumber::TypeMismatch,
                    "The default of the field '" + column.name + "' must be a constant of its type.");
    return stored;
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
    RefuseReservedName(drop.table);
    Translation made;
    made.kind = StatementClass::Schema;
    if (catalogue_.isLink(drop.table)) {
        made.target = drop.table;
        made.change = TargetChange::DropLink;
        return made;
    }
    const TableInfo& table = TableNamed(catalogue_, drop.table);
    made.target = table.name;
    made.change = TargetChange::Drop;
    made.droppedTable = TableSql(table);
    made.statements.push_back("DROP TABLE " + made.droppedTable);
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

} // namespace jet
