#include "jet/rewrite/TextJoins.h"

#include "jet/rewrite/JoinedTables.h"
#include "jet/sql/MakeTree.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

using namespace tree;

constexpr std::int64_t kManyRows = 200'000;

class TextJoins final : JoinedTables {
  public:
    TextJoins(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : JoinedTables(select, orderBy, catalogue) {}

    bool Apply() {
        if (!ReadTables() || !AllConditionsArePlaced()) return false;
        const std::vector<int> numbers = LinksToLarge();
        bool changed = false;
        for (Comparison* const link : Links())
            changed = Turn(*link) || Lead(*link, numbers) || changed;
        return changed;
    }

  private:
    /// All equalities of two fields.
    [[nodiscard]] std::vector<Comparison*> Links() const {
        std::vector<Comparison*> links;
        if (select_.where) AddLinks(*select_.where, links);
        for (const TableReferencePtr& reference : select_.from)
            AddJoined(*reference, links);
        return links;
    }
    static void AddJoined(TableReference& reference, std::vector<Comparison*>& links) {
        auto* join = std::get_if<Join>(&reference.node);
        if (join == nullptr) return;
        if (join->on) AddLinks(*join->on, links);
        AddJoined(*join->left, links);
        AddJoined(*join->right, links);
    }
    static void AddLinks(Expression& condition, std::vector<Comparison*>& links) {
        if (auto* chain = std::get_if<Logical>(&condition.node); chain && chain->op == LogicalOperator::And)
            for (const ExpressionPtr& operand : chain->operands)
                AddLinks(*operand, links);
        auto* comparison = std::get_if<Comparison>(&condition.node);
        const auto isField = [](const ExpressionPtr& side) { return std::holds_alternative<ColumnName>(side->node); };
        if (comparison != nullptr && comparison->op == ComparisonOperator::Equal && isField(comparison->left) &&
            isField(comparison->right))
            links.push_back(comparison);
    }

    [[nodiscard]] std::size_t TableOfField(const ExpressionPtr& side) const {
        return TableOf(std::get<ColumnName>(side->node));
    }
    [[nodiscard]] bool IsLarge(std::size_t table) const { return RowsOf(Bit(table)) >= kManyRows; }

    /// True when the table is joined to another small one by texts.
    [[nodiscard]] bool IsJoinedByText(std::size_t table) const {
        return std::ranges::any_of(Links(), [&](const Comparison* link) {
            const std::size_t left = TableOfField(link->left);
            const std::size_t right = TableOfField(link->right);
            if (left == right || (left != table && right != table) || IsLarge(left == table ? right : left))
                return false;
            return !IsNumberColumn(*link->left) && !IsNumberColumn(*link->right);
        });
    }

    /// By how many numbers each small table is joined to large ones.
    [[nodiscard]] std::vector<int> LinksToLarge() const {
        std::vector<int> count(tables_.size());
        for (const Comparison* link : Links()) {
            const std::size_t left = TableOfField(link->left);
            const std::size_t right = TableOfField(link->right);
            if (IsLarge(left) != IsLarge(right) && IsNumberColumn(*link->left)) ++count[IsLarge(left) ? right : left];
        }
        return count;
    }

    /// Of two small tables that are joined by texts, the one that gives more numbers of the large table is read first:
    /// very many of its rows may have one text.
    bool Lead(Comparison& link, const std::vector<int>& numbers) const {
        const std::size_t left = TableOfField(link.left);
        const std::size_t right = TableOfField(link.right);
        if (left == right || IsNumberColumn(*link.left) || IsNumberColumn(*link.right)) return false;
        if (numbers[left] == numbers[right] || numbers[left] == 0 || numbers[right] == 0) return false;
        std::get<ColumnName>((numbers[left] > numbers[right] ? link.left : link.right)->node).unindexed = true;
        return true;
    }

    bool Turn(Comparison& link) {
        const bool swapped = IsLarge(TableOfField(link.right));
        ExpressionPtr& large = swapped ? link.right : link.left;
        ExpressionPtr& small = swapped ? link.left : link.right;
        const std::size_t table = TableOfField(small);
        if (!IsLarge(TableOfField(large)) || IsLarge(table) || !IsNumberColumn(*large) || !IsNumberColumn(*small))
            return false;
        if (!IsJoinedByText(table)) return false;
        const Position at = small->at;
        small = MakeExpression(
            at, Arithmetic{ArithmeticOperator::Add, std::move(small), MakeExpression(at, NumberLiteral{"0"})});
        return true;
    }
};

} // namespace

bool JoinTextsFirst(Query& query, const Catalogue& catalogue) {
    bool changed = false;
    for (Select& select : query.arms)
        changed = TextJoins(select, query.orderBy, catalogue).Apply() || changed;
    return changed;
}

} // namespace jet
