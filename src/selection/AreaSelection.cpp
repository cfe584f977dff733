#include "selection/AreaSelection.h"

#include "selection/SelectionTexts.h"
#include "session/Query.h"
#include "session/Session.h"

#include <algorithm>

namespace tessaro::selection {

namespace {

constexpr const char* kNotYetSelected = ") AND AreaNId NOT in (SELECT AreaNId FROM _SelArea)";

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

bool IsRoot(const QString& nodeKey) {
    return nodeKey == Text(kAreaRootKey);
}

KeyedItem ItemOf(const Records& rows) {
    KeyedItem item;
    item.key = KeyOf('A', rows.Text("AreaNId"));
    item.cells = {NameOf(rows.Text("AreaName")), rows.Text("AreaID")};
    item.globalCells = IsGlobal(rows.Text("AreaGId")) ? 3 : 0;
    return item;
}

/// The statement that reads the areas of a quoted list of AreaIDs.
QString AreasByIdSql(const char* select, const QString& quotedIds, const char* filterColumn) {
    return Text(select) + quotedIds + QStringLiteral(") ") +
           GlobalLocal(QStringLiteral(" AND "), {Text(filterColumn)}) + QStringLiteral(" ORDER BY AreaName ");
}

} // namespace

std::vector<KeyedItem> AreaItems(const QString& sql) {
    std::vector<KeyedItem> items;
    for (Records rows = Select(sql); !rows.atEnd(); rows.MoveNext())
        items.push_back(ItemOf(rows));
    return items;
}

QString TreeKeyOfArea(const QString& areaId) {
    return KeyOf('A', areaId);
}

QString AvailableAreasSql(const QString& nodeKey) {
    QString sql = QStringLiteral("SELECT AreaGId, AreaID, AreaName, AreaNId From Area As A WHERE ");
    const QString id = IdOfKey(nodeKey);
    if (IsRoot(nodeKey))
        sql += QStringLiteral(" Len(AreaId) = %1").arg(kCharactersPerLevel);
    else
        sql += QStringLiteral("MID(AreaID,1, len(") + Quoted(id) + QStringLiteral(")) = ") + Quoted(id) +
               QStringLiteral("  AND Len(AreaId) = %1").arg(id.length() + kCharactersPerLevel);
    sql += Criterion(QStringLiteral(" AND A."));
    sql += GlobalLocal(QStringLiteral(" AND "),
                       {IsRoot(nodeKey) ? QStringLiteral("AreaGId") : QStringLiteral("A.AreaGId")});
    return sql + QStringLiteral(" ORDER BY AreaName ");
}

std::vector<AreaRow> AvailableAreas(const QString& nodeKey) {
    std::vector<AreaRow> areas;
    for (Records rows = Select(AvailableAreasSql(nodeKey)); !rows.atEnd(); rows.MoveNext())
        areas.push_back({ItemOf(rows), rows.Text("AreaID")});
    return areas;
}

QSet<QString> ParentsAmongChildren(const QString& nodeKey) {
    const qsizetype length = (IsRoot(nodeKey) ? 0 : IdOfKey(nodeKey).length()) + kCharactersPerLevel;
    QString sql = QStringLiteral("SELECT DISTINCT MID(A.AreaID,1,%1) FROM Area As A WHERE Len(A.AreaID) = %2")
                      .arg(length)
                      .arg(length + kCharactersPerLevel);
    if (!IsRoot(nodeKey))
        sql += QStringLiteral(" AND MID(A.AreaID,1,%1) = ").arg(IdOfKey(nodeKey).length()) + Quoted(IdOfKey(nodeKey));
    sql += Criterion(QStringLiteral(" AND A.")) + GlobalLocal(QStringLiteral(" AND "), {QStringLiteral("A.AreaGId")});
    QSet<QString> parents;
    for (Records rows = Select(sql, jet::CursorType::ForwardOnly); !rows.atEnd(); rows.MoveNext())
        parents.insert(rows.Text(std::size_t{0}).toUpper());
    return parents;
}

int AreaDepth() {
    const Records rows = Select(QStringLiteral("SELECT MAX(AreaLevel) From Area"));
    constexpr qint64 kDeepest = schema::kAreaIdWidth / kCharactersPerLevel;
    return rows.atEnd() ? 0 : static_cast<int>(std::clamp<qint64>(rows.Number(std::size_t{0}), 0, kDeepest));
}

QString AreasOfLevelSql(int level, const QString& nodeKey, bool onlyWithData) {
    QString where = QStringLiteral(" WHERE Len(A.AreaId) = %1").arg(level * kCharactersPerLevel);
    const QString id = IdOfKey(nodeKey);
    if (!IsRoot(nodeKey)) where += QStringLiteral(" AND Mid(A.AreaId,1,%1) = ").arg(id.length()) + Quoted(id);
    where += Criterion(QStringLiteral(" AND A."));
    if (!onlyWithData) return QStringLiteral("SELECT DISTINCT A.AreaNId FROM Area As A") + where;
    return QStringLiteral("SELECT  DISTINCT A.AreaNId  FROM Area as A INNER JOIN Data As D ON A.AreaNId = D.AreaNId ") +
           where;
}

void AreaSelection::Load() {
    ids_.clear();
    for (Records rows = Select(QStringLiteral("SELECT AreaId FROM _SelArea")); !rows.atEnd(); rows.MoveNext())
        ids_.insert(rows.Text(std::size_t{0}));
}

bool AreaSelection::AddAreas(const QString& idList) {
    SelectionChanged = true;
    if (idList.isEmpty()) return true;
    Records rows =
        Select(QStringLiteral("SELECT AreaID FROM Area  WHERE AreaNId in (") + idList + Text(kNotYetSelected));
    for (; !rows.atEnd(); rows.MoveNext())
        ids_.insert(rows.Text(std::size_t{0}));
    return Execute(
        QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel, MapFile)  SELECT AreaGId, "
                       "AreaNId, AreaID, AreaName, AreaLevel, MapFile FROM Area  WHERE AreaNId in (") +
        idList + Text(kNotYetSelected));
}

