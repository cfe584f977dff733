#include "jet/rewrite/ClassScan.h"

#include "jet/rewrite/SideScan.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

using namespace tree;

class ClassScan final : SideScan {
  public:
    ClassScan(Select& select, std::vector<OrderItem>* orderBy, Transform* crosstab, const Catalogue& catalogue)
        : SideScan(select, orderBy == nullptr ? noOrder_ : *orderBy, catalogue), order_(orderBy), crosstab_(crosstab) {}

    bool Apply() {
        if (!ReadTables() || !FindLarge() || !AllConditionsArePlaced()) return false;
        if (!ReadOutput() || !ReadConditions()) return false;
        if (!MakeSidesOfFigures() || !IsWorthIt() || !FindImage() || !PlaceFigures()) return false;
        plan_.whole = HasGroupsOfTheScan();
        plan_.existence = figures_.empty() && values_.empty();
        Rewrite();
        return true;
    }

  private:
    /// An aggregate as it stands in the statement, and the figure that it is made of.
    struct Figure {
        const Expression* expression = nullptr;
        ScannedAggregate made;
        ScanFigure planned;
        std::optional<Named> ranked = {};
        std::vector<Named> firsts = {}; ///< fields of the first row
    };

    // --- Reading ---

    bool ReadOutput() {
        const auto readItem = [&](const SelectItem& item) { return item.expression && Read(*item.expression, true); };
        const auto readTerm = [&](const ExpressionPtr& term) { return Read(*term, false); };
        const auto readOrder = [&](const OrderItem& item) { return Read(*item.expression, true); };
        if (!std::ranges::all_of(select_.items, readItem) || !std::ranges::all_of(select_.groupBy, readTerm) ||
            !std::ranges::all_of(orderBy_, readOrder) || (select_.having && !Read(*select_.having, true)))
            return false;
        if (crosstab_ == nullptr) return HasGroups() && NamesDiffer();
        // totals over rows are written another way (see EmitPivot)
        return figures_.empty() && !rest_ && select_.into.empty() && Read(*crosstab_->pivot, false) &&
               Read(*crosstab_->value, true) && figures_.size() == 1;
    }

    /// "SELECT DISTINCT value": each value is a group of its own.
    [[nodiscard]] bool MayGroupByValue() const {
        const auto isValue = [&](const Expression& expression) { return IsValue(expression) || IsAlias(expression); };
        return select_.duplicates == Duplicates::DropEqualValues && crosstab_ == nullptr && !select_.top &&
               select_.groupBy.empty() && !select_.having &&
               std::ranges::all_of(select_.items, [&](const SelectItem& item) { return IsValue(*item.expression); }) &&
               std::ranges::all_of(orderBy_, [&](const OrderItem& item) { return isValue(*item.expression); });
    }

    [[nodiscard]] bool HasGroups() const {
        if (select_.duplicates == Duplicates::DropEqualRows) return false;
        return !select_.groupBy.empty() || !figures_.empty() || select_.duplicates == Duplicates::DropEqualValues;
    }

    bool Read(const Expression& expression, bool grouped) {
        if (AggregateOf(expression) != nullptr) return grouped && ReadAggregate(expression);
        if (const auto* column = std::get_if<ColumnName>(&expression.node)) return ReadField(expression, *column);
        if (const auto* call = std::get_if<Call>(&expression.node); call && FindFunction(call->name) == nullptr)
            return false;
        return VisitOperands(expression, [&](const Expression& operand) { return Read(operand, grouped); });
    }

    bool ReadField(const Expression& expression, const ColumnName& column) {
        const std::size_t table = TableOf(column);
        if (IsValue(expression)) {
            values_.push_back({&expression, table, column});
            return MayGroupByValue();
        }
        if (table == large_) return AddCode(*InfoOf(column));
        if (table < tables_.size()) fields_.push_back({&expression, table, column});
        return table < tables_.size() || IsAlias(expression);
    }

    bool ReadAggregate(const Expression& expression) {
        const auto& call = std::get<Call>(expression.node);
        const std::string function(AggregateOf(expression)->name);
        if (call.star) return Add({&expression, {{}, 0, function}, {ScanFigureKind::Rows}});
        if (call.arguments.size() != 1) return false;
        const Expression& argument = *call.arguments.front();
        if (function == "first") return ReadFirst(expression, argument);
        if (IsValue(argument)) {
            const auto kind = call.distinct ? std::nullopt : FigureOfValues(function);
            const ColumnType type = LargeField(argument)->type;
            return kind && Add({&expression, {{}, 0, function, CompareKind::ValueText, type}, {*kind}});
        }
        const bool extreme = IsExtreme(function);
        const auto* column = std::get_if<ColumnName>(&argument.node);
        if (column != nullptr && !call.distinct && (extreme || function == "count") && IsSmall(TableOf(*column)))
            return AddRanked(expression, {&argument, TableOf(*column), *column}, function);
        // What is read twice is no less and no more, and counts once.
        rest_ = true;
        return (extreme || (function == "count" && call.distinct)) && Read(argument, false);
    }

