#include "map/custom/LayerListFile.h"

#include "map/AnsiText.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "session/ErrorSink.h"
#include "session/Session.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace tessaro {

namespace {

constexpr qsizetype kHeadLines = 3;
constexpr qsizetype kValueStart = 19; ///< where the value of a line begins
constexpr qint64 kLargestList = 1 << 20;
QString lastFolder;

const char* const kHead = "[Detail of Shape file to be Loaded]";
const char* const kNameLabel = "Layer            : ";
const char* const kFolderLabel = "Layer Path       : ";

/// Values are read without the blanks around them.
bool FitsOneLine(const QString& value) {
    return value == value.trimmed() && !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r'));
}

QString ListFile() {
    return JoinPath({MapsFolder(), QStringLiteral("LoadChkSHP.chk")});
}

bool Failed(const QString& file) {
    ReportError(FileError::NoAccess, QStringLiteral("Path/File access error: ") + file,
                QStringLiteral("SaveLayerList"));
    return false;
}

bool DeleteList() {
    const QString own = ReadablePlace(ListFile(), AppPath, CacheFolder);
    if (!FileExists(own)) return true;
    if (QFile::remove(own) && !FileExists(ListFile())) return true;
    // The installation's own file can't be deleted: an empty list of the user's takes its place.
    const QString place = WritablePlace(ListFile(), AppPath, CacheFolder);
    return ReplaceFile(place, LayerListBytes({}, FontCharset)) || Failed(place);
}

} // namespace

QString MapsFolder() {
    return JoinPath({AppPath, QStringLiteral("Maps")});
}

QString LastLayerFolder() {
    return lastFolder.isEmpty() ? MapsFolder() : lastFolder;
}

void SetLastLayerFolder(const QString& folder) {
    lastFolder = folder;
}

QByteArray LayerListBytes(const RememberedLayers& layers, int charset) {
    QString lines;
    int count = 0;
    for (const RememberedLayer& each : layers) {
        if (each.name.isEmpty() || !FitsOneLine(each.name) || !FitsOneLine(each.folder)) continue;
        ++count;
        lines += QLatin1String(kNameLabel) + each.name + QStringLiteral("\r\n") + QLatin1String(kFolderLabel) +
                 each.folder + QStringLiteral("\r\n");
    }
    return AnsiBytes(QLatin1String(kHead) + QStringLiteral("\r\n%1\r\n \r\n").arg(count) + lines, charset);
}

RememberedLayers ReadLayerList(const QByteArray& bytes, int charset) {
    QString text = TextOfAnsi(bytes, charset);
    const QStringList lines = text.remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    RememberedLayers layers;
    if (lines.size() < kHeadLines) return layers;
    const qsizetype told = std::max(lines[1].trimmed().toInt(), 0);
    for (qsizetype line = kHeadLines; line + 1 < lines.size() && line < kHeadLines + 2 * told; line += 2) {
        RememberedLayer layer{lines[line].mid(kValueStart).trimmed(), lines[line + 1].mid(kValueStart).trimmed()};
        if (!layer.name.isEmpty()) layers.push_back(std::move(layer));
    }
    return layers;
}

QString FileOf(const RememberedLayer& layer) {
    const QString folder = layer.folder.isEmpty() ? MapsFolder() : layer.folder;
    QString file = ReadablePlace(JoinPath({folder, layer.name + QStringLiteral(".shp")}), AppPath, CacheFolder);
    return FileExists(file) ? file : QString();
}

RememberedLayer RememberedOf(const QString& shapeFile) {
    const QString folder = FolderOf(shapeFile);
    return {QFileInfo(shapeFile).completeBaseName(), SamePath(folder, FindPath(MapsFolder())) ? QString() : folder};
}

RememberedLayers LoadLayerList() {
    const auto bytes = ReadWholeFile(ReadablePlace(ListFile(), AppPath, CacheFolder), kLargestList);
    return bytes ? ReadLayerList(*bytes, FontCharset) : RememberedLayers();
}

bool SaveLayerList(const RememberedLayers& layers) {
    if (layers.empty()) return DeleteList();
    const QString place = WritablePlace(ListFile(), AppPath, CacheFolder);
    return ReplaceFile(place, LayerListBytes(layers, FontCharset)) || Failed(place);
}

} // namespace tessaro
