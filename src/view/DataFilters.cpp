#include "view/DataFilters.h"

#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/InView.h"

#include <QLocale>

#include <cmath>

namespace tessaro {

namespace {

constexpr auto kMakeMRD =
    "SELECT D.IUSNId, D.AreaNId, Max(T.TimePeriod) AS MaxOfTimePeriod INTO [_DataMRD]  FROM _SelTimePeriod AS T "
    "INNER JOIN (_SelArea AS A INNER JOIN (_SelIUSNId AS IUS INNER JOIN  Data AS D ON IUS.IUSNId = D.IUSNId) ON "
    "A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId  GROUP BY D.IUSNId, D.AreaNId, IUS.Deleted HAVING "
    "IUS.Deleted=False";
constexpr auto kMakeMRD1 =
    "SELECT [_DataMRD].IUSNId, [_DataMRD].AreaNId, [_DataMRD].MaxOfTimePeriod, CStr(Data.RowNId) AS MAXRowNId INTO "
    "_DataMRD1  FROM (_DataMRD INNER JOIN Data ON ([_DataMRD].IUSNId = Data.IUSNId) AND ([_DataMRD].AreaNId =  "
    "Data.AreaNId)) INNER JOIN TimePeriod ON ([_DataMRD].MaxOfTimePeriod = TimePeriod.TimePeriod)  AND "
    "(Data.TimePeriodNId = TimePeriod.TimePeriodNId)";
constexpr auto kMostRecent =
    "SELECT DISTINCTROW D.TimePeriodNId, D.AreaNId, D.IUSNId, D.Datavalue, D.SourceNId, D.FootnoteNId, D.RowNId  FROM "
    "_SelIUSNId AS IUS INNER JOIN ((_SelArea AS A INNER JOIN _DataMRD1 AS DT ON A.AreaNId = DT.AreaNId)  INNER JOIN "
    "(_SelTimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId =  D.TimePeriodNId) ON (DT.MaxOfTimePeriod = "
    "T.TimePeriod) AND (DT.IUSNId = D.IUSNId)  AND (DT.AreaNId = D.AreaNId)) ON (IUS.SourceNId = D.SourceNId) AND "
    "(IUS.IUSNId = DT.IUSNId)";
constexpr auto kMakeTemp1 =
    "SELECT DISTINCT IUSNId, AreaNID, TimePeriodNId, SourceNId INTO _DataTemp1 FROM _SelIUSNId, "
    "_SelArea, _SelTimePeriod";
constexpr auto kMissingColumns =
    "SELECT Dt.TimePeriodNId, Dt.AreaNID, Dt.IUSNId, D.Datavalue, Dt.SourceNId, D.FootnoteNId, D.RowNId ";
constexpr auto kMissingFrom =
    " FROM Data AS "
    "D RIGHT JOIN (_SelIUSNId AS IUS INNER JOIN (_SelArea AS A INNER JOIN (_SelTimePeriod  AS T INNER JOIN _DataTemp1 "
    "AS Dt ON T.TimePeriodNId = Dt.TimePeriodNId) ON A.AreaNId = Dt.AreaNID)  ON (IUS.IUSNId = Dt.IUSNId) AND "
    "(IUS.SourceNId = Dt.SourceNId)) ON (D.IUSNId = Dt.IUSNId) AND  (D.SourceNId = Dt.SourceNId) AND (D.AreaNId = "
    "Dt.AreaNID) AND (D.TimePeriodNId = Dt.TimePeriodNId)";
constexpr auto kKept = "SELECT D.TimePeriodNId, D.IUSNId, D.AreaNId,  D.SourceNId, D.FootnoteNId, D.Datavalue ";
constexpr auto kKeptCells = "SELECT Dt.TimePeriodNId, Dt.IUSNId, Dt.AreaNID, Dt.SourceNId, D.FootnoteNId, D.Datavalue ";

QString DeletedClause() {
    if (DeletedRowNIds.trimmed().isEmpty()) return {};
    return QStringLiteral(" AND D.RowNID not in(") + DeletedRowNIds + QStringLiteral(") ");
}

QString OnValues(const DataFilters& filters) {
    return ValueRangeClause(filters) + (filters.MostRecentOn ? MostRecentClause : QString());
}

/// The conditions of missing data: value range and most recent data restrict only the rows that have a value; cells
/// without one stay, with their footnotes.
QString MissingDataTail(const DataFilters& filters) {
    const QString onValues = OnValues(filters);
    if (onValues.isEmpty()) return QLatin1String(joins::kGrid.where);
    return QLatin1String(joins::kGrid.where) +
           QStringLiteral(" AND (D.Datavalue IS NULL OR D.Datavalue = '' OR (D.RowNId IS NOT NULL") + onValues +
           QStringLiteral("))");
}

/// The condition that leaves out the rows removed one by one, as the statement of favourites spells it.
QString RemovedRows(const QString& before) {
    if (DeletedRowNIds.trimmed().isEmpty()) return {};
    return before + QStringLiteral(" D.RowNID NOT In (") + DeletedRowNIds + QStringLiteral(") ");
}

/// The cells of the selection, with and without a value, except those removed one by one.
QString KeptCells(const RowsInView& rows) {
    QString sql = QLatin1String(kMissingFrom) + MissingDataTail(rows.filters);
    if (const QString removed = RemovedRows({}); !removed.isEmpty())
        sql += QStringLiteral(" AND (D.RowNId IS NULL OR") + removed + QStringLiteral(")");
    if (!rows.removedCells.isEmpty())
        sql += QStringLiteral(" AND (D.RowNId IS NOT NULL OR Dt.TimePeriodNId & '_' & Dt.AreaNID & '_' & Dt.IUSNId & "
                              "'_' & Dt.SourceNId NOT In ('") +
               rows.removedCells.join(QStringLiteral("','")) + QStringLiteral("'))");
    return sql;
}

qint64 Counted(const QString& sql) {
    const Records rows = Select(sql);
    return rows.atEnd() ? 0 : rows.Number(std::size_t{0});
}

} // namespace

QString CellKey(qint32 timePeriodNId, qint32 areaNId, qint32 iusNId, qint32 sourceNId) {
    return QStringLiteral("%1_%2_%3_%4").arg(timePeriodNId).arg(areaNId).arg(iusNId).arg(sourceNId);
}

QString ShownValue(double value) {
    constexpr double kMostInFull = 1e15; // beyond, a power of ten tells more than its zeros
    const char form = std::abs(value) < kMostInFull ? 'f' : 'g';
    return DisplayedValue(QString::number(value, form, QLocale::FloatingPointShortest));
}

QString NumberText(double number) {
    return QLocale::c().toString(number, 'g', QLocale::FloatingPointShortest).remove(QLatin1Char(','));
}

// Datavalue compares as a number without CDbl, which would fail on texts that are no numbers. Such texts are greater
// than every number and Null compares with nothing, so the range leaves both out.
QString ValueRangeClause(const DataFilters& filters) {
    if (!filters.ValueRangeOn) return {};
    return QStringLiteral(" AND (D.Datavalue >= ") + NumberText(filters.DataValueFrom) +
           QStringLiteral(" AND D.Datavalue <= ") + NumberText(filters.DataValueTo) + QStringLiteral(")");
}

QString BuildRowFilter(const DataFilters& filters) {
    QString filter = DeletedClause() + ValueRangeClause(filters);
    if (!MostRecentClause.trimmed().isEmpty()) filter += MostRecentClause;
    return filter;
}

QString FilteredStatement(const RowsInView& rows, const QString& orderBy) {
    if (rows.filters.MissingDataOn) return QLatin1String(kMissingColumns) + KeptCells(rows) + orderBy;
    const QString conditions = DeletedClause() + ValueRangeClause(rows.filters);
    return rows.filters.MostRecentOn ? MostRecentStatement() + conditions + orderBy
                                     : RequeryStatement(conditions, orderBy);
}

QString FavouriteStatement(const RowsInView& rows) {
    if (rows.filters.MissingDataOn) return QLatin1String(kKeptCells) + KeptCells(rows);
    return QLatin1String(kKept) + QLatin1String(joins::kGrid.from) + QLatin1Char(' ') +
           QLatin1String(joins::kGrid.where) + QLatin1Char(' ') + RemovedRows(QStringLiteral(" AND")) +
           OnValues(rows.filters);
}

// The working tables have no source column, so the condition on Deleted is needed to leave out sources that were taken
// out.
QString MostRecentStatement() {
    return QString::fromLatin1(kMostRecent) + QLatin1String(joins::kGrid.where);
}

bool MakeMostRecentTables() {
    ErrorTrap trap("GenerateMostRecentData");
    Execute(QStringLiteral("DROP TABLE [_DataMRD]"));
    if (!Execute(QLatin1String(kMakeMRD))) return false;
    Execute(QStringLiteral("DROP TABLE [_DataMRD1]"));
    return Execute(QLatin1String(kMakeMRD1));
}

void SetMostRecentClause() {
    ErrorTrap trap("GenerateMostRecentData");
    QString list;
    trap.Try([&] {
        Records rows = Select(QStringLiteral("SELECT MAXRowNId FROM [_DataMRD1]"), jet::CursorType::ForwardOnly);
        if (rows.isOpen()) list = QString::fromStdString(rows.rows().GetString(-1, "", ","));
    });
    if (list.endsWith(QLatin1Char(','))) list.chop(1);
    // No row is the most recent, so none may pass. SQL has no empty list; no row has the number 0.
    if (list.isEmpty()) list = QStringLiteral("0");
    MostRecentClause = QStringLiteral(" AND D.RowNId in (") + list + QStringLiteral(") ");
}

bool MakeMissingDataTable(jet::Connection* on) {
    ErrorTrap trap("GenerateMissingData_Change");
    Execute(QStringLiteral("DROP TABLE _DataTemp1"), on);
    return Execute(QLatin1String(kMakeTemp1), on);
}

qint64 SelectedCells() {
    ErrorTrap trap("SelectedCells");
    Records pairs = Select(QStringLiteral("SELECT DISTINCT IUSNId, SourceNId FROM _SelIUSNId WHERE Deleted = False"));
    const qint64 combinations = pairs.isOpen() ? pairs.rows().RecordCount() : 0;
    return combinations * Counted(QStringLiteral("SELECT Count(*) AS Areas FROM _SelArea")) *
           Counted(QStringLiteral("SELECT Count(*) AS Periods FROM _SelTimePeriod"));
}

} // namespace tessaro
