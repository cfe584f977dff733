#include "layers/MapFiles.h"

#include "layers/EncryptShape.h"
#include "platform/Paths.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "session/Strings.h"

namespace tessaro {

namespace {

constexpr auto kEnding = ".shp";

} // namespace

QString MapPath(const QString& mapFile) {
    QString name = FileNameOf(mapFile.trimmed()); // a database from elsewhere must not lead out of the folder
    if (name.isEmpty()) return {};
    if (!name.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive)) name += QLatin1String(kEnding);
    const QString path = FindPath(JoinPath({AppPath, QStringLiteral("Maps"), name}));
    return FileExists(path) ? path : QString();
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

} // namespace tessaro
