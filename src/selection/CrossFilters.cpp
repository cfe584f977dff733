#include "selection/CrossFilters.h"

#include "selection/AreaSelection.h"
#include "selection/ClassificationViews.h"
#include "selection/IndicatorSelection.h"
#include "selection/SelectionTexts.h"
#include "session/Frame.h"
#include "session/Query.h"
#include "session/Session.h"

namespace tessaro::selection {

namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

/// One step of narrowing: the table it makes and the SELECT … INTO that makes it.
struct Narrowing {
    QString table;
    QString statement;
};

/// " AND D.IUSNId in (…)" when the filter is limited to a list of combinations. A list of indicators is a condition of
/// the last query instead.
QString LimitToList(const IndicatorFilter& filter, const char* head) {
    if (!filter.onlyList || !ByCombination()) return {};
    return Text(head) + QStringLiteral("D.IUSNId in (") + filter.list + QLatin1Char(')');
}

QList<Narrowing> NarrowingsOf(const IndicatorFilter& filter) {
    QList<Narrowing> steps;
    if (filter.byArea)
        steps.append({Text("_DataArea"), Text("SELECT DISTINCT D.IUSNId, D.TimePeriodNId INTO [_DataArea] FROM DATA D, "
                                              "[_SelArea] A  WHERE D.AreaNId = A.AreaNId ") +
                                             LimitToList(filter, "AND ")});
    if (filter.byTime) {
        const QString source = filter.byArea ? Text("_DataArea") : Text("Data");
        steps.append({Text("_DataTime"), Text("SELECT DISTINCT D.IUSNId INTO [_DataTime] FROM [") + source +
                                             Text("] D, [_SelTimePeriod] T  WHERE D.TimePeriodNId = T.TimePeriodNId") +
                                             (filter.byArea ? QString() : LimitToList(filter, " AND "))});
    }
    if (steps.isEmpty() && filter.onlyList && ByCombination())
        steps.append({Text("_DataAll"),
                      Text("SELECT DISTINCT D.IUSNId INTO [_DataAll] FROM DATA D  WHERE ") + LimitToList(filter, "")});
    return steps;
}

/// Joins and conditions of the list query: the classification of the current view, or the list of indicators.
struct ListLimits {
    QString prefix;
    QString suffix;
    QString where;
};

ListLimits LimitsOf(const IndicatorFilter& filter) {
    if (filter.onlyList) {
        if (ByCombination()) return {};
        return {{}, {}, QStringLiteral(" WHERE I.IndicatorGId IN (") + filter.list + QStringLiteral(") ")};
    }
    if (DataExistsCriterion.isEmpty()) return {};
    const ClassificationView& view = Classification(filter.view);
    return {Text(view.filterPrefix), Text(view.filterSuffix),
            Criterion(Text(view.filterWhere)) + Criterion(QStringLiteral(" AND IUS."))};
}

/// The FROM clause by the two flags: both, only the first, only the second, neither.
struct FromByFlags {
    const char *both, *first, *second, *neither;
    [[nodiscard]] QString Pick(bool hasFirst, bool hasSecond) const {
        if (hasFirst) return Text(hasSecond ? both : first);
        return Text(hasSecond ? second : neither);
    }
};

// clang-format off
constexpr FromByFlags kTimeFrom{
    " FROM _SelIUSNId AS IUS INNER JOIN (TimePeriod AS T INNER JOIN (_SelArea AS A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId) ON IUS.IUSNId = D.IUSNId ",
    " FROM _SelIUSNId AS IUS INNER JOIN (TimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) ON IUS.IUSNId = D.IUSNId ",
    " FROM _SelArea AS A INNER JOIN (TimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId) ON A.AreaNId = D.AreaNId ",
    " FROM TimePeriod AS T INNER JOIN Data AS D ON T.TimePeriodNId = D.TimePeriodNId "};

constexpr FromByFlags kAreaFrom{
    " FROM _SelTimePeriod As T INNER JOIN (_SelIUSNId As IUS INNER JOIN (Area As A INNER JOIN Data  As D ON A.AreaNId = D.AreaNId) ON IUS.IUSNId = D.IUSNId) ON T.TimePeriodNId = D.TimePeriodNId ",
    " FROM _SelIUSNId As IUS INNER JOIN (Area As A INNER JOIN Data As D ON A.AreaNId = D.AreaNId) ON IUS.IUSNId = D.IUSNId ",
    " FROM _SelTimePeriod As T INNER JOIN (Area As A INNER JOIN Data As D ON A.AreaNId = D.AreaNId) ON T.TimePeriodNId = D.TimePeriodNId ",
    " FROM Area As A INNER JOIN Data AS D ON A.AreaNId = D.AreaNId "};
// clang-format on

/// The fields of the list query, in its order.
enum Field : std::size_t { IUSNId, IndicatorGId, UnitGId, SubpopGId, Indicator, Unit, Subpop };

KeyedItem FoundItem(const Records& rows, const QString& iusNId) {
    const QString indicatorGId = rows.Text(IndicatorGId);
    const int indicatorBit = IsGlobal(indicatorGId) ? 1 : 0;
    if (!ByCombination())
        return {KeyOf('I', indicatorGId), {NameOf(rows.Text(Indicator))}, static_cast<quint8>(indicatorBit)};
    const int bits = indicatorBit | (IsGlobal(rows.Text(UnitGId)) ? 2 : 0) | (IsGlobal(rows.Text(SubpopGId)) ? 4 : 0);
    return {KeyOf('I', iusNId),
            {NameOf(rows.Text(Indicator)), NameOf(rows.Text(Unit)), NameOf(rows.Text(Subpop))},
            static_cast<quint8>(bits)};
}

} // namespace

