#include "jet/rewrite/ScanShape.h"

#include "jet/sql/VisitOperands.h"
#include "jet/values/NumberList.h"
#include "jet/values/Value.h"

#include <algorithm>
#include <array>
#include <limits>

namespace jet {

using namespace tree;

namespace {

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
    if (const auto* negation = std::get_if<Negation>(&expression.node)) {
        const auto* number = std::get_if<NumberLiteral>(&negation->operand->node);
        const auto read = number != nullptr ? ReadNumber(number->text) : std::nullopt;
        return read ? std::optional(-*read) : std::nullopt;
    }
    const auto* call = std::get_if<Call>(&expression.node); // CDbl('1.5')
    if (call == nullptr || call->name != "cdbl" || call->arguments.size() != 1) return std::nullopt;
    const auto* text = std::get_if<TextLiteral>(&call->arguments.front()->node);
    return text != nullptr ? ReadNumber(text->text) : std::nullopt;
}

/// A list of one for a number that can be written in a list, with its sign; empty for others.
std::string ListOf(const Expression& expression) {
    const auto* negation = std::get_if<Negation>(&expression.node);
    const auto* number = std::get_if<NumberLiteral>(negation != nullptr ? &negation->operand->node : &expression.node);
    if (number == nullptr) return {};
    const std::string text = (negation != nullptr ? "-" : "") + number->text;
    return NumberListLength(text + ")") == text.size() ? text : std::string();
}

} // namespace

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

bool HoldsValues(const TableInfo& table) {
    return std::ranges::any_of(table.columns, [](const ColumnInfo& column) {
        return KindOfColumn(column.name, column.type) == CompareKind::ValueText;
    });
}

// --- Fields ---

bool ScanShape::FindLarge() {
    const auto holdsValues = [](const JoinedTable& table) { return HoldsValues(*table.info); };
    const auto found = std::ranges::find_if(tables_, holdsValues);
    if (found == tables_.end() || std::count_if(tables_.begin(), tables_.end(), holdsValues) != 1) return false;
    large_ = static_cast<std::size_t>(found - tables_.begin());
    image_ = catalogue_.image(*found->info);
    return image_ != nullptr;
}

const ColumnInfo* ScanShape::InfoOf(const ColumnName& column) const {
    return tables_[TableOf(column)].info->column(column.name);
}

const ColumnInfo* ScanShape::LargeField(const Expression& expression) const {
    const auto* column = std::get_if<ColumnName>(&expression.node);
    return column != nullptr && TableOf(*column) == large_ ? InfoOf(*column) : nullptr;
}

bool ScanShape::IsValue(const Expression& expression) const {
    const ColumnInfo* info = LargeField(expression);
    return info != nullptr && KindOfColumn(info->name, info->type) == CompareKind::ValueText;
}

bool ScanShape::AddCode(const ColumnInfo& field) {
    if (!IsWhole(field.type)) return false;
    if (std::ranges::find(codes_, field.name, &ColumnInfo::name) == codes_.end()) codes_.push_back(field);
    return codes_.size() <= kMostScanCodes;
}

ScannedAggregate ScanShape::RankedAggregate(const std::string& function, const ColumnName& field) const {
    const ColumnInfo* info = InfoOf(field);
    const ColumnType type = info->type == ColumnType::Counter ? ColumnType::Long : info->type;
    return {{}, 0, function, KindOfColumn(info->name, info->type), type};
}

// --- Conditions ---

