#include "presentation/RowsColumns.h"

#include "session/ErrorSink.h"
#include "session/Query.h"
#include "view/InView.h"

#include <algorithm>

namespace tessaro {

RowsColumns::FieldList RowsColumns::Available() const {
    FieldList fields;
    for (int i = 0; i < kPivotFieldCount; ++i)
        if (PlacementOf(static_cast<PivotField>(i)) == Placement::Unused) fields.push_back(static_cast<PivotField>(i));
    return fields;
}

Placement RowsColumns::PlacementOf(PivotField field) const {
    if (std::find(columns_.begin(), columns_.end(), field) != columns_.end()) return Placement::Column;
    if (std::find(rows_.begin(), rows_.end(), field) != rows_.end()) return Placement::Row;
    return Placement::Unused;
}

void RowsColumns::Place(PivotField field, Placement placement) {
    if (PlacementOf(field) != placement) PlaceAt(field, placement, kPivotFieldCount);
}

void RowsColumns::PlaceAt(PivotField field, Placement placement, int position) {
    std::erase(rows_, field);
    std::erase(columns_, field);
    if (placement == Placement::Unused) return;
    FieldList& list = placement == Placement::Row ? rows_ : columns_;
    list.insert(list.begin() + std::clamp(position, 0, static_cast<int>(list.size())), field);
}

void RowsColumns::Reset() {
    rows_.clear();
    columns_.clear();
}

void RowsColumns::SetDefaultRowsColumns() {
    const ErrorTrap trap("SetDefaultRowsColumns");
    Reset();
    const auto several = [](PivotField field) { return GetDistinctCount(field) > 1; };
    const bool areas = several(PivotField::AreaID);
    const bool indicators = several(PivotField::Indicator);
    const bool subpops = several(PivotField::Subpop);
    const bool units = several(PivotField::Unit);
    const bool times = several(PivotField::TimePeriod);
    const bool sources = several(PivotField::Source);
    if (areas || (!times && !sources)) rows_ = {PivotField::AreaID, PivotField::AreaName};
    if (times) rows_.push_back(PivotField::TimePeriod);
    if (sources) rows_.push_back(PivotField::Source);
    if (indicators) columns_.push_back(PivotField::Indicator);
    if (units) columns_.push_back(PivotField::Unit);
    if (subpops) columns_.push_back(PivotField::Subpop);
}

void RowsColumns::SetDefaultAxes() {
    const ErrorTrap trap("SetDefaultRowsColumns");
    Reset();
    FieldList several;
    for (const PivotField field : {PivotField::TimePeriod, PivotField::AreaName, PivotField::Indicator,
                                   PivotField::Subpop, PivotField::Unit, PivotField::Source})
        if (GetDistinctCount(field == PivotField::AreaName ? PivotField::AreaID : field) > 1) several.push_back(field);
    columns_ = {several.empty() ? PivotField::Indicator : several.front()};
    for (const PivotField field : {PivotField::AreaName, PivotField::Indicator, PivotField::Subpop})
        if (field != columns_.front() && std::find(several.begin(), several.end(), field) != several.end())
            rows_.push_back(field);
    FillEmptyRows();
}

void RowsColumns::FillEmptyRows() {
    if (!rows_.empty()) return;
    const FieldList aside = Available();
    for (const PivotField field : {PivotField::AreaID, PivotField::AreaName})
        if (PlacementOf(field) == Placement::Unused) Place(field, Placement::Row);
    if (rows_.empty() && !aside.empty()) Place(aside.front(), Placement::Row);
}

RowsColumns::FieldList RowsColumns::Build_Records(const std::function<void(int)>& progress) {
    const ErrorTrap trap("Build_Records");
    FieldList moved;
    for (int i = 0; i < kPivotFieldCount; ++i) {
        const auto field = static_cast<PivotField>(i);
        if (progress) progress(20 + 15 * i);
        // Areas usually differ in their names; where two areas have the same name, the id is needed too, so it is
        // tested.
        if (PlacementOf(field) != Placement::Unused || field == PivotField::AreaName) continue;
        if (!MultipleExists(field, *this)) continue;
        Place(field, Placement::Row);
        moved.push_back(field);
    }
    return moved;
}

namespace {

/// The group list of MultipleExists: what is placed, in a fixed order.
QString GroupList(const RowsColumns& arrangement) {
    constexpr struct {
        PivotField field;
        const char* text;
    } kGroups[] = {{PivotField::TimePeriod, "T.TimePeriod"}, {PivotField::Indicator, "IUS.[Indicator]"},
                   {PivotField::Source, "IUS.Source"},       {PivotField::AreaID, "A.AreaId"},
                   {PivotField::AreaName, "A.AreaName"},     {PivotField::Unit, "IUS.Unit"},
                   {PivotField::Subpop, "IUS.Subpop"}};
    QStringList groups;
    for (const auto& group : kGroups)
        if (arrangement.PlacementOf(group.field) != Placement::Unused) groups << QLatin1String(group.text);
    return groups.join(QLatin1Char(','));
}

QString DistinctStatement(PivotField field) {
    return QStringLiteral("SELECT DISTINCT ") + KeyOf(field) + InView(joins::kDistinct);
}

} // namespace

// True only when values that would share a cell differ in this field.
bool MultipleExists(PivotField field, const RowsColumns& arrangement) {
    const QString f = KeyOf(field);
    const QString groups = GroupList(arrangement);
    const QString from = InView(joins::kSharedCells);
    const QString groupBy = groups.isEmpty() ? QString() : QStringLiteral(" GROUP BY ") + groups;
    const Records counts = Select(QStringLiteral("SELECT Count(") + f + QStringLiteral(") AS CoutField") + from +
                                      groupBy + QStringLiteral(" ORDER BY Count(") + f + QStringLiteral(") DESC"),
                                  jet::CursorType::ForwardOnly);
    if (counts.atEnd() || counts.Number(std::size_t{0}) <= 1) return false;
    const Records limits =
        Select(QStringLiteral("SELECT Min(") + f + QStringLiteral("), Max(") + f + QStringLiteral(")") + from +
                   groupBy + QStringLiteral(" HAVING Min(") + f + QStringLiteral(") <> Max(") + f + QStringLiteral(")"),
               jet::CursorType::ForwardOnly);
    return !limits.atEnd();
}

QString GetDistinctVal(PivotField field) {
    Records values = Select(DistinctStatement(field));
    return !values.atEnd() && values.rows().RecordCount() == 1 ? values.Text(std::size_t{0}) : QString();
}

QStringList SingleValues(int most) {
    QStringList values;
    for (const PivotField field :
         {PivotField::Indicator, PivotField::AreaName, PivotField::TimePeriod, PivotField::Unit, PivotField::Subpop}) {
        if (values.size() == most) break;
        const QString value = GetDistinctVal(field);
        if (!value.isEmpty()) values << value;
    }
    return values;
}

int GetDistinctCount(PivotField field) {
    Records values = Select(QStringLiteral("SELECT DISTINCT ") + KeyOf(field) + InView(joins::kDistinctCount, {}));
    return values.isOpen() ? static_cast<int>(values.rows().RecordCount()) : 0;
}

QStringList DistinctValues(PivotField field, int most) {
    QStringList found;
    for (Records values = Select(DistinctStatement(field) + QStringLiteral(" ORDER BY ") + KeyOf(field));
         !values.atEnd() && found.size() < most; values.MoveNext())
        found << values.Text(std::size_t{0});
    return found;
}

} // namespace tessaro
