#include "selection/frmAreas.h"

#include "controls/KeyedTree.h"
#include "selection/ScreenDriver.h"
#include "session/Session.h"

#include <QLocale>
#include <QPushButton>

namespace tessaro::test {
namespace {

class frmAreasTest : public ScreenTest<frmAreas> {
  protected:
    KeyedList& lstAvailable1() { return List("lstAvailable1"); }
    KeyedList& lstSelected1() { return List("lstSelected1"); }
    KeyedTree& TV_Areas() { return Find<KeyedTree>("TV_Areas"); }
    void ChooseNode(const char* key) {
        KeyedTree& tree = TV_Areas();
        const QModelIndex index = tree.Nodes().IndexOfKey(QString::fromUtf8(key));
        ASSERT_TRUE(index.isValid()) << key;
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
            tree.expand(above);
        tree.scrollTo(index);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(index).center());
    }
    /// Picks a command of the level menu behind cmdLevels.
    void PickLevel(const char* command) {
        auto* action = Find<QPushButton>("cmdLevels").menu()->findChild<QAction*>(QString::fromLatin1(command));
        ASSERT_NE(action, nullptr) << command;
        action->trigger();
    }
};

TEST_F(frmAreasTest, OpensAtTheRootAndRestores) {
    ChooseAreas(QStringLiteral("2,3"));
    Open();
    EXPECT_EQ(Shown(lstAvailable1()), "A1 A5 A7");
    EXPECT_EQ(Shown(lstSelected1()), "A3 A2");
    EXPECT_TRUE(SelectionChanged);
    EXPECT_EQ(TV_Areas().CurrentKey(), QStringLiteral("___"));
    EXPECT_EQ(TV_Areas().Nodes().rowCount(TV_Areas().Nodes().IndexOfKey(QStringLiteral("___"))), 3);
}

TEST_F(frmAreasTest, ANodeShowsItsChildrenInListAndTree) {
    Open();
    SelectionChanged = false;
    ChooseNode("AASI");
    EXPECT_EQ(Shown(lstAvailable1()), "A3 A2");
    EXPECT_TRUE(TV_Areas().Nodes().IndexOfKey(QStringLiteral("AASIIND")).isValid());
    ChooseNode("AASIIND");
    EXPECT_EQ(Shown(lstAvailable1()), "A4");
    ChooseNode("AO'B");
    EXPECT_EQ(Shown(lstAvailable1()), "A8");
    ChooseNode("AEUR");
    EXPECT_EQ(Shown(lstAvailable1()), "");
    EXPECT_FALSE(SelectionChanged) << "looking changes nothing";
}

TEST_F(frmAreasTest, OpeningABranchWithoutChoosingItKeepsTheList) {
    Open();
    TV_Areas().expand(TV_Areas().Nodes().IndexOfKey(QStringLiteral("AASI")));
    EXPECT_TRUE(TV_Areas().Nodes().IndexOfKey(QStringLiteral("AASICIV")).isValid());
    EXPECT_EQ(Shown(lstAvailable1()), "A1 A5 A7");
}

TEST_F(frmAreasTest, AddsAndRemoves) {
    Open();
    ChooseNode("AASI");
    DoubleClick(lstAvailable1(), QStringLiteral("A3"));
    Click("cmdAddAll");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3"));
    EXPECT_EQ(Shown(lstSelected1()), "A3 A2");
    ChooseNode("AO'B");
    Highlight(lstAvailable1(), {QStringLiteral("A8")});
    QTest::keyClick(&lstAvailable1(), Qt::Key_Enter);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3,8"));
    Highlight(lstSelected1(), {QStringLiteral("A3"), QStringLiteral("A8")});
    QTest::keyClick(&lstSelected1(), Qt::Key_Delete);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2"));
    Click("cmdRemoveAll");
    EXPECT_EQ(ChosenAreas(), QString());
    EXPECT_TRUE(SelectionChanged);
    ChooseNode("AASI");
    Highlight(lstAvailable1(), {QStringLiteral("A2")});
    EXPECT_TRUE(DropHighlighted(lstAvailable1(), lstSelected1()));
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2")) << "what was removed can come back";
}

TEST_F(frmAreasTest, TheAutomaticSelections) {
    ChoosePeriods(QStringLiteral("1"));
    Open();
    Click("cmdAddAll");
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,2")) << "replaces";
    EXPECT_EQ(Shown(lstSelected1()), "A1 A2");
    Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
    ChooseNode("AO'B");
    for (int run = 0; run < 2; ++run) {
        Click("cmdAvlFilter");
        EXPECT_EQ(ChosenAreas(), QStringLiteral("1,2,8")) << "adds, and nothing the second time";
    }
    EXPECT_EQ(frame.busy, 0);
    ChooseNode("AEUR");
    EXPECT_FALSE(Find<QAbstractButton>("cmdAvlFilter").isEnabled());
    screen->cmdAvlFilter_Click();
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,2,8"));
}

TEST_F(frmAreasTest, NothingFoundEmptiesTheSelection) {
    ChooseIus(QStringLiteral("4"));
    Open();
    Click("cmdAddAll");
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenAreas(), QString());
    EXPECT_EQ(Shown(lstSelected1()), "");
}

