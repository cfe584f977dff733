#include "Maps.h"

#include "DerivedLayers.h"
#include "Outlines.h"

namespace tessaro::content {

namespace fs = std::filesystem;

void BuildMaps(const fs::path& data, const fs::path& folder) {
    fs::create_directories(folder);
    for (const auto& entry : fs::directory_iterator(data / "outlines")) {
        if (entry.path().extension() != ".geojson") continue;
        const std::string stem = entry.path().stem().string();
        const LayerContents areas = ReadOutlines(entry.path());
        WriteLayer(areas, folder, stem);
        WriteLayer(PointsOf(areas), folder, stem + "_Points");
        if (stem == "USA_States") WriteLayer(BordersOf(areas), folder, "USA_State_Borders");
    }
    WriteLayer(ReadPlaces(data / "world_cities.csv"), folder, "World_Cities");
    WriteLayer(Graticule(), folder, "Graticule");
}

} // namespace tessaro::content
