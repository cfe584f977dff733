#include "jet/rewrite/ColumnScans.h"

#include "jet/columns/ColumnImage.h"
#include "jet/functions/Functions.h"
#include "jet/rewrite/JoinedTables.h"
#include "jet/sql/CopyExpression.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"
#include "jet/values/NumberList.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <optional>
#include <utility>

namespace jet {

namespace {

using namespace tree;

/// More different combinations than this part of the rows are not worth the detour.
constexpr std::size_t kRowsAGroup = 4;

const FunctionInfo* AggregateOf(const Expression& expression) {
    const auto* call = std::get_if<Call>(&expression.node);
    const FunctionInfo* function = call != nullptr ? FindFunction(call->name) : nullptr;
    return function != nullptr && function->aggregate ? function : nullptr;
}

bool IsWhole(ColumnType type) {
    return type == ColumnType::Long || type == ColumnType::Integer || type == ColumnType::Counter;
}

bool IsExtreme(std::string_view function) {
    return function == "min" || function == "max";
}

std::optional<ScanFigureKind> FigureOfValues(std::string_view function) {
    constexpr std::array<std::pair<std::string_view, ScanFigureKind>, 9> kKinds = {{{"count", ScanFigureKind::Values},
                                                                                    {"min", ScanFigureKind::Least},
                                                                                    {"max", ScanFigureKind::Greatest},
                                                                                    {"sum", ScanFigureKind::Sum},
                                                                                    {"avg", ScanFigureKind::Sum},
                                                                                    {"stdev", ScanFigureKind::Spread},
                                                                                    {"stdevp", ScanFigureKind::Spread},
                                                                                    {"var", ScanFigureKind::Spread},
                                                                                    {"varp", ScanFigureKind::Spread}}};
    for (const auto& [name, kind] : kKinds)
        if (name == function) return kind;
    return std::nullopt;
}

/// True when a row that is there twice changes the figure.
bool CountsRows(ScanFigureKind kind) {
    return kind == ScanFigureKind::Rows || kind == ScanFigureKind::Values || kind == ScanFigureKind::Sum ||
           kind == ScanFigureKind::Spread;
}

ScanOperator OperatorOf(ComparisonOperator op, bool swapped) {
    switch (op) {
    case ComparisonOperator::Equal:
        return ScanOperator::Equal;
    case ComparisonOperator::NotEqual:
        return ScanOperator::NotEqual;
    case ComparisonOperator::Less:
        return swapped ? ScanOperator::Greater : ScanOperator::Less;
    case ComparisonOperator::LessOrEqual:
        return swapped ? ScanOperator::GreaterOrEqual : ScanOperator::LessOrEqual;
    case ComparisonOperator::Greater:
        return swapped ? ScanOperator::Less : ScanOperator::Greater;
    case ComparisonOperator::GreaterOrEqual:
        return swapped ? ScanOperator::LessOrEqual : ScanOperator::GreaterOrEqual;
    }
    return ScanOperator::Equal;
}

std::optional<double> NumberOf(const Expression& expression) {
    if (const auto* number = std::get_if<NumberLiteral>(&expression.node)) return ReadNumber(number->text);
    const auto* negation = std::get_if<Negation>(&expression.node);
    const auto* number = negation != nullptr ? std::get_if<NumberLiteral>(&negation->operand->node) : nullptr;
    const auto read = number != nullptr ? ReadNumber(number->text) : std::nullopt;
    return read ? std::optional(-*read) : std::nullopt;
}

class ScanRewrite final : JoinedTables {
  public:
    ScanRewrite(Select& select, const std::vector<OrderItem>& orderBy, const Catalogue& catalogue)
        : JoinedTables(select, orderBy, catalogue) {}

