#include "jet/emit/Emitter.h"
#include "jet/functions/Functions.h"
#include "jet/sql/SameExpression.h"
#include "jet/sql/VisitOperands.h"
#include "jet/values/Error.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

/// Fields are the same when they are one field of one table; a name of the result stands for its expression.
class SameInScope final : public SameExpression {
  public:
    explicit SameInScope(const Scope& scope) : scope_(scope) {}

  protected:
    [[nodiscard]] const Expression& meaning(const Expression& expression) const override {
        const auto* const column = std::get_if<ColumnName>(&expression.node);
        const SelectItem* const item = column ? scope_.aliased(*column) : nullptr;
        return item && !scope_.lookUp(*column, expression.at).source ? meaning(*item->expression) : expression;
    }
    [[nodiscard]] bool sameField(const ColumnName& a, const ColumnName& b) const override {
        const Scope::Found one = scope_.lookUp(a, {});
        const Scope::Found other = scope_.lookUp(b, {});
        return one.source && one.source == other.source && one.column == other.column;
    }

  private:
    const Scope& scope_;
};

void CheckGrouped(const Expression& expression, const std::vector<ExpressionPtr>& terms, const Scope& scope) {
    const auto check = [&](const Expression& operand) { CheckGrouped(operand, terms, scope); };
    const auto* const call = std::get_if<Call>(&expression.node);
    if (call && FindFunction(call->name)->aggregate) return;
    if (const auto* const in = std::get_if<InQuery>(&expression.node)) return check(*in->operand);
    if (const auto* const each = std::get_if<Quantified>(&expression.node)) return check(*each->operand);
    const SameInScope same(scope);
    if (std::ranges::any_of(terms, [&](const ExpressionPtr& term) { return same(*term, expression); })) return;
    if (const auto* const column = std::get_if<ColumnName>(&expression.node)) {
        const Scope::Found found = scope.lookUp(*column, expression.at);
        const SelectItem* const item = found.source ? nullptr : scope.aliased(*column);
        if (item) return check(*item->expression);
        if (found.level != &scope) return;
        throw Error(ErrorNumber::OutsideGroups,
                    "The field '" + column->name + "' is neither grouped by nor part of an aggregate (line " +
                        std::to_string(expression.at.line) + ", column " + std::to_string(expression.at.column) + ").");
    }
    (void)VisitOperands(expression, [&](const Expression& operand) {
        check(operand);
        return true;
    });
}

} // namespace

void CheckGroups(const Select& select, const std::vector<OrderItem>& orderBy, const Scope& scope) {
    for (const SelectItem& item : select.items)
        if (item.expression) CheckGrouped(*item.expression, select.groupBy, scope);
    if (select.having) CheckGrouped(*select.having, select.groupBy, scope);
    for (const OrderItem& item : orderBy)
        CheckGrouped(*item.expression, select.groupBy, scope);
}

// Rows made one by DISTINCT have no single value of a field outside the result, so none can be sorted by.
void Emitter::checkDistinctOrder(const std::vector<OrderItem>& orderBy, const std::vector<OrderKey>& keys,
                                 const std::vector<Item>& items, const Scope& scope) {
    const SameInScope same(scope);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const Expression& expression = *orderBy[i].expression;
        const auto* const column = std::get_if<ColumnName>(&expression.node);
        const Scope::Found found = column ? scope.lookUp(*column, expression.at) : Scope::Found{};
        const auto standsFor = [&](const Item& item) {
            if (item.expression) return same(*item.expression, expression);
            return found.source == item.source && found.column == item.column;
        };
        if (!keys[i].isItem && std::ranges::none_of(items, standsFor))
            FailAt(expression.at, "A query of distinct rows can be sorted by its fields alone");
    }
}

} // namespace jet
