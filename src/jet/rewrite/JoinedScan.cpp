#include "jet/rewrite/JoinedScan.h"

#include "jet/rewrite/ScanNames.h"
#include "jet/rewrite/ScanShape.h"
#include "jet/sql/CopyExpression.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <utility>

namespace jet {

namespace {

using namespace tree;

/// More different combinations than this part of the rows are not worth the detour.
constexpr std::size_t kRowsAGroup = 4;

/// True when a row that is there twice changes the figure.
bool CountsRows(ScanFigureKind kind) {
    return kind == ScanFigureKind::Rows || kind == ScanFigureKind::Values || kind == ScanFigureKind::Sum ||
           kind == ScanFigureKind::Spread;
}

class JoinedScan final : ScanShape {
  public:
    JoinedScan(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : ScanShape(select, orderBy, catalogue) {}

    bool Apply() {
        if (!ReadTables() || !FindLarge() || !AllConditionsArePlaced()) return false;
        if (!ReadOutput() || !HasGroups() || !ReadConditions()) return false;
        SortTables();
        if (!FindImage() || !HasFewGroups() || !PlaceLinks()) return false;
        Rewrite();
        return true;
    }

  private:
    /// A least or greatest value of a field of a small table.
    struct Ranked {
        std::size_t table = 0;
        ColumnName field;
    };
    /// An aggregate as it stands in the statement, and what goes in its place.
    struct Figure {
        const Expression* expression = nullptr;
        ScannedAggregate made;
        ScanFigureKind kind = ScanFigureKind::Rows;
        std::optional<Ranked> ranked = {};
        std::optional<ColumnName> counted = {}; ///< a number or small field: rows count where it is not Null
    };
    /// What becomes of a condition.
    enum class Role {
        Outside, ///< SQLite tests it on the joined groups
        Pushed,  ///< the scan tests it
        Link,    ///< it joins a small table with the large one
        Own,     ///< it reads one small table alone
    };

    // --- Reading ---

    /// An expression that SQLite computes for each joined row of groups.
    bool ReadOutside(const Expression& expression) {
        if (AggregateOf(expression) != nullptr) return false;
        if (const auto* column = std::get_if<ColumnName>(&expression.node)) {
            const std::size_t table = TableOf(*column);
            if (table == large_) return AddCode(*InfoOf(*column));
            if (table < tables_.size()) kept_ |= Bit(table);
            return table < tables_.size() || IsAlias(expression);
        }
        if (const auto* call = std::get_if<Call>(&expression.node); call && FindFunction(call->name) == nullptr)
            return false;
        return VisitOperands(expression, [&](const Expression& operand) { return ReadOutside(operand); });
    }

    /// The same of one that may hold aggregates.
    bool ReadGrouped(const Expression& expression) {
        if (AggregateOf(expression) != nullptr) return ReadAggregate(expression);
        if (std::holds_alternative<ColumnName>(expression.node)) return ReadOutside(expression);
        return VisitOperands(expression, [&](const Expression& operand) { return ReadGrouped(operand); });
    }

    bool ReadAggregate(const Expression& expression) {
        const auto& call = std::get<Call>(expression.node);
        const std::string function(AggregateOf(expression)->name);
        if (call.star) return AddFigure({&expression, {{}, 0, function}, ScanFigureKind::Rows});
        if (call.arguments.size() != 1) return false;
        const Expression& argument = *call.arguments.front();
        if (IsValue(argument)) {
            const auto kind = FigureOfValues(function);
            const ColumnInfo& info = *LargeField(argument);
            return kind && !call.distinct &&
                   AddFigure({&expression, {{}, 0, function, CompareKind::ValueText, info.type}, *kind});
        }
        if (const auto* column = std::get_if<ColumnName>(&argument.node);
            column && function == "count" && !call.distinct)
            return ReadOutside(argument) &&
                   AddFigure({&expression, {{}, 0, function}, ScanFigureKind::Rows, {}, *column});
        // What is read twice is no less and no more, and counts once.
        if (!IsExtreme(function) && !(function == "count" && call.distinct)) return false;
        if (const auto* column = std::get_if<ColumnName>(&argument.node); column && IsExtreme(function)) {
            const std::size_t table = TableOf(*column);
            if (table < tables_.size() && table != large_) return AddRanked(expression, {table, *column}, function);
        }
        return ReadOutside(argument);
    }

    bool AddFigure(Figure figure) {
        figures_.push_back(std::move(figure));
        return figures_.size() <= kMostScanFigures;
    }

    bool AddRanked(const Expression& expression, Ranked ranked, const std::string& function) {
        const ScanFigureKind kind = function == "min" ? ScanFigureKind::LeastRanked : ScanFigureKind::GreatestRanked;
        return AddFigure({&expression, RankedAggregate(function, ranked.field), kind, std::move(ranked)});
    }

    bool ReadOutput() {
        const auto readItem = [&](const SelectItem& item) { return item.expression && ReadGrouped(*item.expression); };
        const auto readTerm = [&](const ExpressionPtr& term) { return ReadOutside(*term); };
        const auto readOrder = [&](const OrderItem& item) { return ReadGrouped(*item.expression); };
        return std::ranges::all_of(select_.items, readItem) && std::ranges::all_of(select_.groupBy, readTerm) &&
               std::ranges::all_of(orderBy_, readOrder) && (!select_.having || ReadGrouped(*select_.having));
    }

    [[nodiscard]] bool HasGroups() const { return !select_.groupBy.empty() || !figures_.empty(); }

    // --- Conditions ---

    bool ReadConditions() {
        bool fits = true;
        EachCondition([&](const Expression& condition) {
            const std::optional<Role> role = RoleOf(condition);
            fits = fits && role.has_value();
            roles_.push_back(role.value_or(Role::Outside));
        });
        return fits;
    }

    /// Nothing for a condition that nobody could test.
    std::optional<Role> RoleOf(const Expression& condition) {
        TableSet tables = 0;
        if (!AddTables(condition, tables)) return std::nullopt;
        if (auto link = LinkIn(condition)) {
            links_.push_back(std::move(*link));
            return Role::Link;
        }
        if (tables == Bit(large_) && ReadPushed(condition)) return Role::Pushed;
        if (tables == Bit(large_) && !LeavesMost(condition)) return std::nullopt;
        const bool ofOne = std::has_single_bit(tables) && tables != Bit(large_);
        if (ofOne && !HoldsLongList(condition)) return Role::Own;
        return ReadOutside(condition) ? std::optional(Role::Outside) : std::nullopt;
    }

    /// False for conditions on the large table by which an index would find the rows sooner.
    [[nodiscard]] static bool LeavesMost(const Expression& condition) {
        if (const auto* comparison = std::get_if<Comparison>(&condition.node))
            return comparison->op == ComparisonOperator::NotEqual;
        if (const auto* list = std::get_if<InList>(&condition.node)) return list->negated;
        if (const auto* null = std::get_if<IsNull>(&condition.node)) return null->negated;
        return std::holds_alternative<Not>(condition.node);
    }

    // --- Which tables are joined ---

    /// A small table stays in the join when something is read from it, or when it is joined otherwise than by one
    /// number.
    void SortTables() {
        for (std::size_t table = 0; table < tables_.size(); ++table) {
            const bool linked = std::ranges::count(links_, table, &Link::table) == 1;
            if (table != large_ && (!linked || RanksSeveral(table))) kept_ |= Bit(table);
        }
        std::erase_if(figures_, [&](const Figure& each) { return each.ranked && IsKept(each.ranked->table); });
        for (const Link& link : links_)
            if (IsKept(link.table)) static_cast<void>(AddCode(*link.large));
    }

    [[nodiscard]] bool IsKept(std::size_t table) const { return (kept_ & Bit(table)) != 0; }

    [[nodiscard]] bool RanksSeveral(std::size_t table) const {
        const Ranked* first = RankedOf(table);
        return std::ranges::any_of(figures_, [&](const Figure& each) {
            return each.ranked && each.ranked->table == table && !SameName(each.ranked->field.name, first->field.name);
        });
    }

    /// The field of a table whose least or greatest value is asked for; nullptr when there is none.
    [[nodiscard]] const Ranked* RankedOf(std::size_t table) const {
        const auto found = std::ranges::find_if(
            figures_, [&](const Figure& each) { return each.ranked && each.ranked->table == table; });
        return found == figures_.end() ? nullptr : &*found->ranked;
    }

    // --- The image ---

    [[nodiscard]] bool HasFewGroups() const {
        std::size_t groups = 1;
        for (const std::size_t place : plan_.codes) {
            groups *= image_->columns()[place].numbers.size();
            if (groups > image_->rows() / kRowsAGroup + kRowsAGroup) return false;
        }
        return true;
    }

    bool PlaceLinks() {
        const bool counts = std::ranges::any_of(figures_, [](const Figure& each) { return CountsRows(each.kind); });
        for (const Link& link : links_) {
            const auto place = Coded(link.large->name);
            if (!place) return false;
            ScanKeys keys;
            keys.column = *place;
            keys.single = counts && !IsKept(link.table);
            plan_.keys.push_back(std::move(keys));
        }
        return true;
    }

    // --- Rewriting ---

    void Rewrite() {
        PlanFigures();
        TakeConditions();
        ScanTable scan{tables_[large_].name.alias, codes_, {}, {}, {}, {}};
        for (const Link& link : links_)
            scan.keys.push_back(KeysOf(link));
        scan.plan = std::move(plan_);
        std::vector<ExpressionPtr> where;
        for (std::size_t i = 0; i < conditions_.size(); ++i)
            if (StaysOutside(i)) where.push_back(std::move(conditions_[i].expression));
        select_.where = AllOf(select_.at, std::move(where));
        select_.from = References(kept_);
        auto reference = std::make_unique<TableReference>();
        reference->at = select_.at;
        reference->node = std::move(scan);
        select_.from.insert(select_.from.begin(), std::move(reference));
    }

    [[nodiscard]] bool StaysOutside(std::size_t condition) const {
        if (roles_[condition] == Role::Outside) return true;
        return roles_[condition] != Role::Pushed && (conditions_[condition].tables & kept_) != 0;
    }

    /// Each different figure once; the aggregates of the statement give way to them.
    void PlanFigures() {
        for (Figure& figure : figures_) {
            ScanFigure planned{figure.kind, 0};
            if (figure.ranked) {
                const auto link = std::ranges::find(links_, figure.ranked->table, &Link::table);
                planned.keys = static_cast<std::size_t>(link - links_.begin());
                plan_.keys[planned.keys].ranked = figure.made.kind;
            }
            const auto place = std::ranges::find(plan_.figures, planned);
            figure.made.table = tables_[large_].name.alias;
            figure.made.figure = static_cast<std::size_t>(place - plan_.figures.begin());
            if (place == plan_.figures.end()) plan_.figures.push_back(planned);
            // the select is ours to change; only the walk through it was a reading one
            auto* const written = const_cast<Expression*>(figure.expression);
            written->node = figure.counted ? RowsWhere(std::move(*figure.counted), figure.made) : figure.made;
        }
    }

    /// "Nz(Sum(IIf(IsNull(field), 0, rows)), 0)"
    [[nodiscard]] Expression::Node RowsWhere(ColumnName field, const ScannedAggregate& rows) const {
        const Position at = select_.at;
        const auto call = [&](const char* name, std::vector<ExpressionPtr> arguments) {
            return Call{name, false, false, std::move(arguments)};
        };
        const auto list = [](auto... items) {
            std::vector<ExpressionPtr> all;
            (all.push_back(std::move(items)), ...);
            return all;
        };
        const auto zero = [&] { return MakeExpression(at, NumberLiteral{"0"}); };
        ExpressionPtr isNull = MakeExpression(at, call("isnull", list(MakeExpression(at, std::move(field)))));
        ExpressionPtr counted = MakeExpression(at, ColumnName{rows.table, ScanFigureName(rows.figure), true});
        ExpressionPtr choice = MakeExpression(at, call("iif", list(std::move(isNull), zero(), std::move(counted))));
        return call("nz", list(MakeExpression(at, call("sum", list(std::move(choice)))), zero()));
    }

    /// "SELECT field, ranked FROM small WHERE its own conditions". A table that stays in the join keeps its conditions
    /// there as well.
    [[nodiscard]] QueryPtr KeysOf(const Link& link) {
        std::vector<ExpressionPtr> where;
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            if (roles_[i] != Role::Own || conditions_[i].tables != Bit(link.table)) continue;
            if (ExpressionPtr own = Copied(*conditions_[i].expression)) where.push_back(std::move(own));
        }
        QueryPtr query = QueryOf(Bit(link.table), MakeExpression(select_.at, ColumnName(link.field)),
                                 AllOf(select_.at, std::move(where)));
        if (const Ranked* ranked = RankedOf(link.table)) {
            SelectItem second;
            second.at = select_.at;
            second.expression = MakeExpression(select_.at, ColumnName(ranked->field));
            query->arms.front().items.push_back(std::move(second));
        }
        return query;
    }

    TableSet kept_ = 0; ///< small tables that stay in the join
    std::vector<Figure> figures_;
    std::vector<Link> links_;
    std::vector<Role> roles_; ///< of the conditions, in the order in which they are taken
};

} // namespace

bool ScanJoined(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue) {
    return JoinedScan(select, orderBy, catalogue).Apply();
}

} // namespace jet
