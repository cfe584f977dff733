#include "jet/rewrite/SideScan.h"

#include "jet/rewrite/ScanNames.h"
#include "jet/sql/MakeTree.h"
#include "jet/sql/VisitOperands.h"

#include <algorithm>
#include <utility>

namespace jet {

using namespace tree;

// --- Reading ---

bool SideScan::ReadRow(const Expression& expression, std::vector<Named>& read) {
    if (AggregateOf(expression) != nullptr) return false;
    if (const auto* column = std::get_if<ColumnName>(&expression.node)) {
        const ColumnInfo* info = LargeField(expression);
        if (info == nullptr || (!IsValue(expression) && !IsWhole(info->type))) return false;
        read.push_back({&expression, large_, *column});
        return true;
    }
    if (const auto* call = std::get_if<Call>(&expression.node); call && FindFunction(call->name) == nullptr)
        return false;
    return VisitOperands(expression, [&](const Expression& operand) { return ReadRow(operand, read); });
}

bool SideScan::NamesDiffer() const {
    std::vector<std::string> names;
    for (const SelectItem& item : select_.items) {
        const auto* column = std::get_if<ColumnName>(&item.expression->node);
        const std::string& name = item.alias.empty() && column != nullptr ? column->name : item.alias;
        if (!name.empty() &&
            std::ranges::any_of(names, [&](const std::string& other) { return SameName(other, name); }))
            return false;
        names.push_back(name);
    }
    return true;
}

bool SideScan::ReadConditions() {
    bool fits = true;
    EachCondition([&](const Expression& condition) { fits = fits && ReadCondition(condition); });
    if (fits) LinkEqualNumbers();
    return fits;
}

bool SideScan::ReadCondition(const Expression& condition) {
    TableSet tables = 0;
    if (!AddTables(condition, tables)) return false;
    if (auto link = LinkIn(condition)) {
        links_.push_back(std::move(*link));
    } else if (tables == Bit(large_)) {
        return ReadPushed(condition);
    } else if (const Comparison* equal = EqualNumbers(condition)) {
        equalNumbers_.push_back(equal);
    } else {
        if ((tables & Bit(large_)) != 0 || HoldsLongList(condition)) return false;
        sides_.Join(tables);
    }
    return true;
}

const Comparison* SideScan::EqualNumbers(const Expression& condition) const {
    const auto* comparison = std::get_if<Comparison>(&condition.node);
    if (comparison == nullptr || comparison->op != ComparisonOperator::Equal) return nullptr;
    const auto tableOf = [&](const Expression& side) {
        const auto* column = std::get_if<ColumnName>(&side.node);
        const std::size_t table = column == nullptr ? tables_.size() : TableOf(*column);
        return IsSmall(table) && IsWhole(InfoOf(*column)->type) ? table : tables_.size();
    };
    const std::size_t left = tableOf(*comparison->left);
    const std::size_t right = tableOf(*comparison->right);
    return left < tables_.size() && right < tables_.size() && left != right ? comparison : nullptr;
}

/// Small tables whose fields equal one number of the large table need not be joined with each other: each is linked
/// with it.
void SideScan::LinkEqualNumbers() {
    const auto isOf = [&](const Link& link, const Expression& field) {
        const auto& name = std::get<ColumnName>(field.node);
        return link.table == TableOf(name) && SameName(link.field.name, name.name);
    };
    const auto isLinked = [&](const Expression& field, const ColumnInfo* large) {
        return std::ranges::any_of(links_, [&](const Link& link) { return link.large == large && isOf(link, field); });
    };
    const auto passOn = [&](const Expression& from, const Expression& to) {
        const auto& name = std::get<ColumnName>(to.node);
        for (std::size_t i = 0; i < links_.size(); ++i)
            if (isOf(links_[i], from) && !isLinked(to, links_[i].large))
                links_.push_back({TableOf(name), name, links_[i].large});
    };
    for (std::size_t before = links_.size() + 1; before != links_.size();) {
        before = links_.size();
        for (const Comparison* equal : equalNumbers_) {
            passOn(*equal->left, *equal->right);
            passOn(*equal->right, *equal->left);
        }
    }
    for (const Comparison* equal : equalNumbers_) {
        const bool linked = std::ranges::any_of(links_, [&](const Link& link) { return isOf(link, *equal->left); });
        if (!linked)
            sides_.Join(Bit(TableOf(std::get<ColumnName>(equal->left->node))) |
                        Bit(TableOf(std::get<ColumnName>(equal->right->node))));
    }
}

// --- Sides ---

bool SideScan::MakeSides() {
    TableSet small = 0;
    for (std::size_t table = 0; table < tables_.size(); ++table)
        if (table != large_) small |= Bit(table);
    for (Link& link : links_)
        sides_.Add(std::move(link));
    if (!sides_.Finish(small)) return false;
    for (const Named& field : fields_)
        sides_.AddField(field.table, field.name);
    return sides_.fields() <= kMostScanFields;
}

bool SideScan::PlaceSides(bool single) {
    return std::ranges::all_of(sides_.all(), [&](const Side& side) { return PlaceSide(side, single); });
}

bool SideScan::PlaceSide(const Side& side, bool single) {
    ScanSide made;
    for (const Link& link : side.links) {
        const auto place = Coded(link.large->name);
        if (!place) return false;
        made.columns.push_back(*place);
    }
    const auto kindOf = [&](const ColumnName& name) {
        const ColumnInfo* info = InfoOf(name);
        return KindOfColumn(info->name, info->type);
    };
    for (const ColumnName& name : side.fields)
        made.fields.push_back(kindOf(name));
    for (const ColumnName& name : side.ranked)
        made.ranked.push_back(kindOf(name));
    made.single = single;
    plan_.sides.push_back(std::move(made));
    return true;
}

bool SideScan::AreInImage(const std::vector<Named>& fields) const {
    return std::ranges::all_of(fields, [&](const Named& field) { return image_->find(field.name.name) >= 0; });
}

// --- Rewriting ---

std::size_t SideScan::PlaceOf(const ScanFigure& planned) {
    const auto place = std::ranges::find(plan_.figures, planned);
    const auto index = static_cast<std::size_t>(place - plan_.figures.begin());
    if (place == plan_.figures.end()) plan_.figures.push_back(planned);
    return index;
}

void SideScan::ReadFromFirstRow(ScanTable& scan, const Named& field) {
    const ColumnInfo& info = *InfoOf(field.name);
    const bool value = KindOfColumn(info.name, info.type) == CompareKind::ValueText;
    const auto column = static_cast<std::size_t>(image_->find(info.name));
    const std::size_t place =
        PlaceOf(value ? ScanFigure{ScanFigureKind::FirstValue} : ScanFigure{ScanFigureKind::FirstNumber, 0, column});
    const std::string name = "jet$f" + std::to_string(place);
    if (std::ranges::find(scan.further, name, &ScanField::name) == scan.further.end())
        scan.further.push_back({name, "a" + std::to_string(place), info.type, KindOfColumn(info.name, info.type)});
    Writable(field.expression).node = ColumnName{scan.alias, name, true};
}

void SideScan::MakeQueries(ScanTable& scan) {
    TakeConditions();
    for (const Side& side : sides_.all())
        scan.sides.push_back(QueryOfSide(side));
}

QueryPtr SideScan::QueryOfSide(const Side& side) {
    std::vector<ExpressionPtr> where;
    for (Condition& condition : conditions_)
        if (condition.expression && condition.tables != 0 && (condition.tables & ~side.tables) == 0)
            where.push_back(std::move(condition.expression));
    std::vector<ColumnName> names;
    for (const Link& link : side.links)
        names.push_back(link.field);
    names.insert(names.end(), side.fields.begin(), side.fields.end());
    names.insert(names.end(), side.ranked.begin(), side.ranked.end());
    QueryPtr query = QueryOf(side.tables, MakeExpression(select_.at, ColumnName(names.front())),
                             AllOf(select_.at, std::move(where)));
    for (std::size_t i = 0; i < names.size(); ++i) {
        SelectItem item;
        item.at = select_.at;
        item.expression = MakeExpression(select_.at, ColumnName(names[i]));
        item.alias = "jet$c" + std::to_string(i);
        if (i == 0) query->arms.front().items.clear();
        query->arms.front().items.push_back(std::move(item));
    }
    return query;
}

void SideScan::ReplaceFields(ScanTable& scan) {
    for (SelectItem& item : select_.items) {
        const auto* column = std::get_if<ColumnName>(&item.expression->node);
        if (column != nullptr && item.alias.empty() && IsSmall(TableOf(*column))) item.alias = InfoOf(*column)->name;
    }
    for (const Named& field : fields_) {
        const ColumnInfo& info = *InfoOf(field.name);
        const std::size_t place = sides_.PlaceOf(field.table, field.name);
        const std::string name = ScanFieldName(place);
        const ColumnType type = info.type == ColumnType::Counter ? ColumnType::Long : info.type;
        if (std::ranges::find(scan.further, name, &ScanField::name) == scan.further.end())
            scan.further.push_back({name, "x" + std::to_string(place), type, KindOfColumn(info.name, info.type)});
        Writable(field.expression).node = ColumnName{scan.alias, name, true};
    }
}

void SideScan::ReadFromScan(ScanTable scan) {
    std::vector<ExpressionPtr> where;
    for (Condition& condition : conditions_)
        if (condition.expression && condition.tables == 0) where.push_back(std::move(condition.expression));
    select_.where = AllOf(select_.at, std::move(where));
    select_.from.clear();
    auto reference = std::make_unique<TableReference>();
    reference->at = select_.at;
    reference->node = std::move(scan);
    select_.from.push_back(std::move(reference));
}

} // namespace jet
