#include "jet/rewrite/IndexJumps.h"

namespace jet {

using namespace tree;

bool JumpThroughIndex(Query& query, const Catalogue& catalogue) {
    if (query.arms.size() != 1 || !query.orderBy.empty()) return false;
    Select& select = query.arms.front();
    if (select.duplicates != Duplicates::DropEqualValues || select.top || select.where || !select.groupBy.empty() ||
        select.having || select.items.size() != 1 || !select.items.front().expression || select.from.size() != 1)
        return false;
    const auto* named = std::get_if<NamedTable>(&select.from.front()->node);
    const auto* name = std::get_if<ColumnName>(&select.items.front().expression->node);
    const TableInfo* table = named != nullptr && name != nullptr ? catalogue.find(named->name) : nullptr;
    const ColumnInfo* column = table != nullptr ? table->column(name->name) : nullptr;
    if (column == nullptr || KindOfColumn(column->name, column->type) != CompareKind::Number) return false;
    select.byJumps = catalogue.leadsIndex(*table, column->name);
    return select.byJumps;
}

} // namespace jet
