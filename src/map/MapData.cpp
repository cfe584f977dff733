#include "map/MapData.h"

#include "map/classes/ClassBreaks.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Log.h"
#include "session/Query.h"
#include "session/Session.h"
#include "view/ViewJoins.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace tessaro {

namespace {

constexpr std::size_t kIdsOfOneDelete = 6000; ///< keeps the statement below the engine's limit of length
constexpr auto kValues =
    "Select distinct Original_DataValue, DataValue From [_MapData] Where isNull(DataValue) = False";

/// The condition of a theme's rows in view, the row filter among it.
QString ThemeCondition(const MapTheme& theme, const QString& latestPeriod) {
    const QString subpop = theme.subpop.isEmpty()
                               ? QString()
                               : QStringLiteral(" AND IUS.Subpop=") + Quoted(theme.subpop) + QLatin1Char(' ');
    const QString periods =
        latestPeriod.isEmpty() ? QString() : QStringLiteral(" AND T.TimePeriod<=") + Quoted(latestPeriod);
    return QStringLiteral("  WHERE IUS.Indicator=") + Quoted(theme.indicator) + QLatin1Char(' ') + subpop +
           QStringLiteral(" AND IUS.Unit=") + Quoted(theme.unit) + QLatin1String(joins::kMapValues.where) + periods +
           RowFilter;
}

QString InsertStatement(const MapTheme& theme, const QString& latestPeriod) {
    return QStringLiteral(
               " INSERT INTO _MapData (TimePeriod, AreaID, AreaName, [Indicator], SubPop, DataValue, Unit, Source, "
               "Style,  BreakValue, [Label],[Color], AdvancedLabels, [Size], Original_DataValue)  SELECT T.TimePeriod, "
               "A.AreaId, A.AreaName, IUS.Indicator, IUS.SubPop, D.Datavalue, IUS.Unit, IUS.Source, 0 AS Style,  0 AS "
               "BreakValue, '' AS [Label], 0 AS [Color], '' AS AdvancedLabels, 0 as [Size] , D.DataValue") +
           QLatin1String(joins::kMapValues.from) + ThemeCondition(theme, latestPeriod) +
           QStringLiteral(" ORDER BY T.TimePeriod, A.AreaId, A.AreaName, IUS.Indicator, IUS.Subpop, IUS.Unit, "
                          "IUS.Source");
}

/// Deletes rows of `_MapData` by their ids, some thousands at a time.
bool DeleteRows(const std::vector<qint64>& ids) {
    for (std::size_t first = 0; first < ids.size(); first += kIdsOfOneDelete) {
        const std::size_t end = std::min(first + kIdsOfOneDelete, ids.size());
        QByteArray list = QByteArray::number(ids[first]);
        for (std::size_t i = first + 1; i < end; ++i)
            list.append(',').append(QByteArray::number(ids[i]));
        if (!Execute(QStringLiteral("Delete * from [_MapData] where [_MapDataID] in(") + QLatin1String(list) +
                     QLatin1Char(')')))
            return false;
    }
    return true;
}

bool SameArea(std::string_view a, std::string_view b) {
    const auto text = [](std::string_view area) {
        return QString::fromUtf8(area.data(), static_cast<qsizetype>(area.size()));
    };
    return a == b || text(a).compare(text(b), Qt::CaseInsensitive) == 0;
}

/// Deletes every row but the first of each area in the order of periods. There may be millions: texts are compared
/// where they lie.
bool KeepMostRecent() {
    Records rows = Select(
        QStringLiteral("SELECT [_MapDataID], AreaId, TimePeriod FROM _MapData  ORDER BY AreaID ,[TimePeriod] Desc"),
        jet::CursorType::ForwardOnly);
    if (!rows.isOpen()) return false;
    std::vector<qint64> superseded;
    std::optional<std::string> remembered;
    for (; !rows.atEnd(); rows.MoveNext()) {
        const std::string_view area = rows.rows().TextView(1).value_or(std::string_view());
        if (remembered && SameArea(area, *remembered))
            superseded.push_back(rows.Number(std::size_t{0}));
        else
            remembered = area;
    }
    std::sort(superseded.begin(), superseded.end()); // each statement then works on neighbouring pages of the table
    return DeleteRows(superseded);
}

QString WithPoint(QString value) {
    return value.replace(QLatin1Char(','), QLatin1Char('.'));
}

/// The values with a decimal comma. None when any value has a point: commas then separate thousands.
QStringList ValuesWithComma() {
    QStringList found;
    for (Records rows = Select(QLatin1String(kValues)); !rows.atEnd(); rows.MoveNext()) {
        const QString value = rows.Text(std::size_t{1});
        if (value.contains(QLatin1Char('.'))) return {};
        if (value.count(QLatin1Char(',')) == 1 && ReadsAsNumber(WithPoint(value))) found << rows.Text(std::size_t{0});
    }
    return found;
}

bool RepairSeparators() {
    for (const QString& original : ValuesWithComma())
        if (!Execute(QStringLiteral("Update [_MapData] Set DataValue = ") + Quoted(WithPoint(original)) +
                     QStringLiteral(" Where Original_DataValue = ") + Quoted(original)))
            return false;
    return true;
}

/// The ids of rows whose value is no number.
std::vector<qint64> UnreadableRows() {
    std::vector<qint64> ids;
    for (Records rows = Select(QStringLiteral("SELECT [_MapDataID], DataValue FROM [_MapData]")); !rows.atEnd();
         rows.MoveNext())
        if (!NumberOf(rows.Text(std::size_t{1}))) ids.push_back(rows.Number(std::size_t{0}));
    return ids;
}

/// Without numbers in them, the rows would make every statement on values fail.
bool RemoveUnreadable(int& count) {
    const std::vector<qint64> ids = UnreadableRows();
    count = static_cast<int>(ids.size());
    if (count > 0)
        LogNote(QStringLiteral("Get_Data: %1 areas have a value that is no number; the map shows them as missing")
                    .arg(count));
    return DeleteRows(ids);
}

bool Fill(const MapTheme& theme, const QString& latestPeriod, int& unreadable) {
    return Execute(QStringLiteral("DELETE * from _MapData")) && Execute(InsertStatement(theme, latestPeriod)) &&
           KeepMostRecent() && RepairSeparators() && RemoveUnreadable(unreadable);
}

int CountRows() {
    return static_cast<int>(Select(QStringLiteral("SELECT Count(*) FROM _MapData")).Number(std::size_t{0}));
}

} // namespace

