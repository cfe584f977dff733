#include "jet/rewrite/JoinedTables.h"

#include "jet/functions/Functions.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace jet {

using namespace tree;

namespace {

constexpr std::size_t kMostTables = 60;

} // namespace

bool JoinedTables::ReadTables() {
    return std::ranges::all_of(select_.from, [&](const TableReferencePtr& reference) { return ReadTable(*reference); });
}

bool JoinedTables::ReadTable(const TableReference& reference) {
    if (const auto* join = std::get_if<Join>(&reference.node))
        return join->kind == JoinKind::Inner && ReadTable(*join->left) && ReadTable(*join->right);
    const auto* named = std::get_if<NamedTable>(&reference.node);
    const TableInfo* info = named != nullptr ? catalogue_.find(named->name) : nullptr;
    if (info == nullptr || tables_.size() >= kMostTables) return false;
    tables_.push_back({*named, info});
    return true;
}

bool JoinedTables::AddTables(const Expression& expression, TableSet& tables) const {
    if (const auto* column = std::get_if<ColumnName>(&expression.node)) {
        const std::size_t table = TableOf(*column);
        if (table >= tables_.size()) return false;
        tables |= Bit(table);
        return true;
    }
    if (const auto* call = std::get_if<Call>(&expression.node)) {
        const FunctionInfo* function = FindFunction(call->name);
        if (function == nullptr || function->aggregate) return false;
    }
    return VisitOperands(expression, [&](const Expression& operand) { return AddTables(operand, tables); });
}

std::size_t JoinedTables::TableOf(const ColumnName& column) const {
    std::size_t found = tables_.size();
    for (std::size_t table = 0; table < tables_.size(); ++table) {
        const bool named = column.table.empty() || SameName(column.table, tables_[table].name.alias);
        if (!named || tables_[table].info->column(column.name) == nullptr) continue;
        if (found != tables_.size()) return tables_.size();
        found = table;
    }
    return found;
}

bool JoinedTables::AllConditionsArePlaced() const {
    TableSet ignored = 0;
    return (!select_.where || AddTables(*select_.where, ignored)) &&
           std::ranges::all_of(select_.from,
                               [&](const TableReferencePtr& reference) { return ConditionsArePlaced(*reference); });
}

bool JoinedTables::ConditionsArePlaced(const TableReference& reference) const {
    const auto* join = std::get_if<Join>(&reference.node);
    if (join == nullptr) return true;
    TableSet ignored = 0;
    return (!join->on || AddTables(*join->on, ignored)) && ConditionsArePlaced(*join->left) &&
           ConditionsArePlaced(*join->right);
}

bool JoinedTables::IsAlias(const Expression& expression) const {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    return column != nullptr && column->table.empty() &&
           std::ranges::any_of(select_.items,
                               [&](const SelectItem& item) { return SameName(item.alias, column->name); });
}

std::int64_t JoinedTables::RowsOf(TableSet one) const {
    return catalogue_.rowsOnRecord(*tables_[static_cast<std::size_t>(std::countr_zero(one))].info);
}

bool JoinedTables::IsNumberColumn(const Expression& expression) const {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    if (column == nullptr) return false;
    const ColumnInfo* info = tables_[TableOf(*column)].info->column(column->name);
    return KindOfColumn(info->name, info->type) == CompareKind::Number;
}

void JoinedTables::TakeConditions() {
    if (select_.where) TakeCondition(std::move(select_.where));
    for (const TableReferencePtr& reference : select_.from)
        TakeFrom(*reference);
}

void JoinedTables::TakeFrom(TableReference& reference) {
    auto* join = std::get_if<Join>(&reference.node);
    if (join == nullptr) return;
    if (join->on) TakeCondition(std::move(join->on));
    TakeFrom(*join->left);
    TakeFrom(*join->right);
}

void JoinedTables::TakeCondition(ExpressionPtr expression) {
    std::vector<ExpressionPtr> parts;
    TakeApart(std::move(expression), parts);
    for (ExpressionPtr& part : parts) {
        Condition condition;
        (void)AddTables(*part, condition.tables);
        condition.expression = std::move(part);
        conditions_.push_back(std::move(condition));
    }
}

std::vector<TableReferencePtr> JoinedTables::References(TableSet set) const {
    std::vector<TableReferencePtr> references;
    for (std::size_t table = 0; table < tables_.size(); ++table) {
        if ((set & Bit(table)) == 0) continue;
        auto reference = std::make_unique<TableReference>();
        reference->at = select_.at;
        reference->node = tables_[table].name;
        references.push_back(std::move(reference));
    }
    return references;
}

QueryPtr JoinedTables::QueryOf(TableSet set, ExpressionPtr item, ExpressionPtr where) const {
    Select select;
    select.at = select_.at;
    SelectItem output;
    output.at = select_.at;
    output.expression = std::move(item);
    select.items.push_back(std::move(output));
    select.from = References(set);
    select.where = std::move(where);
    auto query = std::make_unique<Query>();
    query->arms.push_back(std::move(select));
    return query;
}

} // namespace jet
