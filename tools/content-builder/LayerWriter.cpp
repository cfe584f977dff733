#include "LayerWriter.h"

#include <fstream>
#include <memory>
#include <shapefil.h>
#include <stdexcept>
#include <unistd.h>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

constexpr int kIdWidth = 30;
constexpr int kNameWidth = 120;
constexpr const char* kWorldGeodeticSystem =
    "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],"
    "PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]]";

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

/// All parts as one shape; the library turns each ring to the side it belongs on.
Shape ShapeOf(const LayerRecord& record, ShapeKind kind) {
    std::vector<int> starts;
    std::vector<double> x;
    std::vector<double> y;
    for (const auto& part : record.parts) {
        starts.push_back(static_cast<int>(x.size()));
        for (const QPointF point : part) {
            x.push_back(point.x());
            y.push_back(point.y());
        }
    }
    Shape shape(SHPCreateObject(static_cast<int>(kind), -1, static_cast<int>(starts.size()), starts.data(), nullptr,
                                static_cast<int>(x.size()), x.data(), y.data(), nullptr, nullptr));
    if (!shape) throw std::runtime_error("a shape can't be made");
    SHPRewindObject(nullptr, shape.get());
    return shape;
}

void WriteShapesAndTable(const LayerContents& layer, const std::string& base) {
    const Shapes shapes(SHPCreate(base.c_str(), static_cast<int>(layer.kind)));
    const Table table(DBFCreateEx(base.c_str(), "UTF-8"));
    if (!shapes || !table) throw std::runtime_error("can't write " + base);
    const int id = DBFAddField(table.get(), "ID_", FTString, kIdWidth, 0);
    const int name = DBFAddField(table.get(), "Name1_", FTString, kNameWidth, 0);
    for (const LayerRecord& each : layer.records) {
        const int record = SHPWriteObject(shapes.get(), -1, ShapeOf(each, layer.kind).get());
        const bool written = record >= 0 && DBFWriteStringAttribute(table.get(), record, id, each.id.c_str()) != 0 &&
                             DBFWriteStringAttribute(table.get(), record, name, each.name.c_str()) != 0;
        if (!written) throw std::runtime_error("can't write " + base);
    }
}

void WriteCoordinateSystem(const std::string& base) {
    std::ofstream file(base + ".prj", std::ios::binary | std::ios::trunc);
    file << kWorldGeodeticSystem;
    if (!file.flush()) throw std::runtime_error("can't write " + base + ".prj");
}

} // namespace

void WriteLayer(const LayerContents& layer, const fs::path& folder, const std::string& stem) {
    const fs::path work = folder / (stem + "-" + std::to_string(getpid()) + "-new");
    WriteShapesAndTable(layer, work.string());
    WriteCoordinateSystem(work.string());
    for (const char* extension : {".shp", ".shx", ".dbf", ".cpg", ".prj"})
        fs::rename(work.string() + extension, folder / (stem + extension));
}

} // namespace tessaro::content
