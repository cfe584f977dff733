#include "controls/KeyedTree.h"
#include "selection/ScreenDriver.h"
#include "selection/frmAreas.h"
#include "selection/frmIndicators.h"
#include "selection/frmTime.h"
#include "session/Session.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// What the Available list shows when it is filtered, searched or filled by a level, and what the commands make of it.
namespace tessaro::test {
namespace {

/// Told for a while in the status bar.
bool NothingFoundIsTold(const FakeFrame& frame) {
    return std::any_of(frame.calls.begin(), frame.calls.end(),
                       [](const QString& call) { return call.startsWith(QStringLiteral("status for a while")); });
}

class IndicatorFindTest : public ScreenTest<frmIndicators> {
  protected:
    void SetUp() override {
        IndicatorOpenWith = QStringLiteral("0");
        Open();
    }
    std::string Available() { return Shown(List("lstAvailable")); }
    void Filter(const char* text) {
        Find<QLineEdit>("txtFilter").clear();
        QTest::keyClicks(&Find<QLineEdit>("txtFilter"), QString::fromUtf8(text));
    }
    bool TellsOther() { return Find<QWidget>("picListState").isVisible(); }
};

TEST_F(IndicatorFindTest, ASearchShowsWhatItFoundWhateverTheFilterSaid) {
    const std::string branch = Available();
    Filter("popul");
    screen->SeacrhIndStrings(QStringLiteral("school"));
    EXPECT_EQ(Available(), "I3");
    EXPECT_TRUE(Find<QLineEdit>("txtFilter").text().isEmpty());
    EXPECT_TRUE(TellsOther());
    Click("cmdEndListState");
    EXPECT_EQ(Available(), branch) << "the branch comes back";
    EXPECT_FALSE(TellsOther());
    screen->SeacrhIndStrings(QStringLiteral("nowhere"));
    EXPECT_EQ(Available(), "");
    EXPECT_TRUE(TellsOther()) << "also a search that found nothing";
    QTest::keyClick(&List("lstAvailable"), Qt::Key_Escape);
    EXPECT_EQ(Available(), branch);
    EXPECT_FALSE(TellsOther());
}

TEST_F(IndicatorFindTest, TheFilterTellsThatItIsActiveAndEndsFirst) {
    const std::string branch = Available();
    screen->SeacrhIndStrings(QStringLiteral("o"));
    const std::string found = Available();
    Filter("girls");
    EXPECT_EQ(Available(), "I2");
    EXPECT_TRUE(TellsOther());
    QTest::keyClick(&Find<QLineEdit>("txtFilter"), Qt::Key_Escape);
    EXPECT_EQ(Available(), found);
    QTest::keyClick(&Find<QLineEdit>("txtFilter"), Qt::Key_Escape);
    EXPECT_EQ(Available(), branch);
    EXPECT_FALSE(TellsOther());
}

TEST_F(IndicatorFindTest, AllAvailableMeansWhatTheFilterShows) {
    Filter("girls");
    Click("cmdAvlFilter");
    EXPECT_EQ(ChosenIus(), QStringLiteral("2/10"));
    Filter("nowhere");
    EXPECT_FALSE(Find<QPushButton>("cmdAvlFilter").isEnabled());
}

class AreaFindTest : public ScreenTest<frmAreas> {
  protected:
    void SetUp() override { Open(); }
    std::string Available() { return Shown(List("lstAvailable1")); }
    void ChooseNode(const char* key) {
        KeyedTree& tree = Find<KeyedTree>("TV_Areas");
        tree.setCurrentIndex(tree.Nodes().IndexOfKey(QString::fromUtf8(key)));
    }
    void PickLevel(const char* command) {
        Find<QPushButton>("cmdLevels").menu()->findChild<QAction*>(QString::fromLatin1(command))->trigger();
    }
};

TEST_F(AreaFindTest, ALevelAboveTheNodeKeepsTheList) {
    ChooseNode("AASI");
    ChooseNode("AASIIND");
    ASSERT_EQ(Available(), "A4");
    frame.calls.clear();
    PickLevel("mnu_popArea_Regions_All");
    EXPECT_EQ(Available(), "A4");
    EXPECT_EQ(ChosenAreas(), QString());
    EXPECT_FALSE(frame.calls.filter(QStringLiteral("status")).isEmpty()) << "and says why nothing came";
    EXPECT_FALSE(Find<QWidget>("picListState").isVisible());
    ChooseNode("AASI");
    PickLevel("mnu_popArea_Subnational1_All");
    EXPECT_EQ(Available(), "A4");
    EXPECT_TRUE(Find<QWidget>("picListState").isVisible());
    Click("cmdEndListState");
    EXPECT_EQ(Available(), "A3 A2");
}

TEST_F(AreaFindTest, AllAvailableMeansWhatTheListShows) {
    ChooseNode("AASI");
    screen->SeacrhAreaStrings(QStringLiteral("province"));
    ASSERT_EQ(Available(), "A8");
    Click("cmdAvlFilter");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("8")) << "what was found, not the children of the node";
    Click("cmdRemoveAll");
    ChooseNode("AASIIND");
    ChooseNode("AASI");
    QTest::keyClicks(&Find<QLineEdit>("txtFilter"), QStringLiteral("india"));
    Click("cmdAvlFilter");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2")) << "not what the filter hides";
}

TEST_F(AreaFindTest, OnlyAreasWithChildrenHaveAnExpander) {
    KeyedTreeModel& nodes = Find<KeyedTree>("TV_Areas").Nodes();
    const auto expands = [&](const char* key) { return nodes.hasChildren(nodes.IndexOfKey(QString::fromUtf8(key))); };
    EXPECT_TRUE(expands("AASI"));
    EXPECT_TRUE(expands("AO'B"));
    EXPECT_FALSE(expands("AEUR"));
    ChooseNode("AASI");
    EXPECT_TRUE(expands("AASIIND"));
    EXPECT_FALSE(expands("AASICIV"));
}

TEST_F(AreaFindTest, AutomaticSelectionsThatFindNothingSaySo) {
    Run(QStringLiteral("DELETE * FROM Data"));
    for (const char* button : {"cmdAllFilter", "cmdAvlFilter"}) {
        frame.calls.clear();
        Click(button);
        EXPECT_TRUE(NothingFoundIsTold(frame)) << button;
    }
}

class TimeFindTest : public ScreenTest<frmTime> {};

TEST_F(TimeFindTest, AnAutomaticSelectionThatFindsNothingSaysSo) {
    Open();
    Click("cmdAllFilter");
    EXPECT_FALSE(NothingFoundIsTold(frame));
    Run(QStringLiteral("DELETE * FROM Data"));
    Click("cmdAllFilter");
    EXPECT_TRUE(NothingFoundIsTold(frame));
}

} // namespace
} // namespace tessaro::test
