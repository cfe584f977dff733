#include "selection/frmTime.h"

#include "selection/ScreenDriver.h"
#include "session/Session.h"
#include "session/Strings.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSignalSpy>

namespace tessaro::test {
namespace {

class frmTimeTest : public ScreenTest<frmTime> {
  protected:
    KeyedList& lstAvailable() { return List("lstAvailable"); }
    KeyedList& lstSelected() { return List("lstSelected"); }
};

TEST_F(frmTimeTest, ShowsAllPeriodsAndTheRestoredSelection) {
    ChoosePeriods(QStringLiteral("2"));
    Open();
    EXPECT_EQ(Shown(lstAvailable()), "T1 T2 T3 T4");
    EXPECT_EQ(Shown(lstSelected()), "T2");
    EXPECT_TRUE(SelectionChanged) << "a restored selection makes the data view compute";
}

TEST_F(frmTimeTest, LoadsQuietlyWithoutASelection) {
    SetDataExistsMode(0);
    Open();
    EXPECT_EQ(Shown(lstAvailable()), "T1 T2 T3");
    EXPECT_FALSE(SelectionChanged);
    EXPECT_EQ(screen->SelectionSummary(), QString());
}

TEST_F(frmTimeTest, AddsAndRemovesByMouseAndKeys) {
    Open();
    DoubleClick(lstAvailable(), QStringLiteral("T3"));
    DoubleClick(lstAvailable(), QStringLiteral("T3"));
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("3")) << "once, however often";
    Highlight(lstAvailable(), {QStringLiteral("T1"), QStringLiteral("T3")});
    QTest::keyClick(&lstAvailable(), Qt::Key_Return);
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,3"));
    Highlight(lstSelected(), {QStringLiteral("T3")});
    QTest::keyClick(&lstSelected(), Qt::Key_Delete);
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1"));
    EXPECT_EQ(lstSelected().HighlightedItems().size(), 1U) << "the first that is left";
    QTest::keyClick(&lstAvailable(), Qt::Key_A, Qt::ControlModifier);
    Click("cmdAdd");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3,4"));
    DoubleClick(lstSelected(), QStringLiteral("T4"));
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3"));
    Click("cmdRemoveAll");
    EXPECT_EQ(ChosenPeriods(), QString());
    EXPECT_EQ(Shown(lstSelected()), "");
}

TEST_F(frmTimeTest, APeriodThatCannotBeWrittenIsToldAndNotListed) {
    Run(QStringLiteral("UPDATE TimePeriod SET TimePeriod = '1990' WHERE TimePeriodNId = 2"));
    Run(QStringLiteral("CREATE UNIQUE INDEX one ON _SelTimePeriod (TimePeriod)"));
    Open();
    Click("cmdAddAll");
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,3,4"));
    EXPECT_EQ(Shown(lstSelected()), "T1 T3 T4");
}

TEST_F(frmTimeTest, ButtonsSayWhatCanBeDone) {
    Open();
    const auto enabled = [this](const char* name) { return Find<QAbstractButton>(name).isEnabled(); };
    EXPECT_FALSE(enabled("cmdAdd"));
    EXPECT_TRUE(enabled("cmdAddAll"));
    EXPECT_FALSE(enabled("cmdRemove"));
    EXPECT_FALSE(enabled("cmdRemoveAll"));
    Highlight(lstAvailable(), {QStringLiteral("T1")});
    EXPECT_TRUE(enabled("cmdAdd"));
    Click("cmdAddAll");
    EXPECT_TRUE(enabled("cmdRemoveAll"));
}

TEST_F(frmTimeTest, CopiesRowsAndMovesTheFocusBetweenTheLists) {
    Open();
    screen->activateWindow();
    lstAvailable().setFocus();
    Highlight(lstAvailable(), {QStringLiteral("T2"), QStringLiteral("T1")});
    QTest::keyClick(&lstAvailable(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1990\n1995\n"));
    QTest::keyClick(&lstAvailable(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(screen->focusWidget(), &lstSelected());
    QTest::keyClick(&lstSelected(), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(screen->focusWidget(), &lstAvailable());
    screen->setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&lstAvailable(), Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(screen->focusWidget(), &lstSelected()) << "the other list stands on the left now";
}

TEST_F(frmTimeTest, DragsBetweenTheLists) {
    Open();
    Highlight(lstAvailable(), {QStringLiteral("T1"), QStringLiteral("T2")});
    EXPECT_TRUE(DropHighlighted(lstAvailable(), lstSelected()));
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2"));
    Highlight(lstSelected(), {QStringLiteral("T1")});
    EXPECT_TRUE(DropHighlighted(lstSelected(), lstAvailable()));
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("2"));
    Highlight(lstSelected(), {QStringLiteral("T2")});
    EXPECT_FALSE(DropHighlighted(lstSelected(), lstSelected()));
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("2")) << "a list takes nothing from itself";
}

TEST_F(frmTimeTest, SortsEachListByItsButtonAndHead) {
    Open();
    Click("cmdSortButtons_0");
    EXPECT_EQ(Shown(lstAvailable()), "T4 T3 T2 T1");
    EXPECT_EQ(Find<QAbstractButton>("cmdSortButtons_0").property("sortKey"), QStringLiteral("DES"));
    EXPECT_EQ(Find<QAbstractButton>("cmdSortButtons_1").property("sortKey"), QStringLiteral("ASC"));
    Click("cmdSortButtons_0");
    EXPECT_EQ(Shown(lstAvailable()), "T1 T2 T3 T4");
}

TEST_F(frmTimeTest, DisabledPopupEntriesSayWhy) {
    ReadProductTexts();
    Open();
    EXPECT_EQ(Unexplained(lstAvailable()), QStringList());
    EXPECT_EQ(Unexplained(lstSelected()), QStringList());
}

TEST_F(frmTimeTest, PopupsAddRemoveAndCount) {
    Open();
    PickFromPopup(lstAvailable(), "mnu_popup_time_avl_Options_1");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3,4"));
    PickFromPopup(lstSelected(), "mnu_popup_time_sel_Options_3");
    EXPECT_EQ(messages, QStringList{QLocale().toString(4)});
    Highlight(lstSelected(), {QStringLiteral("T4")});
    PickFromPopup(lstSelected(), "mnu_popup_time_sel_Options_0");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3"));
    PickFromPopup(lstSelected(), "mnu_popup_time_sel_Options_1");
    EXPECT_EQ(ChosenPeriods(), QString());
    Highlight(lstAvailable(), {QStringLiteral("T2")});
    PickFromPopup(lstAvailable(), "mnu_popup_time_avl_Options_0");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("2"));
}

TEST_F(frmTimeTest, AllMeansAllThatTheFilterLineShows) {
    Open();
    auto& filter = Find<QLineEdit>("txtFilter");
    QTest::keyClicks(&filter, QStringLiteral("199"));
    EXPECT_EQ(Shown(lstAvailable()), "T1 T2");
    EXPECT_TRUE(Find<QLabel>("lblAvailable")
                    .text()
                    .contains(QLocale().toString(2) + QStringLiteral(" / ") + QLocale().toString(4)));
    Click("cmdAddAll");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2"));
    filter.clear();
    Click("cmdAddAll");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3,4"));
}

TEST_F(frmTimeTest, TheAutomaticSelectionReplaces) {
    ChooseIus(QStringLiteral("3"));
    Open();
    Click("cmdAddAll");
    SelectionChanged = false;
    QSignalSpy summaries(screen.get(), &StageScreen::SelectionSummaryChanged);
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("3"));
    EXPECT_EQ(Shown(lstSelected()), "T3");
    EXPECT_EQ(Shown(lstAvailable()), "T1 T2 T3 T4");
    EXPECT_TRUE(SelectionChanged);
    EXPECT_GT(summaries.count(), 0);
    EXPECT_EQ(frame.busy, 0);
    EXPECT_EQ(frame.calls.count(QStringLiteral("progress start")), frame.calls.count(QStringLiteral("progress end")));
}

TEST_F(frmTimeTest, AnAutomaticSelectionThatFindsNothingSaysSoInTheEmptyList) {
    ReadProductTexts();
    ShowAutoSelectForm = false;
    ChooseIus(QStringLiteral("4")); // has no data
    Open();
    const QString atFirst = lstSelected().HintShown();
    EXPECT_FALSE(atFirst.isEmpty());
    Click("cmdAllFilter");
    EXPECT_EQ(lstSelected().HintShown(), GetText(QStringLiteral("TS_AutoSelectNothing")));
    EXPECT_EQ(frame.calls.count(QStringLiteral("status for a while ") + GetText(QStringLiteral("031"))), 1);
    Click("cmdAddAll");
    Click("cmdRemoveAll");
    EXPECT_EQ(lstSelected().HintShown(), atFirst) << "the user has emptied it";
}

TEST_F(frmTimeTest, TheQuestionIsAskedAndCanBeRefused) {
    ChooseIus(QStringLiteral("3"));
    ChooseAreas(QStringLiteral("2"));
    ShowAutoSelectForm = true;
    Open();
    Click("cmdAddAll");
    AnswerDialog([](QDialog& dialog) {
        EXPECT_TRUE(dialog.findChild<QCheckBox*>(QStringLiteral("chkOptOne"))->isChecked());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2,3,4")) << "refused: nothing changes";
    EXPECT_TRUE(ShowAutoSelectForm);
    AnswerDialog([](QDialog& dialog) {
        dialog.findChild<QCheckBox*>(QStringLiteral("chkOptOne"))->setChecked(false);
        dialog.findChild<QCheckBox*>(QStringLiteral("chkShow"))->setChecked(true);
        dialog.findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
    });
    Click("cmdAllFilter");
    EXPECT_EQ(ChosenPeriods(), QStringLiteral("1,2")) << "only the areas count";
    EXPECT_FALSE(ShowAutoSelectForm);
}

} // namespace
} // namespace tessaro::test