MapTheme FirstTheme() {
    const Records first = Select(
        QStringLiteral("SELECT TOP 1 IUS.[Indicator], IUS.Unit  FROM ((_SelIUSNId AS IUS INNER JOIN Data AS D ON "
                       "(IUS.IUSNId = D.IUSNId) AND  (IUS.SourceNId = D.SourceNId)) INNER JOIN _SelArea AS A ON "
                       "D.AreaNId = A.AreaNId)  INNER JOIN _SelTimePeriod AS T ON D.TimePeriodNId = T.TimePeriodNId  "
                       "WHERE (((IUS.Deleted)=False))") +
        RowFilter);
    if (first.atEnd()) return {};
    return {first.Text(std::size_t{0}), {}, first.Text(std::size_t{1})};
}

QStringList PeriodsOf(const MapTheme& theme) {
    QStringList periods;
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT T.TimePeriod") + QLatin1String(joins::kMapValues.from) +
                               ThemeCondition(theme, {}) + QStringLiteral(" ORDER BY T.TimePeriod"));
         !rows.atEnd(); rows.MoveNext())
        periods << rows.Text(std::size_t{0});
    return periods;
}

MapDataCounts Get_Data(const MapTheme& theme, const QString& latestPeriod) {
    ErrorTrap trap("Get_Data");
    MapDataCounts counts;
    if (!Connection || !trap.Try([] { Connection->Begin(); })) return counts;
    counts.filled = Fill(theme, latestPeriod, counts.unreadable) && trap.Try([] { Connection->Commit(); });
    if (!counts.filled) {
        trap.Try([] { Connection->Rollback(); });
        return {};
    }
    counts.areas = CountRows();
    return counts;
}

std::vector<double> ValuesOfMapData() {
    std::vector<double> values;
    for (Records rows = Select(QStringLiteral("Select [DataValue] from [_MapData]"), jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext())
        if (const auto number = NumberOf(rows.Text(std::size_t{0}))) values.push_back(*number);
    return SortedValues(std::move(values));
}

int SetDecimal() {
    const Records most =
        Select(QStringLiteral("Select Max(Len(Mid(DataValue,Instr(DataValue,'.')+1))) From [_MapData]  "
                              "Where instr(DataValue,'.') > 0"));
    return most.atEnd() ? 0 : static_cast<int>(most.Number(std::size_t{0}));
}

ValueLimits LimitsOfMapData() {
    Records limits = Select(QStringLiteral("Select max(CDbl(DataValue)) as \"MaxVal\",min(CDbl(DataValue)) as "
                                           "\"MinVal\" FROM [_MapData] Where isnull(DataValue) = False ;"));
    if (limits.atEnd() || limits.IsNull(0)) return {};
    return {limits.rows().Get("MinVal").toDouble(), limits.rows().Get("MaxVal").toDouble()};
}

ValueLimits LimitsOf(const MapTheme& theme) {
    std::optional<ValueLimits> limits;
    for (Records rows = Select(QStringLiteral("SELECT DISTINCT D.DataValue") + QLatin1String(joins::kMapValues.from) +
                                   ThemeCondition(theme, {}),
                               jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext()) {
        const auto number = NumberOf(rows.Text(std::size_t{0}));
        if (!number) continue;
        if (!limits) limits = {*number, *number};
        *limits = {std::min(limits->minimum, *number), std::max(limits->maximum, *number)};
    }
    return limits.value_or(ValueLimits());
}

} // namespace tessaro
