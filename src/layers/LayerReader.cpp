#include "layers/LayerReader.h"

#include "layers/LayerTable.h"
#include "layers/MemoryFiles.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QFileInfo>
#include <QtEndian>

#include <cmath>
#include <memory>

namespace tessaro {

namespace {

constexpr qint64 kLargestFile = 1LL << 30;
constexpr qsizetype kHeaderSize = 100;
constexpr qsizetype kRecordSize = 8;
constexpr qint32 kFileCode = 9994;
constexpr double kBeyondMaps = 1e15; ///< larger coordinates are damage, and would make the extent useless

using Shapes = std::unique_ptr<std::remove_pointer_t<SHPHandle>, decltype(&SHPClose)>;
using Shape = std::unique_ptr<SHPObject, decltype(&SHPDestroyObject)>;

qint32 BigLong(const QByteArray& bytes, qsizetype position) {
    return qFromBigEndian<qint32>(bytes.constData() + position);
}

void PutBigLong(QByteArray& bytes, qsizetype position, qint32 value) {
    qToBigEndian(value, bytes.data() + position);
}

void Unscramble(QByteArray& main) {
    const auto first = qFromLittleEndian<qint32>(main.constData());
    const auto second = qFromLittleEndian<qint32>(main.constData() + 4);
    if (second == 1 && first < 0) qToLittleEndian(static_cast<qint32>(0U - static_cast<quint32>(first)), main.data());
}

/// True for an index whose entries all name a record that lies in the main file.
bool IndexFits(const QByteArray& index, const QByteArray& main) {
    if (index.size() < kHeaderSize || (index.size() - kHeaderSize) % kRecordSize != 0) return false;
    for (qsizetype entry = kHeaderSize; entry < index.size(); entry += kRecordSize) {
        const qint64 start = 2 * qint64(BigLong(index, entry));
        const qint64 length = 2 * qint64(BigLong(index, entry + 4));
        // The record of a null shape may be cut short at the end of the file.
        if (start < kHeaderSize || length < 4 || start + kRecordSize > main.size()) return false;
        if (length > 4 && start + kRecordSize + length > main.size()) return false;
    }
    return true;
}

/// An index of the records as they follow one another, up to the first that doesn't fit the file.
QByteArray IndexOf(const QByteArray& main) {
    QByteArray index(kHeaderSize, '\0');
    qint64 start = kHeaderSize;
    while (start + kRecordSize <= main.size()) {
        const qint64 length = 2 * qint64(BigLong(main, start + 4));
        if (length < 4 || start + kRecordSize + length > main.size()) break;
        const qsizetype entry = index.size();
        index.resize(entry + kRecordSize);
        PutBigLong(index, entry, static_cast<qint32>(start / 2));
        PutBigLong(index, entry + 4, static_cast<qint32>(length / 2));
        start += kRecordSize + length;
    }
    return index;
}

/// The head of the main file with the index's own length.
void CompleteIndex(QByteArray& index, QByteArray& main) {
    PutBigLong(main, 24, static_cast<qint32>(main.size() / 2));
    index.replace(0, kHeaderSize, main.left(kHeaderSize));
    PutBigLong(index, 24, static_cast<qint32>(index.size() / 2));
}

std::optional<LayerKind> KindOf(int shapeType) {
    switch (shapeType) {
    case SHPT_POINT:
    case SHPT_POINTZ:
    case SHPT_POINTM:
    case SHPT_MULTIPOINT:
    case SHPT_MULTIPOINTZ:
    case SHPT_MULTIPOINTM:
        return LayerKind::Point;
    case SHPT_ARC:
    case SHPT_ARCZ:
    case SHPT_ARCM:
        return LayerKind::Line;
    case SHPT_POLYGON:
    case SHPT_POLYGONZ:
    case SHPT_POLYGONM:
        return LayerKind::Polygon;
    default:
        return std::nullopt;
    }
}

bool IsOnAMap(const SHPObject& shape) {
    for (int i = 0; i < shape.nVertices; ++i)
        if (!(std::fabs(shape.padfX[i]) < kBeyondMaps && std::fabs(shape.padfY[i]) < kBeyondMaps)) return false;
    for (int part = 0; part < shape.nParts; ++part) {
        const int end = part + 1 < shape.nParts ? shape.panPartStart[part + 1] : shape.nVertices;
        if (shape.panPartStart[part] < 0 || shape.panPartStart[part] > end || end > shape.nVertices) return false;
    }
    return true;
}

/// Points have no parts of their own: all of one shape are one part.
void AddShape(MapLayer& layer, const SHPObject& shape) {
    MapFeature& feature = layer.features.back();
    for (int part = 0; part < std::max(shape.nParts, 1); ++part) {
        const int first = shape.nParts > 0 ? shape.panPartStart[part] : 0;
        const int end = part + 1 < shape.nParts ? shape.panPartStart[part + 1] : shape.nVertices;
        for (int i = first; i < end; ++i) {
            layer.points.emplace_back(shape.padfX[i], shape.padfY[i]);
            feature.box.Add(layer.points.back());
        }
        layer.partStarts.push_back(static_cast<int>(layer.points.size()));
    }
    feature.endPart = static_cast<int>(layer.partStarts.size()) - 1;
    layer.extent.Add(feature.box);
}

void ReadShapes(MapLayer& layer, SHPHandle shapes, int count) {
    for (int record = 0; record < count; ++record) {
        const int part = static_cast<int>(layer.partStarts.size()) - 1;
        layer.features.push_back({part, part, {}});
        const Shape shape(SHPReadObject(shapes, record), &SHPDestroyObject);
        if (!shape || !IsOnAMap(*shape))
            ++layer.damaged;
        else if (shape->nSHPType != SHPT_NULL && shape->nVertices > 0)
            AddShape(layer, *shape);
    }
}

std::optional<QByteArray> FileBeside(const QString& base, const char* ending) {
    return ReadWholeFile(FindPath(base + QLatin1String(ending)), kLargestFile);
}

LayerReading ReadParts(std::map<std::string, QByteArray>& files, const QString& name) {
    LayerReading reading;
    reading.fault = LayerFault::Damaged;
    MemoryFiles memory(files);
    const Shapes shapes(SHPOpenLL("layer.shp", "rb", memory.Hooks()), &SHPClose);
    if (!shapes) return reading;
    int count = 0;
    int type = 0;
    SHPGetInfo(shapes.get(), &count, &type, nullptr, nullptr);
    const auto kind = KindOf(type);
    reading.fault = kind ? LayerFault::None : LayerFault::UnsupportedKind;
    if (!kind) return reading;
    reading.layer.emplace();
    reading.layer->name = name;
    reading.layer->kind = *kind;
    ReadShapes(*reading.layer, shapes.get(), count);
    reading.hasTable = ReadLayerTable(*reading.layer, memory);
    return reading;
}

} // namespace

LayerReading ReadLayerFiles(std::map<std::string, QByteArray> files, const QString& name) {
    QByteArray& main = files["shp"];
    if (main.size() >= kRecordSize) Unscramble(main);
    if (main.size() < kHeaderSize || BigLong(main, 0) != kFileCode) return {std::nullopt, LayerFault::NotAShapefile};
    QByteArray& index = files["shx"];
    if (!IndexFits(index, main)) index = IndexOf(main);
    CompleteIndex(index, main);
    if (files.contains("dbf") && !FitTable(files["dbf"])) files.erase("dbf");
    return ReadParts(files, name);
}

LayerReading ReadLayer(const QString& path) {
    const QString file = FindPath(path);
    const QFileInfo info(file);
    if (info.size() > kLargestFile) return {std::nullopt, LayerFault::TooLarge};
    auto main = info.isFile() ? ReadWholeFile(file, kLargestFile) : std::nullopt;
    if (!main) return {std::nullopt, LayerFault::Missing};
    const QString base = info.path() + QLatin1Char('/') + info.completeBaseName();
    std::map<std::string, QByteArray> files{{"shp", std::move(*main)}};
    for (const char* ending : {"shx", "dbf", "cpg"})
        if (auto bytes = FileBeside(base, qPrintable(QLatin1Char('.') + QLatin1String(ending))))
            files[ending] = std::move(*bytes);
    return ReadLayerFiles(std::move(files), info.completeBaseName());
}

} // namespace tessaro