bool AreaSelection::AddItems(const std::vector<KeyedItem>& items) {
    if (items.empty()) return true;
    QStringList areaIds;
    for (const KeyedItem& item : items)
        areaIds << item.cells.value(1);
    Records rows =
        Select(QStringLiteral("SELECT AreaNId FROM Area WHERE AreaId In (") + QuotedList(areaIds) + QLatin1Char(')'),
               jet::CursorType::ForwardOnly);
    return AddAreas(rows.Joined());
}

bool AreaSelection::Remove(const std::vector<KeyedItem>& items) {
    SelectionChanged = true;
    if (items.empty()) return true;
    const QString list = NumberList(items);
    ids_.clear();
    Records rows =
        Select(QStringLiteral("Select AreaId FROM _SelArea WHERE AreaNId NOT In (") + list + QLatin1Char(')'));
    for (; !rows.atEnd(); rows.MoveNext())
        ids_.insert(rows.Text(std::size_t{0}));
    return Execute(QStringLiteral("DELETE * FROM _SelArea WHERE AreaNId in (") + list + QLatin1Char(')'));
}

bool AreaSelection::RemoveAll() {
    SelectionChanged = true;
    ids_.clear();
    return Execute(QStringLiteral("DELETE * FROM _SelArea"));
}

std::vector<KeyedItem> AreaSelection::Items() const {
    if (ids_.isEmpty()) return {};
    const QStringList ids(ids_.begin(), ids_.end());
    return AreaItems(AreasByIdSql("Select  AreaName, AreaID, AreaNId, AreaGId FROM Area WHERE AreaId In (",
                                  QuotedList(ids), "AreaGId"));
}

std::vector<KeyedItem> AreasOfList(const QString& idList) {
    if (idList.isEmpty()) return {};
    QStringList areaIds;
    Records rows = Select(QStringLiteral("SELECT AreaID FROM Area WHERE AreaNId in (") + idList + QLatin1Char(')'),
                          jet::CursorType::ForwardOnly);
    for (; !rows.atEnd(); rows.MoveNext())
        areaIds << rows.Text(std::size_t{0});
    if (areaIds.isEmpty()) return {};
    return AreaItems(AreasByIdSql("SELECT AreaName, AreaID, AreaNId, AreaGId FROM Area WHERE AreaID in (",
                                  QuotedList(areaIds), "AreaGId"));
}

} // namespace tessaro::selection