    bool Add(Figure figure) {
        figures_.push_back(std::move(figure));
        return figures_.size() <= kMostScanFigures;
    }

    bool AddRanked(const Expression& expression, Named ranked, const std::string& function) {
        const ScanFigureKind kind = function == "count" ? ScanFigureKind::CountOf
                                    : function == "min" ? ScanFigureKind::LeastOf
                                                        : ScanFigureKind::GreatestOf;
        return Add({&expression, RankedAggregate(function, ranked.name), {kind}, std::move(ranked)});
    }

    /// First of an expression that reads the large table alone.
    bool ReadFirst(const Expression& expression, const Expression& argument) {
        Figure figure{&expression, {{}, 0, "first"}, {ScanFigureKind::FirstRow}};
        const bool fits = ReadRow(argument, figure.firsts);
        return fits && !figure.firsts.empty() && Add(std::move(figure));
    }

    // --- Sides ---

    bool MakeSidesOfFigures() {
        if (!MakeSides()) return false;
        for (Figure& figure : figures_)
            if (figure.ranked)
                std::tie(figure.planned.keys, figure.planned.field) =
                    sides_.AddRanked(figure.ranked->table, figure.ranked->name);
        return true;
    }

    /// Whether there is any row at all for each item, an index tells sooner (see SemiJoin.h).
    [[nodiscard]] bool IsWorthIt() const {
        const bool existence =
            crosstab_ == nullptr && select_.groupBy.empty() && figures_.empty() && values_.empty() && codes_.empty();
        return !existence || sides_.all().size() > 1 || !plan_.values.empty() || !plan_.lists.empty();
    }

    [[nodiscard]] bool CountsRows() const {
        return std::ranges::any_of(figures_, [](const Figure& figure) {
            return figure.planned.kind != ScanFigureKind::Least && figure.planned.kind != ScanFigureKind::Greatest &&
                   figure.planned.kind != ScanFigureKind::FirstRow;
        });
    }

    bool PlaceFigures() {
        return std::ranges::all_of(figures_, [&](const Figure& figure) { return AreInImage(figure.firsts); }) &&
               PlaceSides(CountsRows());
    }

    // --- Are the groups of the scan those of the statement? ---

    [[nodiscard]] bool HasGroupsOfTheScan() const {
        if (!values_.empty()) return true;
        if (crosstab_ != nullptr || order_ == nullptr || select_.top || select_.groupBy.empty() || rest_) return false;
        if (select_.duplicates != Duplicates::Keep) return false;
        const auto isBare = [](const ExpressionPtr& term) { return std::holds_alternative<ColumnName>(term->node); };
        const auto isState = [](const Figure& figure) {
            return figure.planned.kind == ScanFigureKind::Sum || figure.planned.kind == ScanFigureKind::Spread;
        };
        if (!std::ranges::all_of(select_.groupBy, isBare) || std::ranges::any_of(figures_, isState)) return false;
        // every field that tells groups of the scan apart must be grouped by
        std::vector<std::pair<std::size_t, std::string>> terms;
        for (const ExpressionPtr& term : select_.groupBy) {
            const auto& name = std::get<ColumnName>(term->node);
            if (TableOf(name) >= tables_.size()) return false;
            terms.emplace_back(TableOf(name), InfoOf(name)->name);
        }
        const auto grouped = [&](std::size_t table, const std::string& name) {
            return std::ranges::any_of(
                terms, [&](const auto& term) { return term.first == table && SameName(term.second, name); });
        };
        return std::ranges::all_of(fields_,
                                   [&](const Named& field) { return grouped(field.table, field.name.name); }) &&
               std::ranges::all_of(codes_, [&](const ColumnInfo& code) { return grouped(large_, code.name); });
    }

    // --- Rewriting ---

    void Rewrite() {
        const std::string alias = tables_[large_].name.alias;
        ScanTable scan{alias, codes_, {}, {}, {}, {}};
        PlanFigures(scan);
        PlanValues(scan);
        MakeQueries(scan);
        ReplaceFields(scan);
        scan.plan = std::move(plan_);
        const bool ofScan = scan.plan.whole && !scan.plan.byValue;
        if (scan.plan.byValue) select_.duplicates = Duplicates::Keep;
        if (ofScan) LeaveOutGroups(scan.plan);
        ReadFromScan(std::move(scan));
        if (ofScan) AskOfRows();
    }

