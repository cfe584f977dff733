#include "jet/emit/Scope.h"

#include "jet/values/Error.h"

#include <algorithm>

namespace jet {

std::string Source::rowId() const {
    const char* name = "oid";
    for (const char* each : {"_rowid_", "rowid"})
        if (find(each) < 0) name = each;
    return QuotedName(alias) + "." + name;
}

int Source::find(std::string_view name) const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (SameName(columns[i].name, name)) return static_cast<int>(i);
    return -1;
}

std::string Source::columnSql(std::size_t position) const {
    return QuotedName(alias) + "." + QuotedName(columns[position].name);
}

const Source* Scope::source(std::string_view alias) const {
    for (const Scope* level = this; level; level = level->outer)
        for (const Source& each : level->sources)
            if (SameName(each.alias, alias)) return &each;
    return nullptr;
}

const tree::SelectItem* Scope::aliased(const tree::ColumnName& name) const {
    if (!items || !name.table.empty()) return nullptr;
    for (const tree::SelectItem& item : *items)
        if (item.expression && !item.alias.empty() && SameName(item.alias, name.name)) return &item;
    return nullptr;
}

Scope::Found Scope::lookUp(const tree::ColumnName& name, Position at) const {
    for (const Scope* level = this; level; level = level->outer) {
        Found found;
        for (const Source& each : level->sources) {
            if (!name.table.empty() && !SameName(each.alias, name.table)) continue;
            const int column = each.find(name.name);
            if (column < 0) continue;
            if (found.source) FailAt(at, "The field '" + name.name + "' could mean a field of more than one table");
            found = {&each, static_cast<std::size_t>(column), level};
        }
        if (found.source) return found;
    }
    return {};
}

Scope::Found Scope::resolve(const tree::ColumnName& name, Position at) const {
    const Found found = lookUp(name, at);
    if (found.source) return found;
    const std::string written = name.table.empty() ? name.name : name.table + "." + name.name;
    throw Error(ErrorNumber::NoSuchColumn, "No table of the statement has a field '" + written + "'.");
}

Typed Field(const Scope& scope, const Source& source, std::size_t column) {
    std::string sql = source.columnSql(column);
    if (auto* projected = scope.projected) {
        auto place = std::ranges::find(*projected, sql);
        if (place == projected->end()) place = projected->insert(place, sql);
        sql = "source.c" + std::to_string(place - projected->begin());
    }
    return {std::move(sql), source.columns[column].kind, source.columns[column].type, false, false, {}, true};
}

std::string Collate(CompareKind kind) {
    switch (kind) {
    case CompareKind::Number:
        return {};
    case CompareKind::Identifier:
        return " COLLATE NOCASE";
    case CompareKind::Text:
        return " COLLATE JETTEXT";
    case CompareKind::ValueText:
        return " COLLATE JETVALUE";
    }
    return {};
}

const TableInfo& TableNamed(const Catalogue& catalogue, const std::string& name) {
    const TableInfo* table = catalogue.find(name);
    if (!table) throw Error(ErrorNumber::NoSuchTable, "There is no table or link '" + name + "'.");
    return *table;
}

std::string TableSql(const TableInfo& table) {
    return QuotedName(table.database) + "." + QuotedName(table.sourceTable.empty() ? table.name : table.sourceTable);
}

} // namespace jet
