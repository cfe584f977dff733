#include "Outlines.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

namespace tessaro::content {

namespace {

QJsonArray FeaturesOf(const std::filesystem::path& file) {
    QFile source(QString::fromStdString(file.string()));
    if (!source.open(QIODevice::ReadOnly)) throw std::runtime_error("can't read " + file.string());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(source.readAll(), &error);
    if (document.isNull()) throw std::runtime_error(file.string() + ": " + error.errorString().toStdString());
    return document.object().value(QLatin1String("features")).toArray();
}

std::string Property(const QJsonValue& feature, const char* name) {
    return feature[QLatin1String("properties")][QLatin1String(name)].toString().toStdString();
}

LayerRecord RecordOf(const QJsonValue& feature) {
    LayerRecord record{Property(feature, "ID_"), Property(feature, "Name1_"), {}};
    for (const QJsonValue& polygon : feature[QLatin1String("geometry")][QLatin1String("coordinates")].toArray()) {
        for (const QJsonValue& ring : polygon.toArray()) {
            record.parts.emplace_back();
            for (const QJsonValue& point : ring.toArray())
                record.parts.back().emplace_back(point[0].toDouble(), point[1].toDouble());
        }
    }
    return record;
}

} // namespace

LayerContents ReadOutlines(const std::filesystem::path& file) {
    LayerContents layer;
    for (const QJsonValue& feature : FeaturesOf(file))
        layer.records.push_back(RecordOf(feature));
    return layer;
}

} // namespace tessaro::content
