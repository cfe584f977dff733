#include "TestPlaces.h"
#include "layers/LayerReader.h"
#include "support/PlainReader.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <shapefil.h>
#include <vector>

namespace tessaro::test {

namespace {

namespace fs = std::filesystem;

const std::string kInstallation = TESSARO_INSTALLATION;

struct Record {
    std::string id;
    std::string name;
    double x = 0; ///< of its first point
    double y = 0;
};
struct Layer {
    int type = 0;
    std::vector<Record> records;
    std::string problem; ///< the first record that is not as it should be

    [[nodiscard]] std::set<std::string> Ids() const {
        std::set<std::string> ids;
        for (const Record& record : records)
            ids.insert(record.id);
        return ids;
    }
};

bool IsGoodShape(SHPObject* shape, int type) {
    if (!shape || shape->nVertices < (type == SHPT_POLYGON ? 4 : type == SHPT_ARC ? 2 : 1)) return false;
    const bool inPlace =
        shape->dfXMin >= -180.01 && shape->dfXMax <= 180.01 && shape->dfYMin >= -90.01 && shape->dfYMax <= 90.01;
    return inPlace && (type != SHPT_POLYGON || SHPRewindObject(nullptr, shape) == 0);
}

Layer ReadWithShapelib(const std::string& base) {
    const std::unique_ptr<std::remove_pointer_t<SHPHandle>, decltype(&SHPClose)> shapes(SHPOpen(base.c_str(), "rb"),
                                                                                        &SHPClose);
    const std::unique_ptr<std::remove_pointer_t<DBFHandle>, decltype(&DBFClose)> table(DBFOpen(base.c_str(), "rb"),
                                                                                       &DBFClose);
    if (!shapes || !table) return {0, {}, "can't be opened"};
    Layer layer;
    int count = 0;
    SHPGetInfo(shapes.get(), &count, &layer.type, nullptr, nullptr);
    if (count != DBFGetRecordCount(table.get())) layer.problem = "counts differ";
    const int id = DBFGetFieldIndex(table.get(), "ID_");
    const int name = DBFGetFieldIndex(table.get(), "Name1_");
    for (int i = 0; i < count; ++i) {
        const std::unique_ptr<SHPObject, decltype(&SHPDestroyObject)> shape(SHPReadObject(shapes.get(), i),
                                                                            &SHPDestroyObject);
        Record record{DBFReadStringAttribute(table.get(), i, id), DBFReadStringAttribute(table.get(), i, name)};
        if (!IsGoodShape(shape.get(), layer.type) || record.id.empty() || record.name.empty())
            layer.problem = "record " + std::to_string(i);
        if (shape && shape->nVertices > 0) {
            record.x = shape->padfX[0];
            record.y = shape->padfY[0];
        }
        layer.records.push_back(record);
    }
    return layer;
}

Layer Installed(const std::string& stem) {
    return ReadWithShapelib(kInstallation + "/Maps/" + stem);
}

/// The areas of the sample database that have an outline, by the file that holds it.
std::map<std::string, std::set<std::string>> AreasByFile() {
    const PlainReader sample(kInstallation + "/Data/Tessaro World.mdb");
    std::map<std::string, std::set<std::string>> areas;
    for (const std::string& row :
         sample.Rows("SELECT AreaID, MapFile FROM Area_en WHERE AreaLevel > 1 AND MapFile <> ''"))
        areas[row.substr(row.find('|') + 1)].insert(row.substr(0, row.find('|')));
    return areas;
}

const Record* Named(const Layer& layer, const std::string& name) {
    for (const Record& record : layer.records)
        if (record.name == name) return &record;
    return nullptr;
}

} // namespace

TEST(Maps, AreWholeAndTellWhereTheyLie) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(kInstallation + "/Maps")) {
        if (entry.path().extension() != ".shp") continue;
        ++count;
        const std::string base = (entry.path().parent_path() / entry.path().stem()).string();
        EXPECT_EQ(ReadWithShapelib(base).problem, "") << base;
        std::ifstream system(base + ".prj");
        std::string text;
        std::getline(system, text);
        EXPECT_EQ(text.rfind("GEOGCS[\"GCS_WGS_1984\"", 0), 0U) << base;
        EXPECT_TRUE(fs::exists(base + ".shx") && fs::exists(base + ".cpg")) << base;
    }
    EXPECT_EQ(count, 15);
}

