#include "selection/IndicatorSelection.h"

#include "selection/SelectionTexts.h"
#include "session/Query.h"
#include "session/Session.h"

#include <QHash>
#include <QSet>

namespace tessaro::selection {

namespace {

const QStringList CombinationGIds{QStringLiteral("I.IndicatorGId"), QStringLiteral("U.UnitGId"),
                                  QStringLiteral("SP.SubpopGId")};

constexpr const char* kInsertInto =
    "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, UnitGId, SubpopGId, [Indicator], Unit, "
    "Subpop, SourceNId, Source, RecommendedSource) ";

constexpr const char* kAddColumns =
    "Indicator_Unit_Subpop.IUSNId, [Indicator].IndicatorGId, Unit.UnitGId, Subpop.SubpopGId, [Indicator].[Indicator], "
    "Unit.Unit, Subpop.Subpop, Indicator_Source.SourceNId, Source.Source, Indicator_Source.RecommendedSource";

constexpr const char* kAddFrom =
    " FROM Source INNER JOIN ((Subpop INNER JOIN (Unit INNER JOIN ([Indicator] INNER JOIN Indicator_Unit_Subpop ON "
    "[Indicator].IndicatorGId = Indicator_Unit_Subpop.IndicatorGId) ON Unit.UnitGId = Indicator_Unit_Subpop.UnitGId) "
    "ON "
    "Subpop.SubpopGId = Indicator_Unit_Subpop.SubpopGId) INNER JOIN Indicator_Source ON Indicator_Unit_Subpop.IUSNId = "
    "Indicator_Source.IUSNId) ON Source.SourceNId = Indicator_Source.SourceNId";

constexpr const char* kReplaceSelect =
    "SELECT DISTINCT  IUS.IUSNId, IUS.IndicatorGId, IUS.UnitGId, IUS.SubpopGId, I.Indicator,   U.Unit, SP.Subpop, "
    "S.SourceNId, S.Source, I_S.RecommendedSource  FROM (Unit AS U INNER JOIN (Subpop AS SP INNER JOIN ([Indicator] AS "
    "I "
    "INNER JOIN  Indicator_Unit_Subpop AS IUS ON I.IndicatorGId = IUS.IndicatorGId)  ON SP.SubpopGId = IUS.SubpopGId) "
    "ON "
    "U.UnitGId = IUS.UnitGId)  INNER JOIN (Source AS S INNER JOIN Indicator_Source AS I_S ON S.SourceNId = "
    "I_S.SourceNId)  ON IUS.IUSNId = I_S.IUSNId  WHERE IUS.IUSNId in (";

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

/// Positions of an item's fields in a recordset.
struct CombinationFields {
    std::size_t ius, indicatorGId, indicator, unitGId, unit, subpopGId, subpop;
};

KeyedItem CombinationItem(const Records& rows, const CombinationFields& at) {
    KeyedItem item;
    item.key = KeyOf('I', rows.Text(at.ius));
    item.cells = {NameOf(rows.Text(at.indicator)), NameOf(rows.Text(at.unit)), NameOf(rows.Text(at.subpop))};
    item.globalCells =
        static_cast<quint8>((IsGlobal(rows.Text(at.indicatorGId)) ? 1 : 0) | (IsGlobal(rows.Text(at.unitGId)) ? 2 : 0) |
                            (IsGlobal(rows.Text(at.subpopGId)) ? 4 : 0));
    return item;
}

KeyedItem IndicatorItem(const QString& gid, const QString& name) {
    return {KeyOf('I', gid), {NameOf(name)}, static_cast<quint8>(IsGlobal(gid) ? 1 : 0)};
}

/// Items of a query whose fields are id, GId, text … (combinations) or GId, text (indicators).
std::vector<KeyedItem> ItemsOf(Records rows) {
    constexpr CombinationFields fields{0, 1, 2, 3, 4, 5, 6};
    std::vector<KeyedItem> items;
    for (; !rows.atEnd(); rows.MoveNext()) {
        if (rows.Text(std::size_t{1}).isEmpty()) continue;
        items.push_back(ByCombination() ? CombinationItem(rows, fields)
                                        : IndicatorItem(rows.Text(std::size_t{0}), rows.Text(std::size_t{1})));
    }
    return items;
}

} // namespace

bool ByCombination() {
    return IndicatorSelectBy != 0;
}

QString IdList(const std::vector<KeyedItem>& items) {
    return ByCombination() ? NumberList(items) : QuotedList(items);
}

QString AvailableIndicatorsSql(const QString& from, const QString& where) {
    QString sql = ByCombination() ? QStringLiteral("SELECT  IUS.IUSNId,IUS.IndicatorGId, I.[Indicator], U.UnitGId, "
                                                   "U.Unit,SP.SubpopGId,  SP.Subpop  FROM ")
                                  : QStringLiteral("SELECT I.IndicatorGId, I.[Indicator] FROM ");
    sql += from;
    QString conditions;
    if (!where.trimmed().isEmpty())
        conditions =
            (DataExistsCriterion.isEmpty() ? QStringLiteral(" WHERE ")
                                           : Criterion(QStringLiteral(" WHERE IUS.")) + QStringLiteral(" AND ")) +
            where;
    else
        conditions = Criterion(QStringLiteral(" WHERE IUS."));
    conditions += GlobalLocal(conditions.isEmpty() ? QStringLiteral(" WHERE ") : QStringLiteral(" AND "),
                              ByCombination() ? CombinationGIds : CombinationGIds.mid(0, 1));
    return sql + conditions +
           (ByCombination() ? QStringLiteral(" ORDER BY I.[Indicator], U.Unit,SP.Subpop")
                            : QStringLiteral(" ORDER BY I.[Indicator]"));
}

std::vector<KeyedItem> AvailableIndicators(const QString& from, const QString& where) {
    return ItemsOf(Select(AvailableIndicatorsSql(from, where), jet::CursorType::ForwardOnly));
}

QString SelectedIndicatorsSql() {
    const QString where = QStringLiteral(" WHERE ");
    if (!ByCombination())
        return QStringLiteral("Select DISTINCT IndicatorGId,[Indicator] FROM _SelIUSNId ") +
               GlobalLocal(where, {QStringLiteral("IndicatorGId")}) + QStringLiteral(" ORDER BY [Indicator]");
    return QStringLiteral("Select IUSNId,IndicatorGId,[Indicator],UnitGId, Unit,SubpopGId, Subpop FROM _SelIUSNId ") +
           GlobalLocal(where,
                       {QStringLiteral("IndicatorGId"), QStringLiteral("UnitGId"), QStringLiteral("SubpopGId")}) +
           QStringLiteral(" ORDER BY [Indicator], Unit,Subpop");
}

std::vector<KeyedItem> SelectedIndicators() {
    return ItemsOf(Select(SelectedIndicatorsSql(), jet::CursorType::ForwardOnly));
}

QString AddIndicatorsSql(const std::vector<KeyedItem>& items) {
    const QString head = Text(kInsertInto) + QStringLiteral(" SELECT DISTINCT ") + Text(kAddColumns) + Text(kAddFrom);
    const QString ids = IdList(items);
    if (ByCombination())
        return head + QStringLiteral(" WHERE [Indicator_Unit_Subpop].[IUSNId] In (") + ids +
               QStringLiteral(
                   ") AND [Indicator_Unit_Subpop].[IUSNId] NOT In (SELECT DISTINCT IUSNId FROM _SelIUSNId )") +
               GlobalLocal(QStringLiteral(" AND "),
                           {QStringLiteral("[Indicator].IndicatorGId"), QStringLiteral("Unit.UnitGId"),
                            QStringLiteral("Subpop.SubpopGId")});
    return head + QStringLiteral(" WHERE [Indicator_Unit_Subpop].[IndicatorGId] In (") + ids +
           QStringLiteral(") AND [Indicator_Unit_Subpop].[IndicatorGId] NOT In (SELECT DISTINCT IndicatorGId FROM "
                          "_SelIUSNId )") +
           GlobalLocal(QStringLiteral(" AND "), {QStringLiteral("[Indicator].IndicatorGId")});
}

QString AddIndicatorSql(const KeyedItem& item) {
    const QString where =
        ByCombination() ? QStringLiteral(" WHERE [Indicator_Unit_Subpop].[IUSNId]= ") + IdOfKey(item.key)
                        : QStringLiteral(" WHERE [Indicator_Unit_Subpop].[IndicatorGId]= ") + Quoted(IdOfKey(item.key));
    return Text(kInsertInto) + QStringLiteral(" SELECT ") + Text(kAddColumns) + Text(kAddFrom) + where;
}

bool AddIndicators(const std::vector<KeyedItem>& items) {
    SelectionChanged = true;
    return items.empty() || Execute(AddIndicatorsSql(items));
}

bool AddIndicator(const KeyedItem& item) {
    SelectionChanged = true;
    return Execute(AddIndicatorSql(item));
}

bool RemoveIndicators(const std::vector<KeyedItem>& items) {
    SelectionChanged = true;
    if (items.empty()) return true;
    const QString head = ByCombination() ? QStringLiteral("DELETE * FROM _SelIUSNId WHERE IUSNId In(")
                                         : QStringLiteral("DELETE * FROM _SelIUSNId WHERE IndicatorGId In(");
    return Execute(head + IdList(items) + QLatin1Char(')'));
}

bool RemoveAllIndicators() {
    SelectionChanged = true;
    return Execute(QStringLiteral("DELETE * FROM _SelIUSNId"));
}

bool ReplaceIndicators(const QString& iusList) {
    // Only when the table could be emptied; otherwise rows would be there twice.
    return RemoveAllIndicators() &&
           (iusList.isEmpty() || Execute(Text(kInsertInto) + Text(kReplaceSelect) + iusList + QLatin1Char(')')));
}

QString SectorOrderSql(const std::vector<KeyedItem>& items) {
    const QString joins = QStringLiteral(
        "INNER JOIN (Sector AS S INNER JOIN SectorLabel1 AS SL1 ON S.SectorLabel1GId = "
        "SL1.SectorLabel1GId) ON I_S.SectorLabel2GId = S.SectorLabel2GId) INNER JOIN SectorLabel2 AS SL2 "
        "ON S.SectorLabel2GId = SL2.SectorLabel2GId ");
    const QString order = QStringLiteral(" ORDER BY SL1.SectorLabel1 Asc, SL2.SectorLabel2 Asc, I.[Indicator] Asc");
    if (!ByCombination())
        return QStringLiteral("SELECT  I.IndicatorGId, I.[Indicator]  FROM ((Indicator_Sector AS I_S INNER JOIN "
                              "[Indicator] AS I ON I_S.IndicatorGId = I.IndicatorGId) ") +
               joins + QStringLiteral(" WHERE  I.IndicatorGId In (") + IdList(items) + QLatin1Char(')') + order;
    return QStringLiteral(
               "SELECT  IUS.IUSNId, I.[Indicator]  FROM (((Indicator_Sector AS I_S INNER JOIN [Indicator] AS I "
               "ON I_S.IndicatorGId = I.IndicatorGId) INNER JOIN Indicator_Unit_subpop AS IUS ON "
               "I.IndicatorGId = IUS.IndicatorGId) ") +
           joins + QStringLiteral(" WHERE IUS.IUSNId In (") + IdList(items) + QLatin1Char(')') + order;
}

std::vector<KeyedItem> SortedBySector(const std::vector<KeyedItem>& items) {
    if (items.empty()) return {};
    QHash<QString, std::size_t> places;
    for (std::size_t i = 0; i < items.size(); ++i)
        places.insert(items[i].key, i);
    std::vector<KeyedItem> sorted;
    QSet<QString> taken; // an indicator in two sectors is listed under the first
    Records rows = Select(SectorOrderSql(items), jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString key = KeyOf('I', rows.Text(std::size_t{0}));
        const auto place = places.constFind(key);
        if (place == places.constEnd() || taken.contains(key)) continue;
        taken.insert(key);
        sorted.push_back(items[*place]);
    }
    for (const KeyedItem& item : items)
        if (!taken.contains(item.key)) sorted.push_back(item);
    return sorted;
}

} // namespace tessaro::selection
