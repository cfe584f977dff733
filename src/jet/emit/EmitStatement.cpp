#include "jet/emit/Emitter.h"
#include "jet/rewrite/Rewrites.h"
#include "jet/sql/Parser.h"
#include "jet/values/Error.h"

#include <algorithm>
#include <utility>

namespace jet {

using namespace tree;

namespace {

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

} // namespace

Translation Change(StatementClass kind, std::string sql, std::string target) {
    Translation made;
    made.kind = kind;
    made.statements.push_back(std::move(sql));
    made.target = std::move(target);
    return made;
}

std::size_t FieldOf(const TableInfo& table, const std::string& name) {
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (SameName(table.columns[i].name, name)) return i;
    throw Error(ErrorNumber::NoSuchColumn, "Table '" + table.name + "' has no field '" + name + "'.");
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
    RefuseReservedName(first.into);
    if (catalogue_.find(first.into))
        throw Error(ErrorNumber::AlreadyExists, "Table '" + first.into + "' already exists.");
    std::string fields;
    for (OutputColumn& column : text.columns) {
        if (column.type == ColumnType::Counter) column.type = ColumnType::Long;
        if (column.type == ColumnType::Unknown) column.type = ColumnType::Text;
        std::ranges::replace(column.name, '.', '_'); // a field's name can't hold the point of A.x
        fields += (fields.empty() ? "" : ", ") + ColumnDeclaration(column.name, column.type);
    }
    const std::string table = "main." + QuotedName(first.into);
    Translation made = Change(StatementClass::Schema, "CREATE TABLE " + table + " (" + fields + ")", first.into);
    made.statements.push_back("INSERT INTO " + table + " " + text.sql);
    made.change = TargetChange::Make;
    made.columns = std::move(text.columns);
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

} // namespace jet
