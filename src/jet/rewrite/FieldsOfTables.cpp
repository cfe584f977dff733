#include "jet/rewrite/FieldsOfTables.h"

namespace jet {

using namespace tree;

FieldsOfTables::FieldsOfTables(const std::vector<TableReferencePtr>& from, const Catalogue& catalogue) {
    for (const TableReferencePtr& each : from)
        Add(*each, catalogue);
}

void FieldsOfTables::Add(const TableReference& reference, const Catalogue& catalogue) {
    if (const auto* join = std::get_if<Join>(&reference.node)) {
        plain_ = plain_ && join->kind == JoinKind::Inner;
        Add(*join->left, catalogue);
        Add(*join->right, catalogue);
        return;
    }
    const auto* named = std::get_if<NamedTable>(&reference.node);
    const TableInfo* info = named != nullptr ? catalogue.find(named->name) : nullptr;
    plain_ = plain_ && info != nullptr;
    if (info != nullptr) tables_.push_back({named->alias, info});
}

const ColumnInfo* FieldsOfTables::field(const ColumnName& name) const {
    const std::vector<const ColumnInfo*> found = fields(name);
    return found.size() == 1 ? found.front() : nullptr;
}

std::vector<const ColumnInfo*> FieldsOfTables::fields(const ColumnName& name) const {
    std::vector<const ColumnInfo*> found;
    for (const Named& table : tables_) {
        if (!name.table.empty() && !SameName(name.table, table.alias)) continue;
        if (const ColumnInfo* column = table.info->column(name.name)) found.push_back(column);
    }
    return found;
}

} // namespace jet
