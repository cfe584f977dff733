#include "map/MapLayerList.h"

#include "layers/EncryptShape.h"
#include "layers/LayerReader.h"
#include "layers/MapFiles.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Messages.h"
#include "session/Query.h"
#include "session/Session.h"
#include "session/Settings.h"

#include <QDir>

#include <algorithm>

namespace tessaro {

bool IsOfTheme(const StackedLayer& layer) {
    return layer.tag == QLatin1String(kDataTag);
}

namespace {

constexpr auto kShapeEnding = ".shp";
constexpr unsigned kNoLayer = 5; ///< "Invalid procedure call": the file is there, but no layer

/// The file that is there, after asking for it as long as it is not.
QString Located(QString path, const LayerLocator& locate) {
    while (!path.isEmpty() && !FileExists(path))
        path = locate(path.endsWith(QLatin1Char('/')) ? QStringLiteral("234") : QStringLiteral("235"), path);
    return path.isEmpty() ? path : FindPath(path);
}

QString MapsFolder() {
    return JoinPath({AppPath, QStringLiteral("Maps")});
}

/// Among the lowest layers, one of the theme that was read from a file of this name; -1 for none.
int FormerLayer(const LayerStack& map, int former, const QString& fileName) {
    for (int i = 0; i < former; ++i) {
        const QString name = map.At(i).data.name + QLatin1String(kShapeEnding);
        if (IsOfTheme(map.At(i)) && name.compare(fileName, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
}

/// Takes those of the lowest layers off the map that are of the theme.
void RemoveTheme(LayerStack& map, int former) {
    for (int i = former; i-- > 0;)
        if (IsOfTheme(map.At(i))) map.Remove(i);
}

void TellOfFailures(int layers, const QStringList& kept, const QStringList& lost, const QString& reason) {
    const auto tell = [&](const char* key, const QStringList& files) {
        const QString text = FilledText(QLatin1String(key), {files.join(QStringLiteral(", "))});
        ShowMessage(reason.isEmpty() ? text : text + QStringLiteral("\n\n") + reason, MessageType::Ok,
                    MessageIcon::Warning, {}, false);
    };
    if (layers == 0) return ShowMessageWithReason(QStringLiteral("222"), reason);
    if (!kept.isEmpty()) tell("TS_LayersKept", kept);
    if (!lost.isEmpty()) tell("TS_LayersLeftOut", lost);
}

} // namespace

QString PlainLayerFile(const QString& path) {
    const bool scrambled = SettingFlag(QStringLiteral("ENCRYPT_DECRYPT_FILES"));
    if (!scrambled || SamePath(FolderOf(path), MapFilesFolder)) return path;
    if (!FolderExists(MapFilesFolder)) QDir().mkpath(MapFilesFolder);
    return WorkingCopy(path);
}

MapFiles Collect_Maps_As_Per_Data() {
    MapFiles files;
    Records rows = Select(QStringLiteral("SELECT Distinct(MapFile),AreaLevel FROM _SelArea Order By AreaLevel "));
    for (; !rows.atEnd(); rows.MoveNext()) {
        const QString named = rows.Text(std::size_t{0}).trimmed();
        if (named.isEmpty()) continue;
        const QString path = MapPath(named);
        const MapFile file = path.isEmpty() ? MapFile{named, {}} : MapFile{FileNameOf(path), FolderOf(path)};
        if (std::find(files.begin(), files.end(), file) == files.end()) files.push_back(file);
    }
    return files;
}

bool AddLayer(LayerStack& map, QString& path, const QString& tag, const LayerLocator& locate, QString& reason) {
    path = Located(path, locate);
    if (path.isEmpty()) return false;
    LayerReading reading = ReadLayer(PlainLayerFile(path));
    if (!reading.layer) {
        reason = ReasonOf(reading.fault);
        ReportError(kNoLayer, reason + QLatin1Char(' ') + path, QStringLiteral("AddLayer"));
        return false;
    }
    map.Add(std::move(*reading.layer), tag).file = path;
    return true;
}

ThemeKind KindOf(const LayerStack& map) {
    bool polygons = false;
    bool points = false;
    for (int i = 0; i < map.Count(); ++i) {
        if (!IsOfTheme(map.At(i))) continue;
        polygons = polygons || map.At(i).data.kind == LayerKind::Polygon;
        points = points || map.At(i).data.kind == LayerKind::Point;
    }
    return static_cast<ThemeKind>((polygons ? 1 : 0) + (points ? 2 : 0));
}

ThemeKind LoadLayers(LayerStack& map, MapFiles& files, const LayerLocator& locate) {
    QString reason;
    QStringList kept;
    QStringList lost;
    int former = map.Count(); // the layers below this place were there before
    for (MapFile& file : files) {
        QString path = (file.folder.isEmpty() ? MapsFolder() : file.folder) + QLatin1Char('/') + file.name;
        if (AddLayer(map, path, QLatin1String(kDataTag), locate, reason)) {
            file = {FileNameOf(path), FolderOf(path)};
        } else if (const int layer = FormerLayer(map, former, file.name); layer >= 0) {
            map.Move(layer, map.Count() - 1);
            --former;
            kept << file.name;
        } else if (!path.isEmpty()) {
            lost << file.name;
        }
    }
    RemoveTheme(map, former);
    TellOfFailures(map.Count(), kept, lost, reason);
    return KindOf(map);
}

int FeaturesOfTheme(const LayerStack& map) {
    int features = 0;
    for (int i = 0; i < map.Count(); ++i)
        if (IsOfTheme(map.At(i))) features += static_cast<int>(map.At(i).data.features.size());
    return features;
}

} // namespace tessaro
