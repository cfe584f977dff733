#include "controls/KeyedTree.h"
#include "layers/MapCanvas.h"
#include "selection/AreaMaps.h"
#include "selection/ScreenDriver.h"
#include "selection/frmAreas.h"
#include "session/Session.h"
#include "session/Settings.h"
#include "support/ShapelibFiles.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTabBar>

namespace tessaro::test {
namespace {

Ring SquareRing(double left, double bottom, double size) {
    return {{left, bottom}, {left, bottom + size}, {left + size, bottom + size}, {left + size, bottom}, {left, bottom}};
}

/// The sample areas with two maps: the countries of Asia and a province on one, and India's state on another.
class AreaMapTest : public ScreenTest<frmAreas> {
  protected:
    AreaMapTest() {
        AppPath = Folder();
        TempFolder = Folder() + QStringLiteral("/Temp");
        MapFilesFolder = TempFolder + QStringLiteral("/MData_/MFiles_");
        QDir().mkpath(Folder() + QStringLiteral("/Maps"));
        SetSetting(QStringLiteral("AREA_NAME"), QStringLiteral("True"));
        SetSetting(QStringLiteral("AREA_MAP"), QStringLiteral("True"));
        WriteShapes(Base("Land"), SHPT_POLYGON,
                    {{SquareRing(60, 0, 20)}, {SquareRing(80, 0, 20)}, {SquareRing(0, 40, 10)}, {SquareRing(0, 0, 5)}});
        WriteTable(Base("Land"), "UTF-8", {"ID_", "Name1_"},
                   {{"ASIIND", "I"}, {" asiciv", "C"}, {"O'BABC", "Q"}, {"NOAREA", "N"}});
        WriteShapes(Base("States"), SHPT_POLYGON, {{SquareRing(70, 10, 5)}});
        WriteTable(Base("States"), "UTF-8", {"AREAID"}, {{"ASIINDDEL"}});
        Run(QStringLiteral("UPDATE Area SET MapFile = 'LAND.shp' WHERE AreaNId IN (1,2,3,7,8)"));
        Run(QStringLiteral("UPDATE Area SET MapFile = ' states ' WHERE AreaNId = 4"));
    }
    ~AreaMapTest() override { screen.reset(); }
    AreaMapTest(const AreaMapTest&) = delete;
    AreaMapTest& operator=(const AreaMapTest&) = delete;

