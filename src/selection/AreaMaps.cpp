#include "selection/AreaMaps.h"

#include "selection/AreaSelection.h"
#include "selection/SelectionTexts.h"
#include "session/Query.h"

namespace tessaro::selection {

namespace {

/// The maps that a statement's first column names, each once.
QSet<QString> MapsOf(const QString& sql) {
    QSet<QString> maps;
    for (Records rows = Select(sql, jet::CursorType::ForwardOnly); !rows.atEnd(); rows.MoveNext()) {
        const QString path = MapPath(rows.Text(std::size_t{0}));
        if (!path.isEmpty()) maps.insert(path);
    }
    return maps;
}

} // namespace

bool HasAreaMaps() {
    return !MapsOf(QStringLiteral("SELECT DISTINCT MapFile FROM Area")).isEmpty();
}

QString MapOfChildren(const QString& nodeKey) {
    const bool root = nodeKey == QLatin1String(kAreaRootKey);
    const QString id = root ? QString() : IdOfKey(nodeKey);
    QString sql = QStringLiteral("SELECT DISTINCT MapFile FROM Area WHERE Len(AreaId) = %1")
                      .arg(id.length() + kCharactersPerLevel);
    if (!root) sql += QStringLiteral(" AND MID(AreaID,1,%1) = ").arg(id.length()) + Quoted(id);
    const QSet<QString> maps = MapsOf(sql);
    return maps.size() == 1 ? *maps.begin() : QString();
}

QString MapOfArea(const QString& areaId) {
    const Records rows = Select(QStringLiteral("Select MapFile FROM Area Where AreaId = ") + Quoted(areaId));
    return rows.atEnd() ? QString() : MapPath(rows.Text(std::size_t{0}));
}

std::vector<int> FeaturesBelow(const std::vector<QString>& ids, const QString& nodeId) {
    const QString node = nodeId.toUpper();
    std::vector<int> below;
    std::vector<int> itself;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (!ids[i].startsWith(node)) continue;
        (ids[i].length() > node.length() ? below : itself).push_back(static_cast<int>(i));
    }
    return below.empty() ? itself : below;
}

QString NumberOfArea(const QString& areaId) {
    Records rows =
        Select(QStringLiteral("SELECT AreaNId FROM Area WHERE AreaId IN (") + Quoted(areaId) + QLatin1Char(')'));
    return rows.Joined();
}

QString NameOfArea(const QString& areaId) {
    if (areaId.isEmpty()) return {};
    const Records rows = Select(QStringLiteral("SELECT AreaId, AreaName from Area WHERE AreaId = ") + Quoted(areaId));
    return rows.atEnd() ? QString() : NameOf(rows.Text("AreaName"));
}

QHash<QString, QString> NamesOfAreas() {
    QHash<QString, QString> names;
    for (Records rows = Select(QStringLiteral("SELECT AreaID, AreaName FROM Area"), jet::CursorType::ForwardOnly);
         !rows.atEnd(); rows.MoveNext())
        names.insert(rows.Text(std::size_t{0}).toUpper(), NameOf(rows.Text(1)));
    return names;
}

} // namespace tessaro::selection
