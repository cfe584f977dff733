#include "map/MapLayerList.h"

#include "TestPlaces.h"
#include "layers/LayerReader.h"
#include "layers/MapFiles.h"
#include "map/MapTest.h"
#include "session/Log.h"
#include "session/Settings.h"
#include "support/ShapelibFiles.h"

#include <QDir>
#include <QFile>

namespace tessaro::test {

namespace {

class MapLayerListTest : public MapTest {
  protected:
    void SetUp() override {
        MapTest::SetUp();
        maps_ = JoinPath({AppPath, QStringLiteral("Maps")});
        ASSERT_TRUE(QDir().mkpath(maps_));
    }
    /// A layer with one square, or of points when `type` says so, with the ids A, B ...
    void MakeLayer(const QString& base, int type = SHPT_POLYGON, int features = 1) const {
        const Rings rings = type == SHPT_POINT ? Rings{{{1, 1}}} : Rings{{{0, 0}, {0, 1}, {1, 1}, {0, 0}}};
        const QString path = maps_ + QLatin1Char('/') + base;
        WriteShapes(path, type, std::vector<Rings>(static_cast<std::size_t>(features), rings));
        std::vector<std::vector<std::string>> ids;
        for (int i = 0; i < features; ++i)
            ids.push_back({std::string(1, static_cast<char>('A' + i))});
        WriteTable(path, nullptr, {"ID_"}, ids);
    }
    static void SelectAreas(const std::vector<std::pair<QString, int>>& filesAndLevels) {
        int id = 0;
        for (const auto& [file, level] : filesAndLevels)
            Execute(
                QStringLiteral("INSERT INTO _SelArea (AreaNId, AreaID, AreaLevel, MapFile) VALUES (%1, 'X%1', %2, %3)")
                    .arg(++id)
                    .arg(level)
                    .arg(file.isNull() ? QStringLiteral("Null") : Quoted(file)));
    }
    /// "World.shp+ gone.shp-": the listed files with a mark of whether they were found.
    static std::string Listed() {
        std::string text;
        for (const MapFile& file : Collect_Maps_As_Per_Data())
            text += (text.empty() ? "" : " ") + file.name.toStdString() + (file.folder.isEmpty() ? "-" : "+");
        return text;
    }

