#include "jet/emit/Comparing.h"
#include "jet/emit/Emitter.h"

#include <algorithm>
#include <utility>

namespace jet {

using namespace tree;

// The rows of a joined UPDATE. With a Like whose pattern is a field, the rows that equal a pattern without wildcards
// are collected first, by an index, then those that match a pattern with wildcards.
std::string Emitter::matchingRows(const Update& update, const Scope& scope, const std::string& columns) {
    FromClause from = flatten(update.tables, scope);
    if (update.where) from.conditions.push_back(condition(*update.where, scope));
    const auto select = [&](const std::vector<std::string>& more) {
        std::string where;
        for (const std::vector<std::string>* list : {&std::as_const(from.conditions), &more})
            for (const std::string& each : *list)
                where += (where.empty() ? " WHERE " : " AND ") + each;
        return "SELECT " + columns + " FROM " + fromText(from, scope) + where;
    };
    if (!update.pattern) return select({});
    const Like& like = std::get<Like>(update.pattern->node);
    const Typed operand = emit(*like.operand, scope);
    const Typed pattern = emit(*like.pattern, scope);
    const auto wild = [](const Typed& text) { return "(" + AsValue(text) + " GLOB '*[*?#[]*')"; };
    Typed plain = pattern;
    if (operand.kind == CompareKind::Identifier) plain.kind = CompareKind::Identifier;
    // Where field and pattern are equal, either tells whether there are wildcards; the field needs no computing.
    const Typed& looked = operand.kind == CompareKind::Identifier ? operand : pattern;
    return select({Compared(operand, "=", plain), "NOT " + wild(looked)}) + " UNION ALL " +
           select({wild(pattern), "jet_like(" + AsValue(operand) + ", " + AsValue(pattern) + ")"});
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
        const std::size_t before = read_.size();
        place->values.push_back(AsStored(emit(*assignment.value, scope), field.type));
        place->beyond = place->beyond || std::ranges::any_of(scope.sources, [&](const Source& each) {
                            return &each != found.source && Read(each, before, read_.size());
                        });
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
        return head + direct + (update.where ? " WHERE " + condition(*update.where, scope) : "");
    if (!changes.beyond)
        return head + direct + " WHERE " + target.rowId() + " IN (" + matchingRows(update, scope, target.rowId()) + ")";
    return head + carried + " FROM (" + matchingRows(update, scope, carriedColumns) + ") AS \"jet$q\" WHERE " +
           target.rowId() + " = \"jet$q\".\"jet$row\"";
}

// Rows and values are stored before the first table changes: the change of the second table must not see the new
// values of the first.
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
        sql += " WHERE " + condition(*remove.where, scope);
    return Change(StatementClass::Write, std::move(sql), target->table->name);
}

} // namespace jet