TEST_F(frmAreasTest, WholeLevelsUpToTheDepth) {
    Open();
    QMenu* menu = Find<QPushButton>("cmdLevels").menu();
    EXPECT_EQ(menu->actions().size(), 3);
    EXPECT_NE(menu->findChild<QAction*>(QStringLiteral("mnu_popArea_Subnational1_Data")), nullptr);
    EXPECT_EQ(menu->findChild<QAction*>(QStringLiteral("mnu_popArea_Subnational2_All")), nullptr);
    PickLevel("mnu_popArea_Regions_Data");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1"));
    PickLevel("mnu_popArea_Countries_All");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,2,3,8"));
    EXPECT_EQ(Shown(lstAvailable1()), "A3 A2 A8") << "the level stands in the list";
    Click("cmdRemoveAll");
    ChooseNode("AASI");
    PickLevel("mnu_popArea_Countries_All");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2,3")) << "below the node only";
}

TEST_F(frmAreasTest, PopupsAndCount) {
    Open();
    PickFromPopup(lstAvailable1(), "mnu_popup_area_avl_Options_0");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("1,5,7"));
    PickFromPopup(lstSelected1(), "mnu_popup_area_chosen_Options_3");
    EXPECT_EQ(messages, QStringList{QLocale().toString(3)});
    PickFromPopup(lstAvailable1(), "mnu_popup_area_avl_Options_4");
    EXPECT_EQ(lstAvailable1().HighlightedItems().size(), 3U);
    PickFromPopup(lstSelected1(), "mnu_popup_area_chosen_Options_0");
    EXPECT_EQ(ChosenAreas(), QString());
}

TEST_F(frmAreasTest, AnEmptyDatabaseOpens) {
    Run(QStringLiteral("DELETE * FROM Area"));
    Open();
    EXPECT_EQ(Shown(lstAvailable1()), "");
    EXPECT_FALSE(Find<QPushButton>("cmdLevels").isEnabled());
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenAreas(), QString());
}

TEST_F(frmAreasTest, WithoutADatabaseNothingBreaks) {
    Connection.reset();
    Open();
    Click("cmdAllFilter");
    EXPECT_EQ(Shown(lstSelected1()), "");
}

TEST_F(frmAreasTest, AWriteThatFailsIsToldAndTheListShowsTheTable) {
    Run(QStringLiteral("CREATE UNIQUE INDEX one ON _SelArea (AreaLevel)"));
    Open();
    ChooseNode("AASI");
    DoubleClick(lstAvailable1(), QStringLiteral("A2"));
    EXPECT_TRUE(messages.isEmpty());
    Click("cmdAddAll"); // two areas of one level
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(ChosenAreas(), QStringLiteral("2"));
    EXPECT_EQ(Shown(lstSelected1()), "A2");
    Click("cmdAllFilter");
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(ChosenAreas(), QString());
    EXPECT_EQ(Shown(lstSelected1()), "");
}

TEST_F(frmAreasTest, DisabledPopupEntriesSayWhy) {
    ReadProductTexts();
    Open();
    EXPECT_EQ(Unexplained(lstAvailable1()), QStringList());
    EXPECT_EQ(Unexplained(lstSelected1()), QStringList());
}

} // namespace
} // namespace tessaro::test
