#include "selection/AreaMaps.h"

#include "layers/EncryptShape.h"
#include "platform/Paths.h"
#include "selection/AreaSelection.h"
#include "selection/SelectionTexts.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

namespace tessaro::selection {

namespace {

constexpr auto kEnding = ".shp";

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

QString MapPath(const QString& mapFile) {
    QString name = FileNameOf(mapFile.trimmed()); // a database from elsewhere must not lead out of the folder
    if (name.isEmpty()) return {};
    if (!name.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive)) name += QLatin1String(kEnding);
    const QString path = FindPath(JoinPath({AppPath, QStringLiteral("Maps"), name}));
    return FileExists(path) ? path : QString();
}

bool HasAreaMaps() {
    return !MapsOf(QStringLiteral("SELECT DISTINCT MapFile FROM Area")).isEmpty();
}

QString MapOfChildren(const QString& nodeKey) {
    const bool root = nodeKey == QLatin1String(AreaRootKey);
    const QString id = root ? QString() : IdOfKey(nodeKey);
    QString sql = QStringLiteral("SELECT DISTINCT MapFile FROM Area WHERE Len(AreaId) = %1")
                      .arg(id.length() + CharactersPerLevel);
    if (!root) sql += QStringLiteral(" AND MID(AreaID,1,%1) = ").arg(id.length()) + Quoted(id);
    const QSet<QString> maps = MapsOf(sql);
    return maps.size() == 1 ? *maps.begin() : QString();
}

QString MapOfArea(const QString& areaId) {
    const Records rows = Select(QStringLiteral("Select MapFile FROM Area Where AreaId = ") + Quoted(areaId));
    return rows.atEnd() ? QString() : MapPath(rows.Text(std::size_t{0}));
}

LayerReading OpenAreaMap(const QString& path) {
    if (!SettingFlag(QStringLiteral("ENCRYPT_DECRYPT_FILES"))) return ReadLayer(path);
    const QString copy = MakeMapFilesFolder() ? WorkingCopy(path) : QString();
    return copy.isEmpty() ? LayerReading{std::nullopt, LayerFault::Missing} : ReadLayer(copy);
}

QString ReasonOf(LayerFault fault) {
    switch (fault) {
    case LayerFault::None:
        break;
    case LayerFault::Missing:
        return GetText(QStringLiteral("TS_LayerMissing"));
    case LayerFault::TooLarge:
        return GetText(QStringLiteral("TS_LayerTooLarge"));
    case LayerFault::NotAShapefile:
        return GetText(QStringLiteral("TS_LayerNoShapefile"));
    case LayerFault::UnsupportedKind:
        return GetText(QStringLiteral("TS_LayerUnsupported"));
    case LayerFault::Damaged:
        return GetText(QStringLiteral("TS_LayerDamaged"));
    }
    return {};
}

std::vector<QString> AreaIdsOf(const MapLayer& layer) {
    const int field = layer.IdField();
    std::vector<QString> ids;
    for (int feature = 0; feature < static_cast<int>(layer.features.size()); ++feature)
        ids.push_back(layer.Text(feature, field).trimmed().toUpper());
    return ids;
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