TEST(Maps, HoldTheAreasThatNameThem) {
    const auto areas = AreasByFile();
    ASSERT_EQ(areas.size(), 6U);
    for (const auto& [file, ids] : areas) {
        const std::string stem = file.substr(0, file.find('.'));
        const Layer outlines = Installed(stem);
        EXPECT_EQ(outlines.type, SHPT_POLYGON) << file;
        EXPECT_EQ(outlines.Ids(), ids) << file;
        EXPECT_EQ(outlines.records.size(), ids.size()) << file << ": an id stands twice";
        const Layer points = Installed(stem + "_Points");
        EXPECT_EQ(points.type, SHPT_POINT) << file;
        EXPECT_EQ(points.Ids(), ids) << file;
    }
}

TEST(Maps, HavePointsInsideTheirAreas) {
    for (const auto& [file, ids] : AreasByFile()) {
        const std::string base = kInstallation + "/Maps/" + file.substr(0, file.find('.'));
        const LayerReading areas = ReadLayer(QString::fromStdString(base + ".shp"));
        const LayerReading points = ReadLayer(QString::fromStdString(base + "_Points.shp"));
        ASSERT_TRUE(areas.layer && points.layer) << file;
        for (std::size_t i = 0; i < points.layer->features.size(); ++i) {
            const std::vector<int> at = areas.layer->SearchByDistance(points.layer->points[i], 0);
            EXPECT_EQ(std::count(at.begin(), at.end(), static_cast<int>(i)), 1)
                << file << " " << points.layer->Text(static_cast<int>(i), 0).toStdString();
        }
    }
}

TEST(Maps, HaveBordersWhereStatesMeet) {
    const Layer borders = Installed("USA_State_Borders");
    EXPECT_EQ(borders.type, SHPT_ARC);
    EXPECT_TRUE(Named(borders, "California - Nevada"));
    EXPECT_TRUE(Named(borders, "Maryland - District of Columbia"));
    EXPECT_FALSE(Named(borders, "California - Utah"));
    std::map<std::string, int> neighbours;
    for (const Record& record : borders.records)
        for (const std::string& state :
             {record.name.substr(0, record.name.find(" - ")), record.name.substr(record.name.find(" - ") + 3)})
            ++neighbours[state];
    const std::pair<const char*, int> known[] = {{"Maine", 1}, {"Hawaii", 0},  {"Alaska", 0},    {"Missouri", 8},
                                                 {"Texas", 4}, {"Florida", 2}, {"Tennessee", 8}, {"Washington", 2}};
    for (const auto& [state, count] : known)
        EXPECT_EQ(neighbours[state], count) << state;
}

TEST(Maps, HaveCitiesAndAGraticule) {
    const Layer cities = Installed("World_Cities");
    EXPECT_EQ(cities.type, SHPT_POINT);
    EXPECT_EQ(cities.records.size(), 404U);
    const auto known = AreasByFile()["World.shp"];
    for (const Record& city : cities.records)
        EXPECT_TRUE(known.contains(city.id)) << city.name;
    const Record* const paris = Named(cities, "Paris");
    ASSERT_TRUE(paris);
    EXPECT_EQ(paris->id, "EURFRA");
    EXPECT_NEAR(paris->x, 2.333, 0.001);
    EXPECT_NEAR(paris->y, 48.867, 0.001);
    EXPECT_NEAR(Named(cities, "Buenos Aires")->x, -58.45, 0.001);
    const Layer lines = Installed("Graticule");
    EXPECT_EQ(lines.records.size(), 21U);
    ASSERT_TRUE(Named(lines, "Equator") && Named(lines, "30° W"));
    EXPECT_EQ(Named(lines, "Equator")->y, 0);
    EXPECT_EQ(Named(lines, "30° W")->x, -30);
}

} // namespace tessaro::test
