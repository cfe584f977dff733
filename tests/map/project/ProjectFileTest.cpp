#include "map/project/ProjectFile.h"

#include "ProjectReader.h"
#include "map/MapPageTest.h"
#include "map/project/ProjectObjects.h"
#include "platform/Clock.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QFile>

namespace tessaro::test {

namespace {

const QString kData = QStringLiteral("Data");
const QString kCustom = QStringLiteral("Customize - /maps");
constexpr auto kWestern = "windows-1252";

class ProjectFileTest : public MapPageTest {
  protected:
    void TearDown() override {
        SetClock({});
        MapPageTest::TearDown();
    }
    [[nodiscard]] QByteArray Written() const {
        const QString path = Path("map.apr");
        EXPECT_TRUE(WriteProjectFile(path, Page()));
        return ReadWholeFile(path).value_or(QByteArray());
    }
};

/// "FTheme ShpSrc SrcName": the classes of objects from a number on.
std::string Classes(const ReadProject& project, int from, int count) {
    std::string text;
    for (int id = from; id < from + count; ++id)
        text += (text.empty() ? "" : " ") + project.At(id).className;
    return text;
}

} // namespace

TEST_F(ProjectFileTest, NamesBecomePaths) {
    const std::pair<const char*, const char*> cases[] = {{"/maps/My map.apr", "/maps/My_map.apr"},
                                                         {"C:\\my maps\\a b  c", "C:/my maps/a_b__c.apr"},
                                                         {"/maps/v1.2", "/maps/v1.2.apr"},
                                                         {"/maps/OLD.APR", "/maps/OLD.apr"},
                                                         {"/maps/", ""},
                                                         {"/maps/.apr", ""},
                                                         {"", ""}};
    for (const auto& [chosen, path] : cases)
        EXPECT_EQ(ProjectPathOf(QLatin1String(chosen)).toStdString(), path) << chosen;
}

TEST_F(ProjectFileTest, EveryMapHoldsTogether) {
    struct MapCase {
        const char* layers; ///< from the lowest: d data polygons, p data points, c custom polygons, l lines, o points
        int classes;
    };
    const std::map<char, std::pair<LayerKind, QString>> kinds = {{'d', {LayerKind::Polygon, kData}},
                                                                 {'p', {LayerKind::Point, kData}},
                                                                 {'c', {LayerKind::Polygon, kCustom}},
                                                                 {'l', {LayerKind::Line, kCustom}},
                                                                 {'o', {LayerKind::Point, kCustom}}};
    for (const MapCase& each : std::initializer_list<MapCase>{
             {"", 5}, {"d", 5}, {"d", 1}, {"d", 200}, {"d", 0}, {"dclo", 5}, {"ddp", 3}, {"olcdl", 4}, {"p", 5}}) {
        layers.Clear();
        draft = {};
        SetClassCount(each.classes);
        for (const char* kind = each.layers; *kind != '\0'; ++kind)
            AddMapLayer(kinds.at(*kind).first, kinds.at(*kind).second, QString(QLatin1Char(*kind)));
        const ReadProject project = Read(Written(), kWestern);
        EXPECT_EQ(project.faults, "") << each.layers << each.classes;
        const std::map<char, int> sizes = {{'d', 24 + 5 * each.classes}, {'p', 25}, {'c', 22}, {'l', 17}, {'o', 25}};
        int last = 29;
        for (const char* kind = each.layers; *kind != '\0'; ++kind)
            last += sizes.at(*kind);
        ASSERT_EQ(static_cast<int>(project.objects.size()), last + 2) << each.layers << each.classes;
        EXPECT_EQ(project.At(2).One("Scripts").toInt(), last + 1);
        EXPECT_EQ(project.At(2).One("WorkDir").toInt(), last + 2);
        EXPECT_EQ(project.At(last + 2).One("Path"), QLatin1String("$HOME"));
        EXPECT_EQ(project.At(23).All("Theme").size(), strlen(each.layers));
    }
}

TEST_F(ProjectFileTest, TheReaderFindsWhatIsWrong) {
    AddMapLayer(LayerKind::Polygon, kData, QStringLiteral("World"));
    const QByteArray good = Written();
    const std::pair<const char*, const char*> changes[] = {{"Roots:  2", "Roots:  3"},
                                                           {"Scripts:    ", "Scripts:    9"},
                                                           {"(CSMgr.4", "(CSMgr.40"},
                                                           {"Name:   \"View1\"", "Name:   \"V\"1\""},
                                                           {"LegType:    0x02\r\n", "LegType\r\n"},
                                                           {"View:   23", "View:   24"},
                                                           {"BTab:       9", "BTab:       8"}};
    for (const auto& [from, to] : changes) {
        ASSERT_TRUE(good.contains(from)) << from;
        EXPECT_NE(Read(QByteArray(good).replace(from, to), kWestern).faults, "") << to;
    }
}

TEST_F(ProjectFileTest, BlocksHaveTheOrderOfTheFormat) {
    SetClassCount(2);
    for (const auto& [kind, tag] : {std::pair(LayerKind::Polygon, kData), std::pair(LayerKind::Line, kCustom),
                                    std::pair(LayerKind::Polygon, kCustom), std::pair(LayerKind::Point, kCustom)})
        AddMapLayer(kind, tag, QStringLiteral("x"));
    const ReadProject project = Read(Written(), kWestern);
    EXPECT_EQ(Classes(project, 1, 9), "ODB Project DocWin CSMgr Table DocWin CSMgr VTab dBase");
    EXPECT_EQ(Classes(project, 20, 10), "Field FN Bitmap View DocWin CSMgr GList MapDpy PageDpy PointD");
    EXPECT_EQ(
        Classes(project, 30, 25),
        "FTheme ShpSrc SrcName FN FTab dBASE Field Field Field FN Field Bitmap Legend SymList BMkSym TClr TClr NFont "
        "AVStr AVStr AVStr LClass Thresh GSet TxPosPt");
    EXPECT_EQ(
        Classes(project, 55, 22),
        "FTheme ShpSrc SrcName FN FTab dBASE Field Field Field FN Field Bitmap Legend SymList BShSym TClr TClr TClr "
        "LClass Thresh GSet TxPosPly");
    EXPECT_EQ(Classes(project, 77, 17),
              "FTheme ShpSrc SrcName FN FTab dBASE FN Field Bitmap Legend SymList BLnSym TClr "
              "LClass Thresh GSet TxPosPly");
    EXPECT_EQ(
        Classes(project, 94, 36),
        "FTheme ShpSrc SrcName FN FTab Join dBASE Field Field FN Field Bitmap Legend AVStr SymList BShSym TClr TClr "
        "TClr BShSym TClr TClr TClr LClass LClass LClass BShSym TClr TClr TClr Thresh GSet TxPosPly NameDict "
        "NameDict FN");
}

TEST_F(ProjectFileTest, HeadIsWrittenToTheLetter) {
    SetClock([] { return QDateTime(QDate(2010, 3, 5), QTime(14, 5, 9)); });
    PutValues(std::vector<double>{1, 2, 3});
    const QByteArray bytes = Written();
    const QByteArray head = "/3.0\r\n(ODB.1\r\n      FirstRootClassName: \"Project\"\r\n      Roots:  2\r\n"
                            "      Version:    30\r\n)\r\n \r\n(Project.2\r\n      Name:   \"map.apr\"\r\n"
                            "      CreationDate:   \"3/5/2010 2:05:09 PM\"\r\n      GUIName:    \"Project\"\r\n"
                            "      Win:    3\r\n      CSMgr:  4\r\n      VisGUIWidth:    70\r\n      Doc:    5\r\n"
                            "      Doc:    23\r\n      Scripts:    30\r\n      WorkDir:    31\r\n      WinX:   5\r\n"
                            "      WinY:   5\r\n      WinW:   640\r\n      WinH:   480\r\n)\r\n \r\n(DocWin.3\r\n"
                            "      Owner:  2\r\n)\r\n \r\n(CSMgr.4\r\n)\r\n \r\n(Table.5\r\n";
    EXPECT_EQ(bytes.left(head.size()).toStdString(), head.toStdString());
    EXPECT_TRUE(bytes.contains("(Field.10\r\n      Name:       \"Year\"\r\n      BTab:       9\r\n"
                               "      Alias:      \"Year\"\r\n      Visible:    1\r\n      Type:       4\r\n"
                               "      Order:      -1\r\n      Pixels:     29\r\n)\r\n"));
    EXPECT_TRUE(bytes.contains("(Bitmap.22\r\n      NumBits:    3\r\n)\r\n"));
    EXPECT_TRUE(bytes.contains("      Left:   -10.00000000000000\r\n      Bottom: -5.00000000000000\r\n"
                               "      Top:    15.00000000000000\r\n      Right:  20.00000000000000\r\n"
                               "      FrameTop:   3.50000000000000\r\n"));
    EXPECT_TRUE(bytes.endsWith("(NameDict.30\r\n)\r\n \r\n(FN.31\r\n      Path:   \"$HOME\"\r\n)\r\n \r\n"));
}

TEST_F(ProjectFileTest, ThemeIsJoinedToTheTableAndHasAColourForEachClass) {
    SetClassCount(3);
    AddMapLayer(LayerKind::Polygon, kData, QStringLiteral("World"));
    const ReadProject project = Read(Written(), kWestern);
    const ReadObject& table = *project.Of("FTab").front();
    EXPECT_EQ(table.All("BTab"), (std::vector<QString>{QStringLiteral("36"), QStringLiteral("9")}));
    EXPECT_EQ(table.All("Fields").size(), 8U);
    const ReadObject& join = project.Target(table, "Joins");
    EXPECT_EQ(project.Target(join, "FromField").One("Name"), QLatin1String("ID_"));
    EXPECT_EQ(project.Target(join, "ToField").One("Name"), QLatin1String("Areaid"));
    const ReadObject& legend = *project.Of("Legend").front();
    EXPECT_EQ(project.Target(legend, "FieldNames").One("S"), QLatin1String("BreakValue"));
    const auto symbols = project.Target(legend, "Symbols").All("Child");
    const auto classes = legend.All("Class");
    ASSERT_EQ(classes.size(), 3U);
    ASSERT_EQ(symbols.size(), 4U);
    EXPECT_EQ(symbols.back(), legend.One("NullSym"));
    const ReadObject& second = project.At(classes[1].toInt());
    EXPECT_EQ(second.One("Label"), QLatin1String("Class 2"));
    EXPECT_EQ(second.One("MinNum") + second.One("MaxNum"), QLatin1String("22"));
    const ReadObject& color = project.Target(project.At(symbols[1].toInt()), "Color");
    EXPECT_EQ(color.One("Red"), QLatin1String("0xA0A0"));
    EXPECT_EQ(color.One("Green"), QLatin1String("0xFEFE"));
    EXPECT_EQ(color.One("Blue"), QLatin1String("0x55")) << "one digit twice";
    EXPECT_EQ(project.Of("FN")[1]->One("Path"), QLatin1String("/maps/World.shp"));
}

TEST_F(ProjectFileTest, OtherLayersKeepTheirLook) {
    StackedLayer& line = AddMapLayer(LayerKind::Line, kCustom, QStringLiteral("Rivers"));
    line.symbols.symbols[0].color = QColor(0, 0, 255);
    line.symbols.symbols[0].lineWidth = 2.5;
    StackedLayer& point = AddMapLayer(LayerKind::Point, kCustom, QStringLiteral("Customize - Towns"),
                                      {QStringLiteral("AREAID"), QStringLiteral("Name"), QStringLiteral("Size")});
    point.symbols.symbols[0].marker = Marker::Triangle;
    point.symbols.symbols[0].markerSize = 12;
    const ReadProject project = Read(Written(), kWestern);
    EXPECT_EQ(project.faults, "");
    const ReadObject& stroke = *project.Of("BLnSym").front();
    EXPECT_EQ(stroke.One("Width"), QLatin1String("2.5"));
    EXPECT_EQ(project.Target(stroke, "Color").One("Blue"), QLatin1String("0xFFFF"));
    const ReadObject& marker = *project.Of("BMkSym").front();
    EXPECT_EQ(marker.One("Size"), QLatin1String("12"));
    EXPECT_EQ(project.Target(project.Target(marker, "Font"), "Style").One("S"), QLatin1String("Normal"));
    EXPECT_EQ(project.At(30).One("Name"), QLatin1String("Towns.shp")) << "the topmost comes first";
    EXPECT_EQ(project.Target(project.At(30), "LabelField").One("Name"), QLatin1String("Name"));
    EXPECT_EQ(project.At(38).One("Name"), QLatin1String("Size"));
}

TEST_F(ProjectFileTest, AnyTextComesBack) {
    const std::string filling(490, 'x');
    const struct {
        int charset;
        const char* page;
        QString text;
    } cases[] = {{0, kWestern, QStringLiteral("\"5\" \\ 10 \\n é")},
                 {0, kWestern, QString::fromStdString(filling)},
                 {0, kWestern, QStringLiteral("\\").repeated(700)},
                 {204, "windows-1251", QStringLiteral("Данные \"нет\"")},
                 {178, "windows-1256", QStringLiteral("بيانات مفقودة")}};
    AddMapLayer(LayerKind::Polygon, kData, QStringLiteral("World"));
    SetClassCount(1);
    for (const auto& [charset, page, text] : cases) {
        FontCharset = charset;
        for (int more = 0; more < 10; ++more) { // one of them fills a line
            draft.classes.looks[0].legend = text + QString(more, QLatin1Char(')'));
            const ReadProject project = Read(Written(), page);
            EXPECT_EQ(project.faults, "");
            EXPECT_EQ(project.Of("LClass").front()->One("Label"), draft.classes.looks[0].legend);
        }
    }
}

TEST_F(ProjectFileTest, ExtentComesBackAcrossTheSeam) {
    MapLayer islands = LayerOf(LayerKind::Polygon, {{Square(-179, 50, 30)}, {Square(170, 50, 9)}});
    layers.Add(std::move(islands), kData);
    ASSERT_LT(layers.FullExtent().left, -180);
    const struct {
        MapBox shown;
        const char* left;
        const char* right;
    } cases[] = {{{-200, 40, -140, 90}, "-180.00000000000000", "-140.00000000000000"},
                 {{-190, 40, -181, 60}, "170.00000000000000", "179.00000000000000"}};
    for (const auto& [shown, left, right] : cases) {
        ASSERT_TRUE(WriteProjectFile(Path("seam.apr"), {draft, layers, shown, {640, 480}}));
        const ReadProject project = Read(*ReadWholeFile(Path("seam.apr")), kWestern);
        EXPECT_EQ(project.At(27).One("Left"), QLatin1String(left));
        EXPECT_EQ(project.At(27).One("Right"), QLatin1String(right));
    }
}

TEST_F(ProjectFileTest, AFailureLeavesTheOldFiles) {
    SetClassCount(200);
    AddMapLayer(LayerKind::Polygon, kData, QStringLiteral("World"));
    for (const char* const name : {"map.apr", "map.dbf"})
        ASSERT_TRUE(ReplaceFile(Path(name), "old"));
    for (const rlim_t bytes : {100, 20000}) { // no room for the table, none for the project
        const FullDisk full(bytes);
        EXPECT_FALSE(WriteProjectFile(Path("map.apr"), Page()));
    }
    EXPECT_EQ(*ReadWholeFile(Path("map.apr")), "old");
    EXPECT_EQ(*ReadWholeFile(Path("map.dbf")), "old");
    EXPECT_FALSE(WriteProjectFile(Path("none/map.apr"), Page()));
    EXPECT_TRUE(QDir(Folder()).entryList({QStringLiteral("map.*")}).size() == 2) << "nothing else is left";
    // A layer's own table isn't replaced.
    ASSERT_TRUE(ReplaceFile(Path("World.dbf"), "layer"));
    layers.At(0).file = Path("World.shp");
    EXPECT_FALSE(WriteProjectFile(Path("WORLD.apr"), Page()));
    EXPECT_EQ(*ReadWholeFile(Path("World.dbf")), "layer");
    EXPECT_TRUE(WriteProjectFile(Path("map.apr"), Page()));
}

} // namespace tessaro::test
