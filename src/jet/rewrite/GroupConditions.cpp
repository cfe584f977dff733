#include "jet/rewrite/GroupConditions.h"

#include "jet/functions/Functions.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace jet {

namespace {

using namespace tree;

/// The table of a FROM clause that goes by this name; nullptr for none, and for an inner query.
const TableInfo* TableCalled(const TableReference& reference, const std::string& alias, const Catalogue& catalogue) {
    if (const auto* join = std::get_if<Join>(&reference.node)) {
        const TableInfo* left = TableCalled(*join->left, alias, catalogue);
        return left != nullptr ? left : TableCalled(*join->right, alias, catalogue);
    }
    const auto* named = std::get_if<NamedTable>(&reference.node);
    return named != nullptr && SameName(named->alias, alias) ? catalogue.find(named->name) : nullptr;
}

class GroupFilter final {
  public:
    GroupFilter(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : select_(select), orderBy_(orderBy), catalogue_(catalogue) {}

    bool Apply() {
        if (select_.groupBy.empty() || !select_.having) return false;
        std::vector<ExpressionPtr> parts;
        TakeApart(std::move(select_.having), parts);
        const auto first = std::stable_partition(parts.begin(), parts.end(),
                                                 [&](const ExpressionPtr& part) { return !HoldsForGroups(*part); });
        const bool moves = first != parts.end();
        std::vector<ExpressionPtr> before;
        if (select_.where) before.push_back(std::move(select_.where));
        std::move(first, parts.end(), std::back_inserter(before));
        parts.erase(first, parts.end());
        select_.having = AllOf(select_.at, std::move(parts));
        const std::size_t groups = select_.groupBy.size();
        for (const ExpressionPtr& part : before)
            if (const ColumnName* fixed = FixedColumn(*part)) Ungroup(*fixed);
        select_.where = AllOf(select_.at, std::move(before));
        return moves || select_.groupBy.size() < groups;
    }

  private:
    [[nodiscard]] bool HoldsForGroups(const Expression& expression) const {
        if (const auto* column = std::get_if<ColumnName>(&expression.node)) return IsGroupNumber(*column);
        const auto* call = std::get_if<Call>(&expression.node);
        if (call != nullptr) {
            const FunctionInfo* function = FindFunction(call->name);
            if (function == nullptr || function->aggregate) return false;
        }
        return VisitOperands(expression, [&](const Expression& operand) { return HoldsForGroups(operand); });
    }

    [[nodiscard]] bool IsGroupNumber(const ColumnName& column) const {
        const bool grouped =
            std::ranges::any_of(select_.groupBy, [&](const ExpressionPtr& term) { return Names(*term, column); });
        if (!grouped || column.table.empty()) return false;
        for (const TableReferencePtr& reference : select_.from) {
            const TableInfo* table = TableCalled(*reference, column.table, catalogue_);
            const ColumnInfo* field = table != nullptr ? table->column(column.name) : nullptr;
            if (field != nullptr) return KindOfColumn(field->name, field->type) == CompareKind::Number;
        }
        return false;
    }

    [[nodiscard]] static bool Names(const Expression& term, const ColumnName& column) {
        const auto* named = std::get_if<ColumnName>(&term.node);
        return named != nullptr && SameName(named->table, column.table) && SameName(named->name, column.name);
    }

    /// The field of "field = literal".
    [[nodiscard]] static const ColumnName* FixedColumn(const Expression& condition) {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return nullptr;
        const Expression::Node& value = comparison->right->node;
        const bool literal =
            std::holds_alternative<NumberLiteral>(value) || std::holds_alternative<BooleanLiteral>(value);
        return literal ? std::get_if<ColumnName>(&comparison->left->node) : nullptr;
    }

    // The last field of GROUP BY stays, since a query without any gives one group even for no rows; so does a field
    // that is read elsewhere.
    void Ungroup(const ColumnName& column) {
        const auto place =
            std::ranges::find_if(select_.groupBy, [&](const ExpressionPtr& term) { return Names(*term, column); });
        if (place != select_.groupBy.end() && select_.groupBy.size() > 1 && !IsRead(column))
            select_.groupBy.erase(place);
    }

    [[nodiscard]] bool IsRead(const ColumnName& column) const {
        return std::ranges::any_of(
                   select_.items,
                   [&](const SelectItem& item) { return !item.expression || MayRead(*item.expression, column); }) ||
               std::ranges::any_of(orderBy_,
                                   [&](const OrderItem& item) { return MayRead(*item.expression, column); }) ||
               (select_.having && MayRead(*select_.having, column));
    }

    /// True for an inner query, too, which may read anything.
    [[nodiscard]] static bool MayRead(const Expression& expression, const ColumnName& column) {
        if (const auto* named = std::get_if<ColumnName>(&expression.node)) return SameName(named->name, column.name);
        return !VisitOperands(expression, [&](const Expression& operand) { return !MayRead(operand, column); });
    }

    Select& select_;
    const std::vector<OrderItem>& orderBy_;
    const Catalogue& catalogue_;
};

} // namespace

bool FilterBeforeGrouping(Query& query, const Catalogue& catalogue) {
    bool changed = false;
    for (Select& select : query.arms)
        changed = GroupFilter(select, query.orderBy, catalogue).Apply() || changed;
    return changed;
}

} // namespace jet