    QString maps_;
    QStringList asked_; ///< keys and file names
    QStringList located_;
    LayerLocator locate_ = [this](const QString& key, const QString& path) {
        asked_ << key + QLatin1Char(' ') + FileNameOf(path);
        return located_.isEmpty() ? QString() : located_.takeFirst();
    };
};

} // namespace

TEST_F(MapLayerListTest, ListsTheFilesOfTheSelectedAreas) {
    MakeLayer(QStringLiteral("World"));
    MakeLayer(QStringLiteral("Страны"));
    MakeLayer(QStringLiteral("States (new)"));
    EXPECT_EQ(Listed(), "");
    SelectAreas({{QStringLiteral("states (NEW)"), 3},
                 {QStringLiteral("World.shp"), 1},
                 {QStringLiteral(" WORLD "), 2},
                 {QStringLiteral("world.SHP"), 2},
                 {QStringLiteral("Страны"), 2},
                 {QStringLiteral("gone.shp"), 4},
                 {QStringLiteral(""), 4},
                 {QString(), 5}});
    EXPECT_EQ(Listed(), "World.shp+ Страны.shp+ States (new).shp+ gone.shp-");
}

TEST_F(MapLayerListTest, LoadsLayersAndTellsTheirKind) {
    MakeLayer(QStringLiteral("Areas"), SHPT_POLYGON, 3);
    MakeLayer(QStringLiteral("Points"), SHPT_POINT, 2);
    WriteShapes(maps_ + QStringLiteral("/Lines"), SHPT_ARC, {{{{0, 0}, {1, 1}}}});
    const struct {
        QStringList names;
        ThemeKind kind;
        int features;
    } cases[] = {
        {{QStringLiteral("Areas.shp")}, ThemeKind::Polygons, 3},
        {{QStringLiteral("Points.shp")}, ThemeKind::Points, 2},
        {{QStringLiteral("Lines.shp")}, ThemeKind::None, 1},
        {{QStringLiteral("Points.shp"), QStringLiteral("Lines.shp"), QStringLiteral("Areas.shp")}, ThemeKind::Both, 6}};
    for (const auto& [names, kind, features] : cases) {
        LayerStack map;
        MapFiles files;
        for (const QString& name : names)
            files.push_back({name, maps_});
        EXPECT_EQ(LoadLayers(map, files, locate_), kind);
        EXPECT_EQ(FeaturesOfTheme(map), features);
        QString custom = maps_ + QStringLiteral("/Areas.shp");
        QString reason;
        EXPECT_TRUE(AddLayer(map, custom, QStringLiteral("Customize - x"), locate_, reason));
        EXPECT_EQ(KindOf(map), kind); // a customised layer shows no values
        EXPECT_EQ(FeaturesOfTheme(map), features);
    }
    EXPECT_TRUE(asked_.isEmpty());
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(MapLayerListTest, AsksForFilesThatAreGone) {
    MakeLayer(QStringLiteral("World"));
    LayerStack map;
    MapFiles files{{QStringLiteral("gone.shp"), {}}, {QString(), maps_}, {QStringLiteral("also gone.shp"), maps_}};
    located_ = {maps_ + QStringLiteral("/still gone.shp"), maps_ + QStringLiteral("/World.shp"), {}, {}};
    EXPECT_EQ(LoadLayers(map, files, locate_), ThemeKind::Polygons);
    EXPECT_EQ(asked_.join(QLatin1Char(',')).toStdString(), "235 gone.shp,235 still gone.shp,234 ,235 also gone.shp");
    EXPECT_EQ(files[0], (MapFile{QStringLiteral("World.shp"), maps_}));
    EXPECT_EQ(files[2].name, QStringLiteral("also gone.shp"));
    EXPECT_EQ(map.Count(), 1);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(MapLayerListTest, TellsWhenThereIsNoMap) {
    LayerStack map;
    MapFiles none;
    EXPECT_EQ(LoadLayers(map, none, locate_), ThemeKind::None);
    EXPECT_EQ(messages, QStringList{QStringLiteral("222")});
    QFile damaged(maps_ + QStringLiteral("/bad.shp"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("no shapes");
    damaged.close();
    MapFiles bad{{QStringLiteral("bad.shp"), maps_}};
    EXPECT_EQ(LoadLayers(map, bad, locate_), ThemeKind::None);
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(map.Count(), 0);
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("bad.shp"));
}

TEST_F(MapLayerListTest, AFileThatFailsOnReloadKeepsItsLayer) {
    for (const char* name : {"One", "Two", "Three"})
        MakeLayer(QLatin1String(name));
    LayerStack map;
    MapFiles files{{QStringLiteral("One.shp"), maps_}, {QStringLiteral("two.SHP"), maps_}};
    EXPECT_EQ(LoadLayers(map, files, locate_), ThemeKind::Polygons);
    map.At(1).symbols.symbols[0].color = Qt::red;
    QString custom = maps_ + QStringLiteral("/One.shp");
    QString reason;
    ASSERT_TRUE(AddLayer(map, custom, QStringLiteral("Customize - x"), locate_, reason));
    const auto names = [&map] {
        QStringList found;
        for (int i = 0; i < map.Count(); ++i)
            found << map.At(i).data.name + (IsOfTheme(map.At(i)) ? QString() : QStringLiteral("*"));
        return found.join(QLatin1Char(' ')).toStdString();
    };
    QFile::remove(maps_ + QStringLiteral("/One.shp"));
    QFile damaged(maps_ + QStringLiteral("/Two.shp"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("no shapes");
    damaged.close();

    files = {{QStringLiteral("Two.shp"), maps_}, {QStringLiteral("Three.shp"), maps_}};
    EXPECT_EQ(LoadLayers(map, files, locate_), ThemeKind::Polygons);
    EXPECT_EQ(names(), "One* Two Three") << "in the order of the list; a layer that isn't listed goes";
    EXPECT_EQ(map.At(1).symbols.symbols[0].color, QColor(Qt::red));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(QStringLiteral("Two.shp"))) << messages[0].toStdString();

    files = {{QStringLiteral("One.shp"), maps_}, {QStringLiteral("Two.shp"), maps_}};
    EXPECT_EQ(LoadLayers(map, files, locate_), ThemeKind::Polygons);
    EXPECT_EQ(names(), "One* Two");
    EXPECT_EQ(messages.size(), 2) << "the user was asked for One and gave it up";

    MapFiles afresh{{QStringLiteral("Three.shp"), maps_}, {QStringLiteral("Two.shp"), maps_}};
    LayerStack other;
    EXPECT_EQ(LoadLayers(other, afresh, locate_), ThemeKind::Polygons);
    ASSERT_EQ(messages.size(), 3) << "one that never was on the map is left out, not silently";
    EXPECT_EQ(other.Count(), 1);
}

TEST_F(MapLayerListTest, ReadsScrambledFiles) {
    const QString folder = QStringLiteral(TESSARO_SCRAMBLED_MAPS);
    const auto bytes = ReadWholeFile(folder + QStringLiteral("/AUS_States.shp"));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->left(8).toHex().toStdString(), "0000d9f501000000");
    SetSetting(QStringLiteral("ENCRYPT_DECRYPT_FILES"), QStringLiteral("True"));
    LayerStack map;
    MapFiles files{{QStringLiteral("AUS_States.shp"), folder}};
    EXPECT_EQ(LoadLayers(map, files, locate_), ThemeKind::Polygons);
    ASSERT_EQ(map.Count(), 1);
    const MapLayer plain = *ReadLayer(QStringLiteral(TESSARO_INSTALLATION "/Maps/AUS_States.shp")).layer;
    EXPECT_EQ(map.At(0).data.points, plain.points);
    EXPECT_EQ(map.At(0).data.columns, plain.columns);
    for (const char* file : {"/AUS_States.shp", "/AUS_States.shx", "/AUS_States.dbf", "/AUS_States.cpg"})
        EXPECT_TRUE(FileExists(MapFilesFolder + QLatin1String(file))) << file;
    EXPECT_EQ(ReadWholeFile(folder + QStringLiteral("/AUS_States.shp")), bytes);
    EXPECT_EQ(files[0].folder, folder);
}

} // namespace tessaro::test
