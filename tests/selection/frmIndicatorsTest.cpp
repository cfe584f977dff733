#include "selection/frmIndicators.h"

#include "controls/KeyedTree.h"
#include "selection/ScreenDriver.h"
#include "session/Session.h"
#include "support/TimeBound.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QStackedWidget>
#include <QTabBar>

namespace tessaro::test {
namespace {

class frmIndicatorsTest : public ScreenTest<frmIndicators> {
  protected:
    KeyedList& lstAvailable() { return List("lstAvailable"); }
    KeyedList& lstSelected() { return List("lstSelected"); }
    QTabBar& Options() { return Find<QTabBar>("lblIndicatorOptions"); }
    void ChooseNode(const char* tree, const QString& key) {
        auto& view = Find<KeyedTree>(tree);
        const QModelIndex index = view.Nodes().IndexOfKey(key);
        ASSERT_TRUE(index.isValid()) << key.toStdString();
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
            view.expand(above);
        view.scrollTo(index);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    }
    void OpenSectors() {
        IndicatorOpenWith = QStringLiteral("0");
        Open();
    }
};

TEST_F(frmIndicatorsTest, OpensTheWantedViewAndRestores) {
    ChooseIus(QStringLiteral("1,3"));
    IndicatorOpenWith = QStringLiteral("4");
    IndicatorViews[2].wanted = false;
    Open();
    EXPECT_EQ(Options().count(), 6);
    EXPECT_EQ(screen->findChild<KeyedTree*>(QStringLiteral("TV_CF")), nullptr);
    EXPECT_EQ(screen->CurrentView(), 4);
    EXPECT_EQ(Options().tabData(Options().currentIndex()).toInt(), 4);
    EXPECT_EQ(Find<QStackedWidget>("picTrees").currentWidget()->objectName(), QStringLiteral("TV_Sources"));
    EXPECT_EQ(Shown(lstAvailable()), "I3 I2 I1 I4") << "the root holds all of the view";
    EXPECT_EQ(Shown(lstSelected()), "I3 I1");
    EXPECT_TRUE(SelectionChanged);
}

TEST_F(frmIndicatorsTest, ATreeWithoutItemsHasNoRoot) {
    Run(QStringLiteral("DELETE * FROM Theme"));
    OpenSectors();
    EXPECT_EQ(Find<KeyedTree>("TV_Themes").Nodes().Count(), 0);
    Options().setCurrentIndex(3);
    EXPECT_EQ(Shown(lstAvailable()), "");
    EXPECT_EQ(Find<KeyedTree>("TV_IND").CurrentKey(), QStringLiteral("SEC"));
    EXPECT_FALSE(SelectionChanged);
}

TEST_F(frmIndicatorsTest, NodesFillTheListAndTheirChildrenOnce) {
    OpenSectors();
    auto& tree = Find<KeyedTree>("TV_IND");
    EXPECT_FALSE(tree.Nodes().IsLoaded(QStringLiteral("-B{[~]}S{[~]}2")));
    ChooseNode("TV_IND", QStringLiteral("-B{[~]}S{[~]}2"));
    EXPECT_EQ(Shown(lstAvailable()), "I3 I2 I1 I4");
    ChooseNode("TV_IND", QStringLiteral("B2{[~]}C{[~]}4"));
    EXPECT_EQ(Shown(lstAvailable()), "I4");
    ChooseNode("TV_IND", QStringLiteral("-B{[~]}S{[~]}2"));
    EXPECT_EQ(tree.Nodes().Count(), 5) << "root, two sectors, two classes";
    Options().setCurrentIndex(2);
    EXPECT_EQ(Shown(lstAvailable()), "I3") << "a view without a root opens at its first node";
    Options().setCurrentIndex(0);
    EXPECT_EQ(Shown(lstAvailable()), "I3 I2 I1 I4") << "each view keeps its node";
}

TEST_F(frmIndicatorsTest, AddsAndRemovesCombinations) {
    OpenSectors();
    DoubleClick(lstAvailable(), QStringLiteral("I1"));
    DoubleClick(lstAvailable(), QStringLiteral("I1"));
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11")) << "with all its sources, once";
    Highlight(lstAvailable(), {QStringLiteral("I3"), QStringLiteral("I1")});
    Click("cmdAdd");
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,3/11"));
    Highlight(lstAvailable(), {QStringLiteral("I2"), QStringLiteral("I4")});
    EXPECT_TRUE(DropHighlighted(lstAvailable(), lstSelected()));
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,3/11,4/10"));
    EXPECT_EQ(Shown(lstSelected()), "I3 I2 I1 I4");
    EXPECT_EQ(screen->SelectedCount(), 4);
    Highlight(lstSelected(), {QStringLiteral("I1"), QStringLiteral("I4")});
    QTest::keyClick(&lstSelected(), Qt::Key_Delete);
    EXPECT_EQ(ChosenIus(), QStringLiteral("2/10,3/11"));
    Click("cmdAddAll");
    EXPECT_EQ(screen->SelectedCount(), 5) << "5 has no source and is listed all the same";
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,3/11,4/10"));
    Click("cmdRemoveAll");
    EXPECT_EQ(ChosenIus(), QString());
}

TEST_F(frmIndicatorsTest, OneLinePerIndicatorInThatMode) {
    IndicatorSelectBy = 0;
    OpenSectors();
    EXPECT_EQ(Shown(lstAvailable()), "I-I2 I-I4 I-I1 IL3");
    EXPECT_EQ(lstAvailable().model()->columnCount(), 1);
    DoubleClick(lstAvailable(), QStringLiteral("I-I1"));
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10"));
    Highlight(lstSelected(), {QStringLiteral("I-I1")});
    Click("cmdRemove");
    EXPECT_EQ(ChosenIus(), QString());
    Click("cmdAllFilter");
    EXPECT_EQ(Shown(lstSelected()), "I-I2 I-I4 I-I1");
    EXPECT_EQ(ChosenIus(), QStringLiteral("1/10,1/11,2/10,3/11"));
}

TEST_F(frmIndicatorsTest, TheAutomaticSelections) {
    ChooseAreas(QStringLiteral("4"));
    OpenSectors();
    Click("cmdAddAll");
    Click("cmdAllFilter");
    EXPECT_EQ(Shown(lstSelected()), "I3");
    EXPECT_EQ(ChosenIus(), QStringLiteral("3/11"));
    Run(QStringLiteral("DELETE * FROM _SelArea"));
    ChooseNode("TV_IND", QStringLiteral("-B{[~]}S{[~]}2"));
    Click("cmdAvlFilter");
    EXPECT_EQ(Shown(lstSelected()), "I3 I2 I1") << "4 is available and has no data";
    EXPECT_EQ(frame.busy, 0);
}

TEST_F(frmIndicatorsTest, NothingFoundIsToldInTheStatusBar) {
    ChooseAreas(QStringLiteral("3"));
    ChoosePeriods(QStringLiteral("1"));
    OpenSectors();
    Click("cmdAddAll");
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenIus(), QString());
    EXPECT_EQ(screen->SelectedCount(), 0);
    EXPECT_EQ(frame.calls.filter(QStringLiteral("status for a while")).size(), 1);
    EXPECT_EQ(frame.calls.count(QStringLiteral("progress start")), frame.calls.count(QStringLiteral("progress end")));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(frmIndicatorsTest, AnEmptyAvailableListStopsItsFilter) {
    IndicatorOpenWith = QStringLiteral("2");
    ShowAutoSelectForm = true; // a question would hang the test
    ChooseAreas(QStringLiteral("4"));
    ChooseIus(QStringLiteral("1"));
    Open();
    ChooseNode("TV_CF", QStringLiteral("-C1{[~]}S{[~]}2"));
    EXPECT_EQ(Shown(lstAvailable()), "");
    screen->cmdAvlFilter_Click();
    EXPECT_EQ(Shown(lstSelected()), "I1");
}

TEST_F(frmIndicatorsTest, SortsBySectorFromThePopup) {
    OpenSectors();
    Click("cmdAddAll");
    PickFromPopup(lstSelected(), "mnu_popup_ind_sel_Options_11");
    EXPECT_EQ(Shown(lstSelected()), "I5 I3 I1 I2 I4") << "Money before People before Water";
    PickFromPopup(lstSelected(), "mnu_popup_ind_sel_Options_3");
    EXPECT_EQ(messages, QStringList{QLocale().toString(5)});
    PickFromPopup(lstSelected(), "mnu_popup_ind_sel_Options_0");
    EXPECT_EQ(ChosenIus(), QString());
    PickFromPopup(lstAvailable(), "mnu_popup_ind_avl_Options_0");
    EXPECT_EQ(screen->SelectedCount(), 5);
}

TEST_F(frmIndicatorsTest, KeysLeadFromTheTreeToTheListsAndBack) {
    OpenSectors();
    screen->activateWindow();
    auto& tree = Find<KeyedTree>("TV_IND");
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(screen->focusWidget(), &lstAvailable());
    QTest::keyClick(&lstAvailable(), Qt::Key_Right);
    EXPECT_EQ(screen->focusWidget(), &lstSelected());
    QTest::keyClick(&lstSelected(), Qt::Key_Left);
    QTest::keyClick(&lstAvailable(), Qt::Key_Left);
    EXPECT_EQ(screen->focusWidget(), &tree);
}

TEST_F(frmIndicatorsTest, FiftyThousandCombinationsDoNotStallTheScreen) {
    Connection->Begin();
    for (int n = 100; n < 50100; ++n)
        Run(QStringLiteral("INSERT INTO Indicator_Unit_Subpop (IUSNId, IndicatorGId, UnitGId, SubpopGId, DataExists) "
                           "VALUES (%1, 'L3', '-U1', '-S2', False)")
                .arg(n));
    Run(QStringLiteral(
        "INSERT INTO Indicator_Source (IUSNId, SourceNId, RecommendedSource) SELECT IUSNId, 10, True FROM "
        "Indicator_Unit_Subpop WHERE IUSNId >= 100"));
    Connection->Commit();
    QElapsedTimer clock;
    const auto timed = [&](const char* what, qint64 limit, const auto& call) {
        clock.start();
        call();
        QCoreApplication::processEvents();
        const qint64 spent = clock.elapsed();
        RecordProperty(what, static_cast<int>(spent));
        EXPECT_LT(spent, test::TimeBound(limit)) << what;
    };
    timed("open", 4000, [&] { OpenSectors(); });
    ASSERT_EQ(lstAvailable().Items().Count(), 50005);
    timed("highlight all", 1000, [&] { lstAvailable().selectAll(); });
    timed("sort", 2000, [&] { lstAvailable().SortOn(2); });
    timed("add all", 15000, [&] { Click("cmdAddAll"); });
    EXPECT_EQ(screen->SelectedCount(), 50005);
    timed("remove all", 2000, [&] { Click("cmdRemoveAll"); });
}

TEST_F(frmIndicatorsTest, AWriteThatFailsIsToldAndTheListShowsTheTable) {
    Run(QStringLiteral("CREATE UNIQUE INDEX one ON _SelIUSNId (UnitGId)"));
    Open();
    Click("cmdAllFilter");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(ChosenIus(), QString());
    EXPECT_EQ(Shown(lstSelected()), "");
    Click("cmdAddAll");
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(Shown(lstSelected()), "");
}

TEST_F(frmIndicatorsTest, TabLeadsFromTheTreeIntoTheLists) {
    Open();
    QStringList names;
    QWidget* tree = &Find<QWidget>("TV_GOALS");
    Find<QTabBar>("lblIndicatorOptions").setCurrentIndex(1);
    for (QWidget* next = tree->nextInFocusChain(); names.size() < 3 && next != tree; next = next->nextInFocusChain())
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isVisibleTo(screen.get())) names << next->objectName();
    EXPECT_EQ(names, (QStringList{QStringLiteral("txtFilter"), QStringLiteral("cmdAvailableIcon"),
                                  QStringLiteral("lstAvailable")}));
}

} // namespace
} // namespace tessaro::test