    /// What HAVING asks of groups that are those of the scan is asked of each row.
    void AskOfRows() {
        if (!select_.having) return;
        std::vector<ExpressionPtr> where;
        if (select_.where) TakeApart(std::move(select_.where), where);
        where.push_back(std::move(select_.having));
        select_.where = AllOf(select_.at, std::move(where));
    }

    void PlanFigures(ScanTable& scan) {
        for (Figure& figure : figures_) {
            figure.made.table = scan.alias;
            figure.made.figure = PlaceOf(figure.planned);
            figure.made.whole = plan_.whole;
            for (const Named& field : figure.firsts)
                ReadFromFirstRow(scan, field);
            if (!figure.firsts.empty())
                figure.made.argument = std::move(std::get<Call>(Writable(figure.expression).node).arguments.front());
            Writable(figure.expression).node = figure.made;
        }
    }

    /// Values that are equal are written alike, or the scan gives up.
    void PlanValues(ScanTable& scan) {
        plan_.byValue = !values_.empty();
        if (!plan_.byValue) return;
        for (SelectItem& item : select_.items)
            if (item.alias.empty()) item.alias = LargeField(*item.expression)->name;
        for (const Named& value : values_)
            ReadFromFirstRow(scan, value);
    }

    /// The order that GROUP BY would have given stays, unless no row tells what group it is of.
    void LeaveOutGroups(ScanPlan& plan) {
        if (select_.having && (TakesDiffering(*select_.having, plan) || TakesMoreThan(*select_.having, plan)))
            select_.having = nullptr;
        if (TellsGroups(plan))
            for (ExpressionPtr& term : select_.groupBy)
                order_->push_back({std::move(term), false});
        select_.groupBy.clear();
    }

    /// False when rows hold only figures, and these either order them or say that they differ, whichever it is.
    [[nodiscard]] bool TellsGroups(const ScanPlan& plan) const {
        return !std::ranges::all_of(select_.items, [&](const SelectItem& item) {
            const auto* figure = std::get_if<ScannedAggregate>(&item.expression->node);
            if (figure == nullptr || figure->argument != nullptr) return false;
            return plan.differing.has_value() || std::ranges::any_of(*order_, [&](const OrderItem& order) {
                       const auto* key = std::get_if<ScannedAggregate>(&order.expression->node);
                       return key != nullptr && key->figure == figure->figure && key->argument == nullptr;
                   });
        });
    }

    /// "Min(field) <> Max(field)"
    [[nodiscard]] static bool TakesDiffering(const Expression& having, ScanPlan& plan) {
        const auto* comparison = std::get_if<Comparison>(&having.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::NotEqual) return false;
        const auto* one = std::get_if<ScannedAggregate>(&comparison->left->node);
        const auto* other = std::get_if<ScannedAggregate>(&comparison->right->node);
        if (one == nullptr || other == nullptr) return false;
        const ScanFigure& a = plan.figures[one->figure];
        const ScanFigure& b = plan.figures[other->figure];
        const auto isExtreme = [](const ScanFigure& figure) {
            return figure.kind == ScanFigureKind::LeastOf || figure.kind == ScanFigureKind::GreatestOf;
        };
        if (!isExtreme(a) || !isExtreme(b) || a.keys != b.keys || a.field != b.field) return false;
        plan.differing = std::pair(one->figure, other->figure);
        return true;
    }

    /// "Count(*) > number"
    [[nodiscard]] static bool TakesMoreThan(const Expression& having, ScanPlan& plan) {
        const auto* comparison = std::get_if<Comparison>(&having.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Greater) return false;
        const auto* count = std::get_if<ScannedAggregate>(&comparison->left->node);
        const auto* number = std::get_if<NumberLiteral>(&comparison->right->node);
        constexpr std::size_t kMostDigits = 9;
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        if (count == nullptr || plan.figures[count->figure].kind != ScanFigureKind::Rows || number == nullptr ||
            number->text.size() > kMostDigits || !std::ranges::all_of(number->text, isDigit))
            return false;
        plan.moreThan = static_cast<std::uint32_t>(std::stoul(number->text));
        return true;
    }

    static inline const std::vector<OrderItem> noOrder_;
    std::vector<OrderItem>* order_;
    Transform* crosstab_;
    std::vector<Named> values_; ///< the value itself, where groups are told apart by it
    std::vector<Figure> figures_;
    bool rest_ = false; ///< an aggregate stays, over the groups of the scan
};

} // namespace

bool ScanClasses(Select& select, std::vector<OrderItem>* orderBy, const Catalogue& catalogue) {
    return ClassScan(select, orderBy, nullptr, catalogue).Apply();
}

bool ScanClasses(Transform& transform, const Catalogue& catalogue) {
    return ClassScan(transform.query.arms.front(), &transform.query.orderBy, &transform, catalogue).Apply();
}

} // namespace jet