QStringList IndicatorFilterTables(const IndicatorFilter& filter) {
    QStringList statements;
    for (const Narrowing& step : NarrowingsOf(filter))
        statements << QStringLiteral("DROP Table [") + step.table + QLatin1Char(']') << step.statement;
    return statements;
}

QString IndicatorFilterSql(const IndicatorFilter& filter) {
    const QList<Narrowing> steps = NarrowingsOf(filter);
    const QString table = steps.isEmpty() ? QStringLiteral("Data") : steps.last().table;
    const ListLimits limits = LimitsOf(filter);
    return QStringLiteral("SELECT DISTINCT IUS.IUSNId, IUS.IndicatorGId, IUS.UnitGId, IUS.SubpopGId, I.[Indicator], "
                          "U.Unit, SP.Subpop FROM ") +
           limits.prefix +
           QStringLiteral(" (Unit AS U INNER JOIN (Subpop AS SP INNER JOIN ([Indicator] AS I INNER JOIN  "
                          "(Indicator_Unit_Subpop AS IUS INNER JOIN  [") +
           table +
           QStringLiteral("] AS D ON IUS.IUSNId = D.IUSNId) ON I.IndicatorGId = IUS.IndicatorGId)  ON SP.SubpopGId = "
                          "IUS.SubpopGId) ON U.UnitGId = IUS.UnitGId) ") +
           limits.suffix + limits.where +
           (ByCombination() ? QStringLiteral(" ORDER BY I.[Indicator], U.Unit,SP.Subpop")
                            : QStringLiteral(" ORDER BY I.[Indicator]"));
}

FoundIndicators FindIndicators(const IndicatorFilter& filter) {
    int progress = 20;
    TheFrame().SetProgress(progress);
    for (const QString& statement : IndicatorFilterTables(filter)) {
        Execute(statement);
        TheFrame().SetProgress(progress += 10);
    }
    FoundIndicators found;
    QStringList combinations;
    Records rows = Select(IndicatorFilterSql(filter), jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        combinations << rows.Text(IUSNId);
        found.items.push_back(FoundItem(rows, combinations.last()));
    }
    found.iusList = combinations.join(QLatin1Char(','));
    TheFrame().SetProgress(80);
    return found;
}

QString TimeFilterSql(bool byIndicators, bool byAreas) {
    return QStringLiteral("SELECT DISTINCT T.TimePeriodNId, T.TimePeriod ") + kTimeFrom.Pick(byIndicators, byAreas) +
           Criterion(QStringLiteral(" WHERE T."));
}

std::vector<KeyedItem> FindPeriods(bool byIndicators, bool byAreas) {
    std::vector<KeyedItem> periods;
    Records rows = Select(TimeFilterSql(byIndicators, byAreas), jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext())
        periods.push_back({KeyOf('T', rows.Text(std::size_t{0})), {NameOf(rows.Text(std::size_t{1}))}, 0});
    return periods;
}

QString AreaFilterSql(bool byIndicators, bool byTime) {
    return QStringLiteral("SELECT DISTINCT A.AreaNId ") + kAreaFrom.Pick(byIndicators, byTime) +
           Criterion(QStringLiteral(" WHERE A."));
}

QString AreaFilterBelowSql(bool byIndicators, bool byTime, const QString& nodeKey) {
    const QString id = IdOfKey(nodeKey);
    const auto length = id.length();
    const QString where =
        nodeKey == Text(kAreaRootKey)
            ? QStringLiteral(" WHERE len(A.AreaID) = 3 ")
            : QStringLiteral(" WHERE Len(A.AreaID) > %1 AND len(A.AreaID) <= %2 AND mid(A.AreaID,1, len(")
                      .arg(length)
                      .arg(length + kCharactersPerLevel) +
                  Quoted(id) + QStringLiteral(")) = ") + Quoted(id) + QLatin1Char(' ');
    return QStringLiteral("SELECT DISTINCT A.AreaNId ") + kAreaFrom.Pick(byIndicators, byTime) + where +
           Criterion(QStringLiteral(" AND A."));
}

QString AreaFilterOfListSql(bool byIndicators, bool byTime, const QString& areaList) {
    return QStringLiteral("SELECT DISTINCT A.AreaNId ") + kAreaFrom.Pick(byIndicators, byTime) +
           QStringLiteral(" WHERE A.AreaNId in (") + areaList + QStringLiteral(") ") +
           Criterion(QStringLiteral(" AND A."));
}

QString FindAreas(const QString& sql) {
    return Select(sql, jet::CursorType::ForwardOnly).Joined();
}

} // namespace tessaro::selection
