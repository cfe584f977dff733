#include "calculate/NewFile.h"

#include "calculate/CopyData.h"
#include "jet/engine/BulkLoad.h"

#include <array>

namespace tessaro {

namespace {

/// The indicator that the result is of, with its place among the classes, and its unit.
struct NewItems {
    QString indicator; ///< their global identifiers
    QString unit;
};

NewItems MakeItems(TargetDatabase& target, const DataEntrySheet& result) {
    const QString indicator = target.GetIndicatorGId(result.indicator);
    target.PutInClass(indicator, result.sector, result.indicatorClass);
    return {indicator, target.GetUnitGId(result.unit)};
}

/// A row of Data with its four ids.
struct IdRow {
    std::int64_t time = 0;
    std::int64_t area = 0;
    std::int64_t combination = 0;
    std::int64_t source = 0;
};

std::vector<IdRow> IdsOf(TargetDatabase& target, const NewItems& items, const DataEntrySheet& result) {
    std::vector<IdRow> rows;
    rows.reserve(result.rows.size());
    for (const DataEntryRow& row : result.rows) {
        IdRow ids;
        ids.time = target.GetTimePeriodNID(row.timePeriod);
        ids.area = target.GetAreaNID(row.areaId);
        ids.combination = target.GetIUSNId(items.indicator, items.unit, target.GetSubpopGID(row.subpop));
        ids.source = target.GetSourceNID(row.source, ids.combination);
        rows.push_back(ids);
    }
    return rows;
}

/// The text that stands for a number in a statement: "0.5" for ".50".
std::string StoredNumber(const QString& value) {
    return jet::DecimalText(jet::ReadNumber(value.toStdString()).value_or(0));
}

} // namespace

void Write_New_File(TargetDatabase& target, const DataEntrySheet& result, bool withDataView) {
    target.Run(QStringLiteral("Delete * FROM Data"));
    if (withDataView) Copy_Data(target);
    target.connection().Begin();
    const std::vector<IdRow> rows = IdsOf(target, MakeItems(target, result), result);
    target.connection().Commit();
    jet::BulkLoad load(target.connection().path());
    load.Into("Data", {"TimePeriodNId", "IUSNId", "AreaNId", "SourceNId", "Datavalue"});
    for (std::size_t row = 0; row < rows.size(); ++row)
        load.Add(std::array<jet::Value, 5>{rows[row].time, rows[row].combination, rows[row].area, rows[row].source,
                                           StoredNumber(result.rows[row].value)});
    load.Finish();
}

} // namespace tessaro
