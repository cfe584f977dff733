#include "Maps.h"

#include "DerivedLayers.h"
#include "Outlines.h"

#include <QtEndian>

#include <fstream>
#include <stdexcept>

namespace tessaro::content {

namespace fs = std::filesystem;

namespace {

void Scramble(const fs::path& file) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    char words[8];
    stream.read(words, sizeof words);
    qToLittleEndian(-qFromLittleEndian<qint32>(words), words);
    qToLittleEndian(qint32{1}, words + 4);
    stream.seekp(0);
    stream.write(words, sizeof words);
    if (!stream.flush()) throw std::runtime_error("can't write " + file.string());
}

} // namespace

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

void BuildScrambledMap(const fs::path& data, const fs::path& folder) {
    fs::create_directories(folder);
    WriteLayer(ReadOutlines(data / "outlines" / "AUS_States.geojson"), folder, "AUS_States");
    Scramble(folder / "AUS_States.shp");
}

} // namespace tessaro::content