    bool Apply() {
        if (!ReadTables() || !FindLarge() || !AllConditionsArePlaced()) return false;
        if (!ReadOutput() || !HasGroups() || !ReadConditions()) return false;
        SortTables();
        if (!FindImage()) return false;
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
    /// "small.field = large.field", whole numbers both.
    struct Link {
        std::size_t table = 0;
        ColumnName field;
        const ColumnInfo* large = nullptr;
    };
    /// What becomes of a condition.
    enum class Role {
        Outside, ///< SQLite tests it on the joined groups
        Pushed,  ///< the scan tests it
        Link,    ///< it joins a small table with the large one
        Own,     ///< it reads one small table alone
    };

    // --- Reading ---

    bool FindLarge() {
        const auto holdsValues = [](const JoinedTable& table) {
            return std::ranges::any_of(table.info->columns, [](const ColumnInfo& column) {
                return KindOfColumn(column.name, column.type) == CompareKind::ValueText;
            });
        };
        const auto found = std::ranges::find_if(tables_, holdsValues);
        if (found == tables_.end() || std::count_if(tables_.begin(), tables_.end(), holdsValues) != 1) return false;
        large_ = static_cast<std::size_t>(found - tables_.begin());
        return true;
    }

    [[nodiscard]] const ColumnInfo* InfoOf(const ColumnName& column) const {
        return tables_[TableOf(column)].info->column(column.name);
    }

    /// The field of the large table that a bare name means; nullptr for anything else.
    [[nodiscard]] const ColumnInfo* LargeField(const Expression& expression) const {
        const auto* column = std::get_if<ColumnName>(&expression.node);
        return column != nullptr && TableOf(*column) == large_ ? InfoOf(*column) : nullptr;
    }

    [[nodiscard]] bool IsValue(const Expression& expression) const {
        const ColumnInfo* info = LargeField(expression);
        return info != nullptr && KindOfColumn(info->name, info->type) == CompareKind::ValueText;
    }

    bool AddCode(const ColumnInfo& field) {
        if (!IsWhole(field.type)) return false;
        if (std::ranges::find(codes_, field.name, &ColumnInfo::name) == codes_.end()) codes_.push_back(field);
        return codes_.size() <= kMostScanCodes;
    }

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
        const ColumnInfo* info = InfoOf(ranked.field);
        const ColumnType type = info->type == ColumnType::Counter ? ColumnType::Long : info->type;
        const ScanFigureKind kind = function == "min" ? ScanFigureKind::LeastRanked : ScanFigureKind::GreatestRanked;
        return AddFigure(
            {&expression, {{}, 0, function, KindOfColumn(info->name, info->type), type}, kind, std::move(ranked)});
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

    template <class Take> void EachCondition(const Take& take) const {
        if (select_.where) EachPart(*select_.where, take);
        for (const TableReferencePtr& reference : select_.from)
            EachJoined(*reference, take);
    }
    template <class Take> static void EachJoined(const TableReference& reference, const Take& take) {
        const auto* join = std::get_if<Join>(&reference.node);
        if (join == nullptr) return;
        if (join->on) EachPart(*join->on, take);
        EachJoined(*join->left, take);
        EachJoined(*join->right, take);
    }
    template <class Take> static void EachPart(const Expression& condition, const Take& take) {
        const auto* chain = std::get_if<Logical>(&condition.node);
        if (chain == nullptr || chain->op != LogicalOperator::And) return take(condition);
        for (const ExpressionPtr& operand : chain->operands)
            EachPart(*operand, take);
    }

    /// Nothing for a condition that nobody could test.
    std::optional<Role> RoleOf(const Expression& condition) {
        TableSet tables = 0;
        if (!AddTables(condition, tables)) return std::nullopt;
        if (auto link = LinkIn(condition)) {
            links_.push_back(std::move(*link));
            return Role::Link;
        }
        if (tables == Bit(large_) && (ReadValueTest(condition) || ReadFilledTest(condition) || ReadListTest(condition)))
            return Role::Pushed;
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

    [[nodiscard]] std::optional<Link> LinkIn(const Expression& condition) const {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return std::nullopt;
        for (const bool swapped : {false, true}) {
            const Expression& large = swapped ? *comparison->right : *comparison->left;
            const Expression& small = swapped ? *comparison->left : *comparison->right;
            const ColumnInfo* field = LargeField(large);
            const auto* other = std::get_if<ColumnName>(&small.node);
            if (field == nullptr || !IsWhole(field->type) || other == nullptr || TableOf(*other) == large_) continue;
            if (IsWhole(InfoOf(*other)->type)) return Link{TableOf(*other), *other, field};
        }
        return std::nullopt;
    }

    bool ReadValueTest(const Expression& condition) {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr) return false;
        const bool swapped = IsValue(*comparison->right);
        if (!swapped && !IsValue(*comparison->left)) return false;
        const auto number = NumberOf(swapped ? *comparison->left : *comparison->right);
        if (number) plan_.values.push_back({OperatorOf(comparison->op, swapped), *number});
        return number.has_value();
    }

    /// "value Is Not Null" and "Len(Trim(value)) > 0". No value is infinite, so that all but Null differ from that.
    bool ReadFilledTest(const Expression& condition) {
        const auto* null = std::get_if<IsNull>(&condition.node);
        const bool notNull = null != nullptr && null->negated && IsValue(*null->operand);
        if (!notNull && !IsLengthOfValue(condition)) return false;
        blanksCount_ = blanksCount_ && notNull;
        plan_.values.push_back({ScanOperator::NotEqual, std::numeric_limits<double>::infinity()});
        return true;
    }

    [[nodiscard]] bool IsLengthOfValue(const Expression& condition) const {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison == nullptr || comparison->op != ComparisonOperator::Greater) return false;
        const auto* zero = std::get_if<NumberLiteral>(&comparison->right->node);
        const auto* length = std::get_if<Call>(&comparison->left->node);
        if (zero == nullptr || zero->text != "0" || length == nullptr || length->name != "len") return false;
        const auto* trimmed = std::get_if<Call>(&length->arguments.front()->node);
        return trimmed != nullptr && trimmed->name == "trim" && IsValue(*trimmed->arguments.front());
    }