std::optional<ScanShape::Link> ScanShape::LinkIn(const Expression& condition) const {
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

bool ScanShape::ReadPushed(const Expression& condition) {
    return ReadValueTest(condition) || ReadBetween(condition) || ReadFilledTest(condition) || ReadListTest(condition);
}

bool ScanShape::ReadValueTest(const Expression& condition) {
    const auto* comparison = std::get_if<Comparison>(&condition.node);
    if (comparison == nullptr) return false;
    const bool swapped = IsValue(*comparison->right);
    if (!swapped && !IsValue(*comparison->left)) return false;
    const auto number = NumberOf(swapped ? *comparison->left : *comparison->right);
    if (number) plan_.values.push_back({OperatorOf(comparison->op, swapped), *number});
    return number.has_value();
}

bool ScanShape::ReadBetween(const Expression& condition) {
    const auto* between = std::get_if<Between>(&condition.node);
    if (between == nullptr || between->negated || !IsValue(*between->operand)) return false;
    const auto low = NumberOf(*between->low);
    const auto high = NumberOf(*between->high);
    if (!low || !high) return false;
    plan_.values.push_back({ScanOperator::GreaterOrEqual, *low});
    plan_.values.push_back({ScanOperator::LessOrEqual, *high});
    return true;
}

/// "value Is Not Null" and "Len(Trim(value)) > 0". No value is infinite, so that all but Null differ from that.
bool ScanShape::ReadFilledTest(const Expression& condition) {
    const auto* null = std::get_if<IsNull>(&condition.node);
    const bool notNull = null != nullptr && null->negated && IsValue(*null->operand);
    if (!notNull && !IsLengthOfValue(condition)) return false;
    blanksCount_ = blanksCount_ && notNull;
    plan_.values.push_back({ScanOperator::NotEqual, std::numeric_limits<double>::infinity()});
    return true;
}

bool ScanShape::IsLengthOfValue(const Expression& condition) const {
    const auto* comparison = std::get_if<Comparison>(&condition.node);
    if (comparison == nullptr || comparison->op != ComparisonOperator::Greater) return false;
    const auto* zero = std::get_if<NumberLiteral>(&comparison->right->node);
    const auto* length = std::get_if<Call>(&comparison->left->node);
    if (zero == nullptr || zero->text != "0" || length == nullptr || length->name != "len") return false;
    const auto* trimmed = std::get_if<Call>(&length->arguments.front()->node);
    return trimmed != nullptr && trimmed->name == "trim" && IsValue(*trimmed->arguments.front());
}

/// "field = number" and "field <> number", too, are lists, of one.
bool ScanShape::ReadListTest(const Expression& condition) {
    if (const auto* list = std::get_if<InList>(&condition.node))
        return AddList(*list->operand, list->negated, list->numbers);
    const auto* comparison = std::get_if<Comparison>(&condition.node);
    if (comparison == nullptr) return false;
    const bool differs = comparison->op == ComparisonOperator::NotEqual;
    if (!differs && comparison->op != ComparisonOperator::Equal) return false;
    return AddList(*comparison->left, differs, ListOf(*comparison->right)) ||
           AddList(*comparison->right, differs, ListOf(*comparison->left));
}

bool ScanShape::AddList(const Expression& operand, bool negated, const std::string& numbers) {
    const ColumnInfo* field = LargeField(operand);
    if (field == nullptr || numbers.empty() || !IsWhole(field->type)) return false;
    plan_.lists.push_back({0, negated, numbers});
    listed_.push_back(field->name);
    return true;
}

bool ScanShape::HoldsLongList(const Expression& expression) {
    constexpr std::size_t kLong = 10'000;
    if (const auto* list = std::get_if<InList>(&expression.node); list && list->numbers.size() > kLong) return true;
    return !VisitOperands(expression, [](const Expression& operand) { return !HoldsLongList(operand); });
}

// --- The image ---

bool ScanShape::FindImage() {
    if (codes_.size() > kMostScanCodes) return false;
    const auto value = std::ranges::find(image_->columns(), ColumnForm::Values, &ImageColumn::form);
    if (value == image_->columns().end()) return false;
    plan_.image = image_;
    plan_.schemaName = tables_[large_].info->database;
    plan_.value = static_cast<std::size_t>(value - image_->columns().begin());
    if (!blanksCount_ && MayHoldBlanks(*value)) return false;
    return PlaceCodes() && PlaceLists();
}

/// True when one of the texts that are kept as they are is blank, or there are too many to look.
bool ScanShape::MayHoldBlanks(const ImageColumn& value) const {
    constexpr std::size_t kMany = 100'000;
    if (value.textRows.size() > kMany) return true;
    std::string room;
    return std::ranges::any_of(value.textRows, [&](std::uint32_t row) {
        const std::string_view text = image_->TextOf(value, row, room);
        const std::size_t first = text.find_first_not_of(' ');
        return first == std::string_view::npos || text[first] == '\0';
    });
}

std::optional<std::size_t> ScanShape::Coded(const std::string& field) const {
    const int position = image_->find(field);
    if (position < 0) return std::nullopt;
    const auto place = static_cast<std::size_t>(position);
    return image_->columns()[place].form == ColumnForm::Coded ? std::optional(place) : std::nullopt;
}

bool ScanShape::PlaceCodes() {
    for (const ColumnInfo& field : codes_) {
        const auto place = Coded(field.name);
        if (!place) return false;
        plan_.codes.push_back(*place);
    }
    return true;
}

bool ScanShape::PlaceLists() {
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
bool ScanShape::FindsFewRows(const ImageColumn& column, const ScanListTest& test) const {
    constexpr std::size_t kManyTimes = 200;
    if (test.negated) return false;
    const NumberList list(test.numbers);
    std::size_t rows = column.form == ColumnForm::Coded ? 0 : list.size();
    for (std::size_t code = column.hasNull ? 1 : 0; code < column.numbers.size(); ++code)
        if (list.contains(column.numbers[code])) rows += column.counts[code];
    return rows < image_->rows() / kManyTimes;
}

} // namespace jet