    [[nodiscard]] QString Base(const char* name) const {
        return Folder() + QStringLiteral("/Maps/") + QLatin1String(name);
    }
    MapCanvas& Map() { return Find<MapCanvas>("AreaMap"); }
    void OpenMap() {
        Open();
        Find<QTabBar>("lblAreaOptions").setCurrentIndex(1);
        QCoreApplication::processEvents();
    }
    void Choose(const char* key) {
        KeyedTree& tree = Find<KeyedTree>("TV_Areas");
        const QModelIndex index = tree.Nodes().IndexOfKey(QString::fromUtf8(key));
        ASSERT_TRUE(index.isValid()) << key;
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
            tree.expand(above);
        tree.scrollTo(index);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(index).center());
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPoint At(double x, double y) { return Map().FromMapPoint({x, y}).toPoint(); }
    void ClickMap(double x, double y) { QTest::mouseClick(&Map(), Qt::LeftButton, {}, At(x, y)); }
    [[nodiscard]] QColor ColourAt(double x, double y) { return Map().grab().toImage().pixelColor(At(x, y)); }
    [[nodiscard]] std::string LayerName() {
        return Map().Layers().Count() == 1 ? Map().Layers().At(0).data.name.toLower().toStdString() : "";
    }
};

TEST_F(AreaMapTest, TheMapTakesThePlaceOfTheList) {
    Open();
    EXPECT_FALSE(Map().isVisible());
    Find<QTabBar>("lblAreaOptions").setCurrentIndex(1);
    EXPECT_TRUE(Map().isVisible());
    EXPECT_FALSE(List("lstAvailable1").isVisible());
    EXPECT_FALSE(Find<QAbstractButton>("cmdAvlFilter").isEnabled());
    EXPECT_EQ(LayerName(), "land") << "the regions name one map";
    screen->ShowThisAreaOption(0);
    EXPECT_FALSE(Map().isVisible());
    EXPECT_TRUE(List("lstAvailable1").isVisible());
    EXPECT_TRUE(Find<QAbstractButton>("cmdAvlFilter").isEnabled());
}

TEST_F(AreaMapTest, ABranchShowsTheMapOfItsChildrenOrItsOwn) {
    OpenMap();
    EXPECT_TRUE(Map().Extent().Contains({5, 45}));
    Choose("AASI");
    EXPECT_EQ(LayerName(), "land");
    EXPECT_TRUE(Map().Extent().Contains({60, 0}));
    EXPECT_FALSE(Map().Extent().Contains({5, 45})) << "the view is on the areas of the branch";
    Choose("AASIIND");
    EXPECT_EQ(LayerName(), "states");
    Choose("AASIINDDEL");
    EXPECT_EQ(LayerName(), "states");
    Choose("AASICIV");
    EXPECT_EQ(LayerName(), "land");
    EXPECT_TRUE(Map().Extent().Contains({90, 10}));
    EXPECT_FALSE(Map().Extent().Contains({65, 10}));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(AreaMapTest, AClickChoosesAndTheChosenArePainted) {
    OpenMap();
    SelectionChanged = false;
    const QColor before = ColourAt(70, 10);
    ClickMap(70, 10);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2"));
    EXPECT_EQ(Shown(List("lstSelected1")), "A2");
    EXPECT_TRUE(SelectionChanged);
    EXPECT_NE(ColourAt(70, 10), before);
    EXPECT_EQ(ColourAt(70, 10), Map().palette().color(QPalette::Highlight));
    ClickMap(90, 10); // its id has another case in the table
    ClickMap(90, 10);
    ClickMap(5, 45);
    ClickMap(2, 2);   // no area of the database
    ClickMap(30, 20); // the sea
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3,8"));
    Click("cmdRemoveAll");
    EXPECT_EQ(ColourAt(70, 10), before);
    Click("cmdAddAll");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,5,7")) << "all areas of the branch";
    QTest::mouseClick(&Map(), Qt::RightButton, {}, At(70, 10));
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,5,7"));
}

TEST_F(AreaMapTest, TellsTheNameUnderThePointer) {
    OpenMap();
    auto& name = Find<QLabel>("lblAreaUnderPointer");
    QTest::mouseMove(&Map(), At(90, 10));
    EXPECT_EQ(name.text().toStdString(), "Côte d'Ivoire");
    EXPECT_EQ(frame.calls.last().toStdString(), "status Côte d'Ivoire");
    QTest::mouseMove(&Map(), At(2, 2));
    EXPECT_EQ(name.text().toStdString(), "");
    Choose("AASI");
    Choose("AASIIND");
    Click("cmdMapLabels");
    QTest::mouseMove(&Map(), At(72, 12));
    EXPECT_EQ(name.text().toStdString(), "دلهي");
    EXPECT_EQ(Map().Layers().At(0).labels.texts.at(0).toStdString(), "دلهي");
    EXPECT_FALSE(Map().grab().isNull());
}

TEST_F(AreaMapTest, WorksWithTheKeyboard) {
    OpenMap();
    QStringList order;
    for (const QWidget* each = &Find<KeyedTree>("TV_Areas"); !order.contains(QStringLiteral("lstSelected1"));) {
        each = each->nextInFocusChain();
        if ((each->focusPolicy() & Qt::TabFocus) != 0 && each->isVisible()) order << each->objectName();
    }
    EXPECT_EQ(order.mid(0, 9).join(QLatin1Char(' ')).toStdString(),
              "cmdMapSelect cmdMapZoomIn cmdMapZoomOut cmdMapPan cmdMapIdentify cmdMapFullExtent cmdMapRefresh "
              "cmdMapLabels AreaMap");
    Map().setFocus();
    for (const char* const expected : {"Côte d'Ivoire", "India", "Quoted province", "Côte d'Ivoire"}) {
        QTest::keyClick(&Map(), Qt::Key_PageDown);
        EXPECT_EQ(Find<QLabel>("lblAreaUnderPointer").text().toStdString(), expected);
    }
    QTest::keyClick(&Map(), Qt::Key_PageUp);
    QTest::keyClick(&Map(), Qt::Key_Return);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("8"));
    const double width = Map().Extent().Width();
    QTest::keyClick(&Map(), Qt::Key_Plus);
    EXPECT_LT(Map().Extent().Width(), width);
    QTest::keyClick(&Map(), Qt::Key_PageDown);
    EXPECT_TRUE(Map().Extent().Contains({90, 10})) << "the map follows";
    QTest::keyClick(&Map(), Qt::Key_Home);
    EXPECT_NEAR(Map().Extent().Width(), width, 1e-6);
}

TEST_F(AreaMapTest, IdentifyShowsWhatAnAreaIs) {
    OpenMap();
    QString shown;
    const auto identify = [&](const std::function<void()>& choose) {
        shown.clear();
        Click("cmdMapIdentify");
        AnswerDialog([&](QDialog& dialog) {
            shown = dialog.findChild<QLabel*>(QStringLiteral("lblAreaNames"))->text().simplified();
            dialog.reject();
        });
        choose();
        EXPECT_EQ(Map().Tool(), MapTool::Select);
        return shown.toStdString();
    };
    EXPECT_EQ(identify([&] { ClickMap(70, 10); }), "Asia (ASI) India (ASIIND)");
    Map().setFocus();
    QString walked;
    const std::string next = identify([&] {
        QTest::keyClick(&Map(), Qt::Key_PageDown);
        walked = Find<QLabel>("lblAreaUnderPointer").text();
        QTest::keyClick(&Map(), Qt::Key_Return);
    });
    EXPECT_FALSE(walked.isEmpty());
    EXPECT_NE(next.find(walked.toStdString() + " ("), std::string::npos) << next;
    EXPECT_EQ(ChosenAreas(), QString()) << "nothing is chosen";
    Click("cmdMapIdentify");
    ClickMap(2, 2); // no area of the database
    QTest::keyClick(&Map(), Qt::Key_Escape);
    EXPECT_EQ(Map().Tool(), MapTool::Select);
}

TEST_F(AreaMapTest, ToolsEndAfterTheirUse) {
    OpenMap();
    Click("cmdMapZoomIn");
    EXPECT_EQ(Map().Tool(), MapTool::ZoomIn);
    QTest::mousePress(&Map(), Qt::LeftButton, {}, At(60, 20));
    QTest::mouseMove(&Map(), At(70, 15));
    QTest::mouseRelease(&Map(), Qt::LeftButton, {}, At(80, 5));
    EXPECT_EQ(Map().Tool(), MapTool::Select);
    EXPECT_TRUE(Find<QAbstractButton>("cmdMapSelect").isChecked());
    EXPECT_FALSE(Map().Extent().Contains({90, 10}));
    EXPECT_EQ(ChosenAreas(), QString());
    Click("cmdMapLabels");
    EXPECT_EQ(Map().Layers().At(0).labels.texts.size(), 4U);
    Click("cmdMapPan");
    Click("cmdMapFullExtent");
    EXPECT_EQ(Map().Tool(), MapTool::Select);
    EXPECT_TRUE(Map().Extent().Contains({5, 45}));
}

TEST_F(AreaMapTest, TheLevelPopupOpensOnTheMapToo) {
    OpenMap();
    QContextMenuEvent event(QContextMenuEvent::Mouse, {4, 4}, Map().mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(&Map(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    menu->findChild<QAction*>(QStringLiteral("mnu_popArea_Countries_All"))->trigger();
    menu->close();
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3,8"));
    EXPECT_EQ(ColourAt(70, 10), Map().palette().color(QPalette::Highlight));
}

TEST_F(AreaMapTest, WithoutAMapTheOldOneStaysAndAMessageTells) {
    OpenMap();
    Choose("AEUR");
    EXPECT_EQ(messages, QStringList{QStringLiteral("222")});
    EXPECT_EQ(LayerName(), "land");
    Choose("AASI");
    Run(QStringLiteral("UPDATE Area SET MapFile = 'Gone.shp' WHERE AreaNId = 5"));
    Choose("AEUR");
    EXPECT_EQ(messages.size(), 2);
    for (const char* ending : {".shp", ".shx", ".dbf"})
        QFile::remove(Base("States") + QLatin1String(ending));
    Choose("AASI");
    Choose("AASIIND"); // gone since the program started: India's own
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(LayerName(), "land");
    QFile damaged(Base("States") + QStringLiteral(".shp"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("no shapefile");
    damaged.close();
    Choose("AASIINDDEL");
    EXPECT_EQ(messages.size(), 3);
    EXPECT_EQ(LayerName(), "land") << "the map stays as it was";
    ClickMap(70, 10);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2"));
}

TEST_F(AreaMapTest, NoMapsNoOption) {
    Run(QStringLiteral("UPDATE Area SET MapFile = '../Maps/none.shp'"));
    ReadProductTexts();
    AppPath = Folder();
    Open();
    auto& strip = Find<QTabBar>("lblAreaOptions");
    EXPECT_FALSE(strip.isTabEnabled(1));
    EXPECT_FALSE(strip.tabToolTip(1).isEmpty());
    Run(QStringLiteral("UPDATE Area SET MapFile = 'land'"));
    SetSetting(QStringLiteral("AREA_NAME"), QStringLiteral("False"));
    Open();
    EXPECT_FALSE(Find<QTabBar>("lblAreaOptions").isVisible());
    EXPECT_TRUE(Map().isVisible()) << "the map alone";
    screen->SeacrhAreaStrings(QStringLiteral("India"));
    EXPECT_TRUE(List("lstAvailable1").isVisible());
    SetSetting(QStringLiteral("AREA_MAP"), QStringLiteral("False"));
    Open();
    EXPECT_FALSE(Find<QTabBar>("lblAreaOptions").isVisible());
}

TEST_F(AreaMapTest, ScrambledMapsAreReadFromRestoredCopies) {
    SetSetting(QStringLiteral("ENCRYPT_DECRYPT_FILES"), QStringLiteral("True"));
    QFile file(Base("Land") + QStringLiteral(".shp"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(QByteArray::fromHex("0000d9f501000000"));
    file.close();
    OpenMap();
    EXPECT_EQ(LayerName(), "land");
    EXPECT_TRUE(QFile::exists(MapFilesFolder + QStringLiteral("/Land.shp")) ||
                QFile::exists(MapFilesFolder + QStringLiteral("/land.shp")));
    ClickMap(70, 10);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2"));
    Choose("AASI");
    Choose("AASIIND"); // a plain one
    EXPECT_EQ(LayerName(), "states");
}

TEST(AreaMapsTest, FeaturesOfABranch) {
    const std::vector<QString> ids = {QStringLiteral("ASIIND"), QStringLiteral("ASI"), QStringLiteral("EUR"), {}};
    const struct {
        const char* node;
        std::vector<int> features;
    } cases[] = {{"ASI", {0}}, {"asiind", {0}}, {"EUR", {2}}, {"XXX", {}}, {"", {0, 1, 2}}};
    for (const auto& c : cases)
        EXPECT_EQ(selection::FeaturesBelow(ids, QString::fromLatin1(c.node)), c.features) << c.node;
}

} // namespace
} // namespace tessaro::test
