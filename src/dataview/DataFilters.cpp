#include "dataview/DataFilters.h"

#include "dataview/GridQuery.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QLocale>

namespace tessaro {

namespace {

constexpr auto kIdentifiers =
    "SELECT DISTINCTROW D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId ";
constexpr auto kMostRecentFrom =
    " FROM _SelIUSNId AS IUS INNER JOIN ((_SelArea AS A INNER JOIN _DataMRD1 AS DT ON A.AreaNId = DT.AreaNId)  INNER "
    "JOIN "
    "(_SelTimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId =  D.TimePeriodNId) ON (DT.MaxOfTimePeriod = "
    "T.TimePeriod) AND (DT.IUSNId = D.IUSNId)  AND (DT.AreaNId = D.AreaNId)) ON (IUS.SourceNId = D.SourceNId) AND "
    "(IUS.IUSNId = DT.IUSNId)";
constexpr auto kMissing =
    "SELECT Dt.TimePeriodNId, Dt.AreaNID, Dt.IUSNId, D.Datavalue, Dt.SourceNId, D.FootnoteNId, D.RowNId  FROM Data AS "
    "D "
    "RIGHT JOIN (_SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (_SelTimePeriod  AS T INNER JOIN _DataTemp1 AS "
    "Dt "
    "ON T.TimePeriodNId = Dt.TimePeriodNId) ON A.AreaNId = Dt.AreaNID)  ON (IUS.IUSNId = Dt.IUSNId) AND (IUS.SourceNId "
    "= "
    "Dt.SourceNId)) ON (D.IUSNId = Dt.IUSNId) AND  (D.SourceNId = Dt.SourceNId) AND (D.AreaNId = Dt.AreaNID) AND "
    "(D.TimePeriodNId = Dt.TimePeriodNId)";

QString DeletedClause() {
    if (DeletedRowNIds.trimmed().isEmpty()) return {};
    return QStringLiteral(" AND D.RowNID not in(") + DeletedRowNIds + QStringLiteral(") ");
}

/// The grid compares values as numbers, whatever their texts look like.
QString RangeAsNumbers(const DataFilters& filters) {
    if (!filters.ValueRangeOn) return {};
    return QStringLiteral(" AND (Cdbl(D.Datavalue) >= ") + NumberText(filters.DataValueFrom) +
           QStringLiteral(" AND Cdbl(D.Datavalue) <= ") + NumberText(filters.DataValueTo) + QStringLiteral(")");
}

// Pairs that a panel took out have no part in the latest period, so their rows stay out here too.
QString MostRecentWhere(const DataFilters& filters) {
    return QStringLiteral(" WHERE IUS.Deleted = False") + DeletedClause() + RangeAsNumbers(filters);
}

bool MakeLatestPeriods() {
    Execute(QStringLiteral("DROP TABLE [_DataMRD]"));
    if (!Execute(QStringLiteral(
            "SELECT D.IUSNId, D.AreaNId, Max(T.TimePeriod) AS MaxOfTimePeriod INTO [_DataMRD]  FROM _SelTimePeriod AS "
            "T "
            "INNER JOIN (_SelArea AS A INNER JOIN (_SelIUSNId AS IUS INNER JOIN  Data AS D ON IUS.IUSNId = D.IUSNId) "
            "ON "
            "A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId  GROUP BY D.IUSNId, D.AreaNId, IUS.Deleted "
            "HAVING IUS.Deleted=False")))
        return false;
    Execute(QStringLiteral("DROP TABLE [_DataMRD1]"));
    return Execute(QStringLiteral(
        "SELECT [_DataMRD].IUSNId, [_DataMRD].AreaNId, [_DataMRD].MaxOfTimePeriod, CStr(Data.RowNId) AS MAXRowNId INTO "
        "_DataMRD1  FROM (_DataMRD INNER JOIN Data ON ([_DataMRD].IUSNId = Data.IUSNId) AND ([_DataMRD].AreaNId =  "
        "Data.AreaNId)) INNER JOIN TimePeriod ON ([_DataMRD].MaxOfTimePeriod = TimePeriod.TimePeriod)  AND "
        "(Data.TimePeriodNId = TimePeriod.TimePeriodNId)"));
}

} // namespace

QString NumberText(double number) {
    return QLocale::c().toString(number, 'g', QLocale::FloatingPointShortest).remove(QLatin1Char(','));
}

QString BuildRowFilter(const DataFilters& filters) {
    QString filter = DeletedClause();
    if (filters.ValueRangeOn)
        filter += QStringLiteral(" AND (D.Datavalue >= ") + NumberText(filters.DataValueFrom) +
                  QStringLiteral(" AND D.Datavalue <= ") + NumberText(filters.DataValueTo) + QStringLiteral(")");
    if (!MostRecentClause.trimmed().isEmpty()) filter += MostRecentClause;
    return filter;
}

QString FilteredStatement(const DataFilters& filters, const QString& orderBy) {
    if (filters.MissingDataOn) return QLatin1String(kMissing) + QStringLiteral(" WHERE IUS.Deleted = False") + orderBy;
    if (filters.MostRecentOn)
        return QString::fromLatin1(kIdentifiers) + QLatin1String(kMostRecentFrom) + MostRecentWhere(filters) + orderBy;
    return RequeryStatement(DeletedClause() + RangeAsNumbers(filters), orderBy);
}

bool MakeMostRecentTables() {
    if (!MakeLatestPeriods()) return false;
    QString list = Select(QStringLiteral("SELECT MAXRowNId FROM [_DataMRD1]"), jet::CursorType::ForwardOnly).Joined();
    if (list.endsWith(QLatin1Char(','))) list.chop(1);
    // Without any row nothing is to stay, as an empty list would say if it could be written.
    if (list.isEmpty()) list = QStringLiteral("0");
    MostRecentClause = QStringLiteral(" AND D.RowNId in (") + list + QStringLiteral(") ");
    return true;
}

bool MakeMissingDataTable() {
    Execute(QStringLiteral("DROP TABLE _DataTemp1"));
    return Execute(QStringLiteral("SELECT DISTINCT IUSNId, AreaNID, TimePeriodNId, SourceNId INTO _DataTemp1 FROM "
                                  "_SelIUSNId, _SelArea, _SelTimePeriod"));
}

std::optional<std::pair<double, double>> ValueBounds() {
    const Records bounds =
        Select(QStringLiteral("SELECT Min(D.Datavalue) AS MinOfDatavalue, Max(D.Datavalue) AS MaxOfDatavalue") +
               RequeryStatement({}, {}).section(QStringLiteral("D.RowNId "), 1));
    if (bounds.atEnd()) return std::nullopt;
    bool hasLeast = false;
    bool hasGreatest = false;
    const double least = bounds.Text(std::size_t{0}).toDouble(&hasLeast);
    const double greatest = bounds.Text(std::size_t{1}).toDouble(&hasGreatest);
    if (!hasLeast || !hasGreatest) return std::nullopt;
    return std::pair(least, greatest);
}

std::optional<qint64> CountFilteredRows(const DataFilters& filters) {
    QString sql;
    if (filters.MissingDataOn) {
        // A cell each, and one more for every further value that shares a cell.
        sql =
            QStringLiteral("SELECT Count(*) AS Cells FROM _SelIUSNId AS IUS, _SelArea AS A, _SelTimePeriod AS T WHERE "
                           "IUS.Deleted = False");
    } else if (filters.MostRecentOn) {
        if (!MakeLatestPeriods()) return std::nullopt;
        sql = QStringLiteral("SELECT Count(D.RowNId) AS CountOfRows") + QLatin1String(kMostRecentFrom) +
              QStringLiteral(" WHERE IUS.Deleted = False AND CStr(D.RowNId) = DT.MAXRowNId") + RangeAsNumbers(filters);
    } else {
        sql = QStringLiteral("SELECT Count(D.RowNId) AS CountOfRows") +
              RequeryStatement(DeletedClause() + RangeAsNumbers(filters), {}).section(QStringLiteral("D.RowNId "), 1);
    }
    Records count = Select(sql);
    if (!count.isOpen() || count.atEnd()) return std::nullopt;
    return count.Number(std::size_t{0});
}

} // namespace tessaro
