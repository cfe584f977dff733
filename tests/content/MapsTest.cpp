#include "support/PlainReader.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <shapefil.h>

namespace tessaro::test {

namespace {

const std::string kInstallation = TESSARO_INSTALLATION;

struct MapLayer {
    std::set<std::string> ids;
    std::string problem; ///< the first record that is no proper polygon
};

MapLayer ReadLayer(const std::string& base) {
    const std::unique_ptr<std::remove_pointer_t<SHPHandle>, decltype(&SHPClose)> shapes(SHPOpen(base.c_str(), "rb"),
                                                                                        &SHPClose);
    const std::unique_ptr<std::remove_pointer_t<DBFHandle>, decltype(&DBFClose)> table(DBFOpen(base.c_str(), "rb"),
                                                                                       &DBFClose);
    MapLayer layer;
    if (!shapes || !table) return {{}, "can't be opened"};
    int count = 0;
    int type = 0;
    SHPGetInfo(shapes.get(), &count, &type, nullptr, nullptr);
    if (type != SHPT_POLYGON || count != DBFGetRecordCount(table.get())) layer.problem = "types or counts differ";
    const int id = DBFGetFieldIndex(table.get(), "ID_");
    const int name = DBFGetFieldIndex(table.get(), "Name1_");
    for (int i = 0; i < count; ++i) {
        const std::unique_ptr<SHPObject, decltype(&SHPDestroyObject)> shape(SHPReadObject(shapes.get(), i),
                                                                            &SHPDestroyObject);
        layer.ids.insert(DBFReadStringAttribute(table.get(), i, id));
        const bool good = shape && shape->nVertices > 3 && shape->dfXMin >= -180.01 && shape->dfXMax <= 180.01 &&
                          shape->dfYMin >= -90.01 && shape->dfYMax <= 90.01 &&
                          SHPRewindObject(nullptr, shape.get()) == 0 &&
                          *DBFReadStringAttribute(table.get(), i, name) != '\0';
        if (!good && layer.problem.empty()) layer.problem = "record " + std::to_string(i);
    }
    if (static_cast<int>(layer.ids.size()) != count) layer.problem = "an id stands twice";
    return layer;
}

} // namespace

TEST(Maps, HoldTheAreasThatNameThem) {
    const PlainReader sample(kInstallation + "/Data/Tessaro World.mdb");
    std::map<std::string, MapLayer> layers;
    for (const auto& entry : std::filesystem::directory_iterator(kInstallation + "/Maps")) {
        if (entry.path().extension() == ".shp")
            layers[entry.path().filename().string()] =
                ReadLayer((entry.path().parent_path() / entry.path().stem()).string());
    }
    ASSERT_GE(layers.size(), 5U);
    std::set<std::string> areas;
    for (const std::string& row :
         sample.Rows("SELECT AreaID, MapFile FROM Area_en WHERE AreaLevel > 1 AND MapFile <> ''")) {
        const std::string id = row.substr(0, row.find('|'));
        const std::string file = row.substr(row.find('|') + 1);
        ASSERT_TRUE(layers.contains(file)) << file;
        EXPECT_TRUE(layers[file].ids.contains(id)) << id << " is not in " << file;
        areas.insert(id);
    }
    for (const auto& [file, layer] : layers) {
        EXPECT_EQ(layer.problem, "") << file;
        for (const std::string& id : layer.ids)
            EXPECT_TRUE(areas.contains(id)) << file << " has " << id << ", which no area names";
    }
}

} // namespace tessaro::test
