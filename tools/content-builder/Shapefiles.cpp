#include "Shapefiles.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>
#include <shapefil.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

constexpr int kIdWidth = 30;
constexpr int kNameWidth = 120;

struct CloseShapes {
    void operator()(SHPHandle handle) const { SHPClose(handle); }
};
struct CloseTable {
    void operator()(DBFHandle handle) const { DBFClose(handle); }
};
struct DestroyShape {
    void operator()(SHPObject* shape) const { SHPDestroyObject(shape); }
};
using Shapes = std::unique_ptr<std::remove_pointer_t<SHPHandle>, CloseShapes>;
using Table = std::unique_ptr<std::remove_pointer_t<DBFHandle>, CloseTable>;
using Shape = std::unique_ptr<SHPObject, DestroyShape>;

QJsonArray FeaturesOf(const fs::path& file) {
    QFile source(QString::fromStdString(file.string()));
    if (!source.open(QIODevice::ReadOnly)) throw std::runtime_error("can't read " + file.string());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(source.readAll(), &error);
    if (document.isNull()) throw std::runtime_error(file.string() + ": " + error.errorString().toStdString());
    return document.object().value(QLatin1String("features")).toArray();
}

/// All rings of a MultiPolygon as the parts of one shape; the library turns each to the side it belongs on.
Shape ShapeOf(const QJsonArray& polygons) {
    std::vector<int> starts;
    std::vector<double> x;
    std::vector<double> y;
    for (const QJsonValue& polygon : polygons) {
        for (const QJsonValue& ring : polygon.toArray()) {
            starts.push_back(static_cast<int>(x.size()));
            for (const QJsonValue& point : ring.toArray()) {
                x.push_back(point[0].toDouble());
                y.push_back(point[1].toDouble());
            }
        }
    }
    Shape shape(SHPCreateObject(SHPT_POLYGON, -1, static_cast<int>(starts.size()), starts.data(), nullptr,
                                static_cast<int>(x.size()), x.data(), y.data(), nullptr, nullptr));
    if (!shape) throw std::runtime_error("a shape can't be made");
    SHPRewindObject(nullptr, shape.get());
    return shape;
}

bool WriteText(DBFHandle table, int record, int field, const QJsonValue& feature, const char* property) {
    const QJsonValue properties = feature[QLatin1String("properties")];
    const QByteArray text = properties[QLatin1String(property)].toString().toUtf8();
    return DBFWriteStringAttribute(table, record, field, text.constData()) != 0;
}

void WriteLayer(const QJsonArray& features, const fs::path& base) {
    const Shapes shapes(SHPCreate(base.c_str(), SHPT_POLYGON));
    const Table table(DBFCreateEx(base.c_str(), "UTF-8"));
    if (!shapes || !table) throw std::runtime_error("can't write " + base.string());
    const int id = DBFAddField(table.get(), "ID_", FTString, kIdWidth, 0);
    const int name = DBFAddField(table.get(), "Name1_", FTString, kNameWidth, 0);
    for (const QJsonValue& feature : features) {
        const Shape shape = ShapeOf(feature[QLatin1String("geometry")][QLatin1String("coordinates")].toArray());
        const int record = SHPWriteObject(shapes.get(), -1, shape.get());
        const bool written = record >= 0 && WriteText(table.get(), record, id, feature, "ID_") &&
                             WriteText(table.get(), record, name, feature, "Name1_");
        if (!written) throw std::runtime_error("can't write " + base.string());
    }
}

} // namespace

void BuildShapefiles(const fs::path& outlines, const fs::path& folder) {
    fs::create_directories(folder);
    for (const auto& entry : fs::directory_iterator(outlines)) {
        if (entry.path().extension() != ".geojson") continue;
        const std::string stem = entry.path().stem().string();
        const fs::path work = folder / (stem + "-" + std::to_string(getpid()) + "-new");
        WriteLayer(FeaturesOf(entry.path()), work);
        for (const char* extension : {".shp", ".shx", ".dbf", ".cpg"}) {
            const fs::path written = work.string() + extension;
            if (fs::exists(written)) fs::rename(written, folder / (stem + extension));
        }
    }
}

} // namespace tessaro::content
