#include "calculate/NewFile.h"

#include "calculate/CopyData.h"
#include "jet/engine/BulkLoad.h"

#include <array>

namespace tessaro {

namespace {

/// A table whose items have a global identifier and a name, as the statement spells it that adds a row.
struct NamedItems {
    const char* stem;    ///< of the table and of its GId column
    const char* name;    ///< the column of the name
    const char* columns; ///< of a new row
    const char* extra;   ///< what a new row has behind the name
};
// The indicator's information is the text, not a Null: so it has always been.
constexpr NamedItems kIndicators{"Indicator", "[Indicator]", " (IndicatorGId, [Indicator], Info)  Values (",
                                 ",'Null')"};
constexpr NamedItems kSectors{"SectorLabel1", "[SectorLabel1]", " (SectorLabel1GId, SectorLabel1)  Values (", ")"};
constexpr NamedItems kClasses{"SectorLabel2", "[SectorLabel2]", " (SectorLabel2GId, SectorLabel2)  Values (", ")"};
constexpr NamedItems kUnits{"Unit", "[Unit]", " (UnitGId, Unit) VALUES(", ")"};

/// The global identifier of the item with this name; a new one gets a row.
QString FindOrMake(TargetDatabase& target, const NamedItems& items, const QString& name) {
    const QString stem = QLatin1String(items.stem);
    const QString table = target.InLanguage(stem);
    const jet::Value found =
        target.First(QStringLiteral("Select ") + stem + QStringLiteral("GId From ") + table +
                     QStringLiteral(" Where ") + QLatin1String(items.name) + QStringLiteral(" = ") + Quoted(name));
    if (!found.isNull()) return QString::fromStdString(found.toText());
    QString gid = target.NewGId();
    target.Run(QStringLiteral("Insert into ") + table + QLatin1String(items.columns) + QuotedList({gid, name}) +
               QLatin1String(items.extra));
    return gid;
}

void LinkSectorToClass(TargetDatabase& target, const QString& sector, const QString& sectorClass) {
    const jet::Value found =
        target.First(QStringLiteral("Select SectorLabel1GId From [Sector]  Where SectorLabel1GID = ") + Quoted(sector) +
                     QStringLiteral(" AND  SectorLabel2GID = ") + Quoted(sectorClass));
    if (found.isNull())
        target.Run(QStringLiteral("Insert into [Sector] (SectorLabel1GId, SectorLabel2GId) VALUES(") +
                   QuotedList({sector, sectorClass}) + QLatin1Char(')'));
}

void LinkClassToIndicator(TargetDatabase& target, const QString& sectorClass, const QString& indicator) {
    const jet::Value found =
        target.First(QStringLiteral("Select SectorLabel2GId From [INDICATOR_SECTOR]  Where SectorLabel2GID = ") +
                     Quoted(sectorClass) + QStringLiteral(" AND IndicatorGID = ") + Quoted(indicator));
    if (found.isNull())
        target.Run(QStringLiteral("Insert into [INDICATOR_SECTOR] (IndicatorGID, SectorLabel2GId) VALUES(") +
                   QuotedList({indicator, sectorClass}) + QLatin1Char(')'));
}

/// The indicator that the result is of, with its place among the classes, and its unit.
struct NewItems {
    QString indicator; ///< their global identifiers
    QString unit;
};

NewItems MakeItems(TargetDatabase& target, const DataEntrySheet& result) {
    const QString indicator = FindOrMake(target, kIndicators, result.indicator);
    const QString sector = FindOrMake(target, kSectors, result.sector);
    const QString sectorClass = FindOrMake(target, kClasses, result.indicatorClass);
    LinkSectorToClass(target, sector, sectorClass);
    LinkClassToIndicator(target, sectorClass, indicator);
    return {indicator, FindOrMake(target, kUnits, result.unit)};
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
