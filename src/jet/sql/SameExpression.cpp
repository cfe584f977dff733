#include "jet/sql/SameExpression.h"

#include <algorithm>

namespace jet {

using namespace tree;

namespace {

bool SameField(const ColumnName& a, const ColumnName& b) {
    return SameName(a.table, b.table) && SameName(a.name, b.name);
}

/// Two nodes of one type; `same` compares two expressions, `sameField` two names of fields.
template <class Same, class SameFields> class NodeComparison {
  public:
    NodeComparison(const Same& same, const SameFields& sameField) : same_(same), sameField_(sameField) {}

    bool operator()(const NullLiteral&, const NullLiteral&) const { return true; }
    bool operator()(const NumberLiteral& a, const NumberLiteral& b) const { return a.text == b.text; }
    bool operator()(const TextLiteral& a, const TextLiteral& b) const { return a.text == b.text; }
    bool operator()(const DateLiteral& a, const DateLiteral& b) const { return a.text == b.text; }
    bool operator()(const BooleanLiteral& a, const BooleanLiteral& b) const { return a.value == b.value; }
    bool operator()(const ColumnName& a, const ColumnName& b) const { return sameField_(a, b); }
    bool operator()(const Arithmetic& a, const Arithmetic& b) const { return a.op == b.op && both(a, b); }
    bool operator()(const Comparison& a, const Comparison& b) const { return a.op == b.op && both(a, b); }
    bool operator()(const Negation& a, const Negation& b) const { return each(a.operand, b.operand); }
    bool operator()(const Not& a, const Not& b) const { return each(a.operand, b.operand); }
    bool operator()(const Logical& a, const Logical& b) const { return a.op == b.op && all(a.operands, b.operands); }
    bool operator()(const IsNull& a, const IsNull& b) const { return tested(a, b); }
    bool operator()(const Between& a, const Between& b) const {
        return tested(a, b) && each(a.low, b.low) && each(a.high, b.high);
    }
    bool operator()(const Like& a, const Like& b) const { return tested(a, b) && each(a.pattern, b.pattern); }
    bool operator()(const InList& a, const InList& b) const {
        return a.numbers == b.numbers && tested(a, b) && all(a.values, b.values);
    }
    bool operator()(const Call& a, const Call& b) const {
        return SameName(a.name, b.name) && a.star == b.star && a.distinct == b.distinct &&
               all(a.arguments, b.arguments);
    }
    bool operator()(const ScannedAggregate& a, const ScannedAggregate& b) const {
        const bool same =
            a.argument == nullptr || b.argument == nullptr ? a.argument == b.argument : same_(*a.argument, *b.argument);
        return same && a.figure == b.figure && a.function == b.function && SameName(a.table, b.table);
    }
    bool operator()(const InQuery& a, const InQuery& b) const {
        return tested(a, b) && all(a.further, b.further) && SameQuery(*a.query, *b.query);
    }
    bool operator()(const Exists& a, const Exists& b) const { return SameQuery(*a.query, *b.query); }
    bool operator()(const ScalarQuery& a, const ScalarQuery& b) const { return SameQuery(*a.query, *b.query); }
    bool operator()(const Quantified& a, const Quantified& b) const {
        return a.op == b.op && a.all == b.all && each(a.operand, b.operand) && SameQuery(*a.query, *b.query);
    }

  private:
    bool each(const ExpressionPtr& a, const ExpressionPtr& b) const { return a && b ? same_(*a, *b) : !a && !b; }
    bool all(const std::vector<ExpressionPtr>& a, const std::vector<ExpressionPtr>& b) const {
        return std::ranges::equal(a, b, [&](const auto& one, const auto& other) { return each(one, other); });
    }
    template <class Node> bool both(const Node& a, const Node& b) const {
        return each(a.left, b.left) && each(a.right, b.right);
    }
    template <class Node> bool tested(const Node& a, const Node& b) const {
        return a.negated == b.negated && each(a.operand, b.operand);
    }
    static bool SameQuery(const Query& a, const Query& b);

    const Same& same_;
    const SameFields& sameField_;
};

template <class Compare> bool SameNodes(const Expression& a, const Expression& b, const Compare& compare) {
    if (a.node.index() != b.node.index()) return false;
    return std::visit([&]<class Node>(const Node& node) { return compare(node, std::get<Node>(b.node)); }, a.node);
}

// --- Comparison by spelling, for inner queries, whose names are resolved within them. ---

bool Spelt(const Expression& a, const Expression& b) {
    return SameNodes(a, b, NodeComparison(Spelt, SameField));
}

bool Spelt(const ExpressionPtr& a, const ExpressionPtr& b) {
    return a && b ? Spelt(*a, *b) : !a && !b;
}

bool SpeltQuery(const Query& a, const Query& b);

bool SpeltTable(const TableReferencePtr& a, const TableReferencePtr& b) {
    if (a->node.index() != b->node.index()) return false;
    if (const auto* named = std::get_if<NamedTable>(&a->node)) {
        const auto& other = std::get<NamedTable>(b->node);
        return SameName(named->name, other.name) && SameName(named->alias, other.alias);
    }
    if (const auto* derived = std::get_if<DerivedTable>(&a->node)) {
        const auto& other = std::get<DerivedTable>(b->node);
        return SameName(derived->alias, other.alias) && SpeltQuery(*derived->query, *other.query);
    }
    if (std::holds_alternative<ScanTable>(a->node)) return false; // none stands in an inner query
    const auto& join = std::get<Join>(a->node);
    const auto& other = std::get<Join>(b->node);
    return join.kind == other.kind && SpeltTable(join.left, other.left) && SpeltTable(join.right, other.right) &&
           Spelt(join.on, other.on);
}

bool SpeltItem(const SelectItem& a, const SelectItem& b) {
    return SameName(a.starTable, b.starTable) && SameName(a.alias, b.alias) && Spelt(a.expression, b.expression);
}

bool SpeltSelect(const Select& a, const Select& b) {
    const auto spelt = [](const ExpressionPtr& one, const ExpressionPtr& other) { return Spelt(one, other); };
    const bool sameTop = a.top.has_value() == b.top.has_value() &&
                         (!a.top || (a.top->count == b.top->count && a.top->percent == b.top->percent));
    return sameTop && a.duplicates == b.duplicates && std::ranges::equal(a.items, b.items, SpeltItem) &&
           std::ranges::equal(a.from, b.from, SpeltTable) && Spelt(a.where, b.where) &&
           std::ranges::equal(a.groupBy, b.groupBy, spelt) && Spelt(a.having, b.having);
}

bool SpeltQuery(const Query& a, const Query& b) {
    const auto sameOrder = [](const OrderItem& one, const OrderItem& other) {
        return one.descending == other.descending && Spelt(one.expression, other.expression);
    };
    return a.keepAll == b.keepAll && std::ranges::equal(a.arms, b.arms, SpeltSelect) &&
           std::ranges::equal(a.orderBy, b.orderBy, sameOrder);
}

template <class Same, class SameFields>
bool NodeComparison<Same, SameFields>::SameQuery(const Query& a, const Query& b) {
    return SpeltQuery(a, b);
}

} // namespace

bool SameExpression::operator()(const Expression& a, const Expression& b) const {
    const auto sameFields = [this](const ColumnName& one, const ColumnName& other) { return sameField(one, other); };
    return SameNodes(meaning(a), meaning(b), NodeComparison(*this, sameFields));
}

} // namespace jet