    /// "field = number", too, is a list, of one.
    bool ReadListTest(const Expression& condition) {
        const auto* comparison = std::get_if<Comparison>(&condition.node);
        if (comparison != nullptr && comparison->op == ComparisonOperator::Equal) {
            const ColumnInfo* field = LargeField(*comparison->left);
            const auto* number = std::get_if<NumberLiteral>(&comparison->right->node);
            const bool listed = number != nullptr && NumberListLength(number->text + ")") == number->text.size();
            if (field == nullptr || !IsWhole(field->type) || !listed) return false;
            plan_.lists.push_back({0, false, number->text});
            listed_.push_back(field->name);
            return true;
        }
        const auto* list = std::get_if<InList>(&condition.node);
        const ColumnInfo* field = list != nullptr ? LargeField(*list->operand) : nullptr;
        if (field == nullptr || list->numbers.empty() || !IsWhole(field->type)) return false;
        plan_.lists.push_back({0, list->negated, list->numbers});
        listed_.push_back(field->name);
        return true;
    }

    /// A list that would become a parameter, which the query of the keys can't have.
    [[nodiscard]] static bool HoldsLongList(const Expression& expression) {
        constexpr std::size_t kLong = 10'000;
        if (const auto* list = std::get_if<InList>(&expression.node); list && list->numbers.size() > kLong) return true;
        return !VisitOperands(expression, [](const Expression& operand) { return !HoldsLongList(operand); });
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

    bool FindImage() {
        if (codes_.size() > kMostScanCodes) return false;
        image_ = catalogue_.image(*tables_[large_].info);
        if (image_ == nullptr) return false;
        const auto value = std::ranges::find(image_->columns(), ColumnForm::Values, &ImageColumn::form);
        if (value == image_->columns().end()) return false;
        plan_.value = static_cast<std::size_t>(value - image_->columns().begin());
        if (!blanksCount_ && MayHoldBlanks(*value)) return false;
        return PlaceCodes() && PlaceLists() && PlaceLinks();
    }

    /// True when one of the texts that are kept as they are is blank, or there are too many to look.
    [[nodiscard]] bool MayHoldBlanks(const ImageColumn& value) const {
        constexpr std::size_t kMany = 100'000;
        if (value.textRows.size() > kMany) return true;
        std::string room;
        return std::ranges::any_of(value.textRows, [&](std::uint32_t row) {
            const std::string_view text = image_->TextOf(value, row, room);
            const std::size_t first = text.find_first_not_of(' ');
            return first == std::string_view::npos || text[first] == '\0';
        });
    }

    [[nodiscard]] std::optional<std::size_t> Coded(const std::string& field) const {
        const int position = image_->find(field);
        if (position < 0) return std::nullopt;
        const auto place = static_cast<std::size_t>(position);
        return image_->columns()[place].form == ColumnForm::Coded ? std::optional(place) : std::nullopt;
    }

    bool PlaceCodes() {
        std::size_t groups = 1;
        for (const ColumnInfo& field : codes_) {
            const auto place = Coded(field.name);
            if (!place) return false;
            plan_.codes.push_back(*place);
            groups *= image_->columns()[*place].numbers.size();
            if (groups > image_->rows() / kRowsAGroup + kRowsAGroup) return false;
        }
        return true;
    }

    bool PlaceLists() {
        for (std::size_t i = 0; i < listed_.size(); ++i) {
            const int position = image_->find(listed_[i]);
            if (position < 0) return false;
            plan_.lists[i].column = static_cast<std::size_t>(position);
            const ImageColumn& column = image_->columns()[plan_.lists[i].column];
            if (column.form == ColumnForm::Values || FindsFewRows(column, plan_.lists[i])) return false;
        }
        return true;
    }

    /// True when an index would give the listed rows sooner.
    [[nodiscard]] bool FindsFewRows(const ImageColumn& column, const ScanListTest& test) const {
        constexpr std::size_t kManyTimes = 200;
        if (test.negated) return false;
        const NumberList list(test.numbers);
        std::size_t rows = column.form == ColumnForm::Coded ? 0 : list.size();
        for (std::size_t code = column.hasNull ? 1 : 0; code < column.numbers.size(); ++code)
            if (list.contains(column.numbers[code])) rows += column.counts[code];
        return rows < image_->rows() / kManyTimes;
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
        plan_.image = image_;
        plan_.schemaName = tables_[large_].info->database;
        PlanFigures();
        TakeConditions();
        ScanTable scan{tables_[large_].name.alias, codes_, {}, {}};
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

    std::size_t large_ = 0;
    TableSet kept_ = 0; ///< small tables that stay in the join
    std::vector<ColumnInfo> codes_;
    std::vector<Figure> figures_;
    std::vector<Link> links_;
    std::vector<Role> roles_; ///< of the conditions, in the order in which they are taken
    std::vector<std::string> listed_;
    bool blanksCount_ = true; ///< no condition takes blank values for none
    std::shared_ptr<const ColumnImage> image_;
    ScanPlan plan_;
};

} // namespace

bool ScanColumns(tree::Query& query, const Catalogue& catalogue) {
    static const std::vector<OrderItem> noOrder;
    // a part of such a union gives its rows before the next one is begun, and could not be begun again
    if (std::ranges::find(query.keepAll, true) != query.keepAll.end()) return false;
    bool changed = false;
    for (Select& select : query.arms)
        changed = ScanRewrite(select, query.arms.size() == 1 ? query.orderBy : noOrder, catalogue).Apply() || changed;
    return changed;
}

} // namespace jet
