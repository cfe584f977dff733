#include "controls/DataTable.h"
#include "controls/KeyedList.h"
#include "controls/SelectionLists.h"
#include "dataview/DataScreen.h"
#include "dataview/GridQuery.h"
#include "dataview/NoteBar.h"
#include "dataview/SortPanel.h"
#include "dataview/TakeOutPanel.h"
#include "dataview/frmDataFilters.h"
#include "platform/Files.h"
#include "session/DisplayValue.h"
#include "session/ErrorSink.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/TimeBound.h"
#include "view/InView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>
#include <set>

namespace tessaro::test {

namespace {

enum Option { View, Stats, Sources, Units, Subpops, Sort };

class frmDataOptionsTest : public DataScreenTest {
  protected:
    void MakePeriods() {
        Run(QStringLiteral("CREATE TABLE TimePeriod (TimePeriodNId LONG, TimePeriod TEXT(30))"));
        Run(QStringLiteral("INSERT INTO TimePeriod SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod"));
    }
    /// The texts of the installation, for what is told.
    void LoadTexts() {
        const auto kept = Connection;
        StartInstallation();
        Connection = kept;
        form.SetFormCaptions();
    }
    DataTable& Grid() { return *form.findChild<DataTable*>(QStringLiteral("DataGrid")); }
    QStackedWidget& Panels() { return *form.findChild<QStackedWidget*>(QStringLiteral("picPanels")); }
    KeyedList& List(const char* name) { return *Panels().currentWidget()->findChild<KeyedList*>(QLatin1String(name)); }
    QAbstractButton& Button(const char* name) { return *form.findChild<QAbstractButton*>(QLatin1String(name)); }
    QString Values() {
        QStringList values;
        for (int row = 0; row < form.grid().ValueRows(); ++row)
            values << form.grid().index(row, ColDatavalue - 1).data().toString();
        return values.join(QLatin1Char(' '));
    }
    void HighlightRows(int first, int last) {
        Grid().selectionModel()->select({Grid().model()->index(first, 0), Grid().model()->index(last, 0)},
                                        QItemSelectionModel::ClearAndSelect);
    }
    QString RowsText() { return form.SelectionSummary(); }
};

TEST_F(frmDataOptionsTest, TakingAnItemOutRequeriesAndPuttingItBackToo) {
    FillData(1, 3, 1);
    ShowAll();
    Button("DATA_SOURCES").click();
    EXPECT_EQ(List("lstAvailable").Items().Count(), 3);
    List("lstSelected").HighlightKey(QStringLiteral("IS_2_1"));
    QTest::keyClick(&List("lstSelected"), Qt::Key_Delete);
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("101 103"));
    EXPECT_EQ(List("lstSelected").Items().Count(), 2);
    EXPECT_EQ(List("lstAvailable").Items().Count(), 3) << "what is offered stays";
    List("lstAvailable").HighlightKey(QStringLiteral("IS_2_1"));
    QTest::keyClick(&List("lstAvailable"), Qt::Key_Return);
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 3);
    EXPECT_EQ(frame.busy, 0);
}

TEST_F(frmDataOptionsTest, TabReachesEveryControlOfEveryOption) {
    FillData(1, 3, 1);
    ShowAll();
    QWidget window;
    auto* before = new QPushButton(&window);
    auto* column = new QVBoxLayout(&window);
    column->addWidget(before);
    column->addWidget(&form);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const char* option : {"DATA_VIEW", "DATA_STATS", "DATA_SOURCES", "DATA_UNITS", "DATA_SUBPOPS", "DATA_SORT",
                               "DATA_CALC", "DATA_PRESENT"}) {
        Button(option).click();
        before->setFocus();
        std::set<const QWidget*> reached;
        for (QWidget* at = before; reached.insert(at).second; at = QApplication::focusWidget())
            QTest::keyClick(at, Qt::Key_Tab);
        for (const auto* control : form.findChildren<QWidget*>()) {
            const bool isStop = control->isVisible() && control->isEnabled() && !control->focusProxy() &&
                                (control->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
            EXPECT_TRUE(!isStop || reached.contains(control)) << option << ": " << control->objectName().toStdString();
        }
    }
    form.setParent(nullptr);
}

TEST_F(frmDataOptionsTest, APanelWithNothingLeftCannotBeLeft) {
    struct Case {
        Option option;
        const char* message;
    };
    FillData(1, 2, 1);
    ShowAll();
    for (const Case& c : {Case{Sources, "027"}, Case{Units, "028"}, Case{Subpops, "029"}, Case{Sort, "030"}}) {
        messages.clear();
        form.ShowThisDataOption(c.option);
        Panels().currentWidget()->findChild<QAbstractButton*>(QStringLiteral("cmdRemoveAll"))->click();
        QWidget* panel = Panels().currentWidget();
        Button("DATA_VIEW").click();
        EXPECT_EQ(messages, QStringList{QLatin1String(c.message)});
        EXPECT_EQ(Panels().currentWidget(), panel);
        EXPECT_FALSE(Button("DATA_VIEW").isChecked());
        EXPECT_EQ(form.grid().ValueRows(), 2) << "the grid keeps its rows meanwhile";
        messages.clear();
        EXPECT_FALSE(form.MayKeep());
        form.SaveAs();
        EXPECT_EQ(messages, (QStringList{QLatin1String(c.message), QLatin1String(c.message)})) << "and gives none away";
        panel->findChild<QAbstractButton*>(QStringLiteral("cmdAddAll"))->click();
        Button("DATA_VIEW").click();
        EXPECT_TRUE(Button("DATA_VIEW").isChecked()) << c.message;
        WaitForAll();
        EXPECT_EQ(form.grid().ValueRows(), 2);
    }
    EXPECT_FALSE(form.options().AnythingTakenOut());
}

TEST_F(frmDataOptionsTest, ANewSelectionForgetsWhatThePanelsTookOut) {
    FillData(1, 2, 1);
    ShowAll();
    form.ShowThisDataOption(Units);
    List("lstSelected").HighlightKey(QStringLiteral("IU_I1_-U"));
    QTest::keyClick(&List("lstSelected"), Qt::Key_Delete);
    EXPECT_TRUE(form.options().AnythingTakenOut());
    SelectionChanged = true;
    form.Enter();
    EXPECT_FALSE(form.options().AnythingTakenOut());
    EXPECT_EQ(List("lstSelected").Items().Count(), 2) << "the panel in view is filled anew";
}

TEST_F(frmDataOptionsTest, TheSortPanelOrdersByItsColumnsWhenItIsLeft) {
    FillData(2, 2, 1);
    ShowAll();
    form.ShowThisDataOption(Sort);
    EXPECT_EQ(List("lstSelected").Items().Count(), 1) << "the order that the view has";
    List("lstAvailable").HighlightKey(QStringLiteral("D.DataValue"));
    QTest::keyClick(&List("lstAvailable"), Qt::Key_Return);
    List("lstSelected").HighlightKey(QStringLiteral("D.DataValue"));
    form.findChild<QToolButton*>(QStringLiteral("cmdDescending"))->click();
    EXPECT_EQ(Values(), QStringLiteral("101 102 201 202")) << "nothing happens behind one's back";
    Button("DATA_VIEW").click();
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("102 101 202 201"));

    form.ShowThisDataOption(Sort);
    List("lstSelected").HighlightKey(QStringLiteral("D.DataValue"));
    form.findChild<QToolButton*>(QStringLiteral("cmdMoveUp"))->click();
    EXPECT_EQ(List("lstSelected").Items().Items().front().key, QStringLiteral("D.DataValue"));
    EXPECT_EQ(List("lstSelected").HighlightedItems().size(), 1U);
    Button("DATA_VIEW").click();
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("202 201 102 101"));
}

TEST_F(frmDataOptionsTest, RemovedRowsLeaveTheGridTheCountAndTheFilter) {
    FillData(1, 5, 1);
    ShowAll();
    HighlightRows(1, 2);
    QTest::keyClick(&Grid(), Qt::Key_Delete);
    EXPECT_EQ(Values(), QStringLiteral("101 104 105"));
    HighlightRows(1, 1);
    form.RemoveRowsFromDataGrid();
    EXPECT_EQ(DeletedRowNIds, QStringLiteral("3,2,4")) << "from the bottom up";
    EXPECT_EQ(RowFilter, QStringLiteral(" AND D.RowNID not in(3,2,4) "));
    EXPECT_EQ(Select(RequeryStatement(RowFilter, {})).rows().RecordCount(), 2);
    EXPECT_EQ(form.paging().TotalRows() - form.grid().RemovedRows(), 2);

    form.SortByColumn(ColDatavalue, false);
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("105 101")) << "a sort keeps them out";
    form.RestoreDeletedRows();
    EXPECT_EQ(form.grid().ValueRows(), 5);
    EXPECT_TRUE(Values().startsWith(QLatin1String("105 101 "))) << "they come back at the end";
    EXPECT_EQ(DeletedRowNIds, QString());
    EXPECT_EQ(RowFilter, QString());
}

TEST_F(frmDataOptionsTest, RowsCanBeRemovedAndComeBackWhileTheGridLoads) {
    FillData(10, 20, 2);
    Show();
    ASSERT_TRUE(form.paging().isRunning());
    HighlightRows(10, 19);
    QTest::keyClick(&Grid(), Qt::Key_Delete);
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 390);
    std::set<qint64> rows;
    for (int row = 0; row < form.grid().ValueRows(); ++row)
        rows.insert(form.grid().RowAt(row)->rowNId);
    EXPECT_EQ(rows.size(), 390U) << "none twice, none lost";
    EXPECT_FALSE(rows.contains(11));
    form.SortByColumn(ColAreaID, false);
    form.RestoreDeletedRows();
    EXPECT_EQ(form.grid().ValueRows(), 400);
    EXPECT_EQ(form.grid().RowAt(399)->rowNId > 10 && form.grid().RowAt(399)->rowNId <= 20, true);
    EXPECT_EQ(frame.busy, 0);
}

TEST_F(frmDataOptionsTest, AllRowsOfALongGridGoAndComeBackInATrice) {
    FillData(40, 50, 10);
    Show();
    QTest::keyClick(&Grid(), Qt::Key_End, Qt::ControlModifier);
    ASSERT_EQ(form.grid().ValueRows(), 20000);
    QElapsedTimer clock;
    clock.start();
    Grid().selectAll();
    form.RemoveRowsFromDataGrid();
    EXPECT_EQ(form.grid().MaxRows(), 0) << "nothing is left to wait for";
    form.RestoreDeletedRows();
    EXPECT_EQ(form.grid().ValueRows(), 20000);
    EXPECT_LT(clock.elapsed(), TimeBound(5000));
}

TEST_F(frmDataOptionsTest, AnotherFilterShowsItsRowsFromTheFirst) {
    FillData(10, 20, 10);
    MakePeriods();
    Show();
    QTest::keyClick(&Grid(), Qt::Key_End, Qt::ControlModifier);
    Button("chkFilters").click();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 200);
    EXPECT_EQ(Grid().rowAt(0), 0);
}

TEST_F(frmDataOptionsTest, FiltersNarrowTheGridAndForgetRemovedRows) {
    FillData(1, 2, 3);
    MakePeriods();
    Run(QStringLiteral("DELETE * FROM Data WHERE IUSNId = 2 AND TimePeriodNId = 3"));
    ShowAll();
    HighlightRows(0, 0);
    form.RemoveRowsFromDataGrid();
    Button("chkFilters").click();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 2) << "the latest period of each combination";
    EXPECT_EQ(DeletedRowNIds, QString());
    EXPECT_TRUE(MostRecentClause.startsWith(QLatin1String(" AND D.RowNId in (")));
    EXPECT_EQ(RowFilter, MostRecentClause);
    form.SortByColumn(ColDatavalue, false);
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("102 101")) << "a sort keeps the filter";

    form.SetFilters({.MissingDataOn = true, .ValueRangeOn = true, .DataValueFrom = 102, .DataValueTo = 200});
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 3) << "two values and one cell without";
    EXPECT_EQ(MostRecentClause, QString());
    EXPECT_TRUE(Button("chkFilters").isChecked());
    Grid().selectAll();
    form.RemoveRowsFromDataGrid();
    EXPECT_EQ(form.grid().ValueRows(), 0);
    EXPECT_EQ(DeletedRowNIds.count(QLatin1Char(',')), 1) << "a cell without a value has no number";
    form.RestoreDeletedRows();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 3);
    Button("chkFilters").click();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 5);
    EXPECT_EQ(RowFilter, QString());
}

TEST_F(frmDataOptionsTest, AValueThatIsNoNumberIsNamedBesideTheOtherFigures) {
    LoadTexts();
    FillData(1, 3, 1);
    Run(QStringLiteral("UPDATE Data SET Datavalue = 'n/a' WHERE IUSNId = 2"));
    ShowAll();
    messages.clear();
    form.ShowThisDataOption(Stats);
    EXPECT_TRUE(messages.isEmpty()) << "the database is sound";
    EXPECT_EQ(form.findChild<DataTable*>(QStringLiteral("DataStats"))->model()->rowCount(), 2);
    auto& note = *form.findChild<NoteBar*>();
    EXPECT_FALSE(note.isHidden());
    for (const char* part : {"Indicator 2", "Area 1", "2001", "n/a", "1"})
        EXPECT_TRUE(note.Text().contains(QLatin1String(part))) << part << ": " << note.Text().toStdString();
    form.ShowThisDataOption(View);
    EXPECT_TRUE(note.isHidden());
}

TEST_F(frmDataOptionsTest, MostRecentDataSayWhatASourceTakenOutHidesAndPutItBack) {
    LoadTexts();
    FillData(3, 1, 1);
    SelectTimes(0);
    Run(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (2, '2002')"));
    Run(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                       "SourceNId, Source, RecommendedSource, Deleted) SELECT IUSNId, IndicatorGId, [Indicator], "
                       "UnitGId, Unit, SubpopGId, Subpop, 2, 'Survey', False, False FROM _SelIUSNId"));
    AddData(2, 1, 1, QStringLiteral("'5'"), 2);
    AddData(2, 2, 1, QStringLiteral("'6'"), 2);
    AddData(2, 3, 1, QStringLiteral("'7'"), 1);
    MakePeriods();
    ShowAll();
    Button("chkFilters").click();
    WaitForAll();
    auto& note = *form.findChild<NoteBar*>();
    EXPECT_EQ(form.grid().ValueRows(), 3);
    EXPECT_TRUE(note.isHidden());
    form.ShowThisDataOption(Sources);
    List("lstSelected").HighlightKey(QStringLiteral("IS_1_2"));
    QTest::keyClick(&List("lstSelected"), Qt::Key_Delete);
    form.ShowThisDataOption(View);
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 1);
    EXPECT_EQ(form.hiddenByRecent().pairs, 2);
    EXPECT_FALSE(note.isHidden());
    EXPECT_TRUE(note.Text().contains(QLocale().toString(2)) && note.Text().contains(QLatin1String("Survey")))
        << note.Text().toStdString();
    Button("cmdNote").click();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 3);
    EXPECT_TRUE(note.isHidden());
    EXPECT_FALSE(form.options().AnythingTakenOut());
    // A source that isn't selected at all hides as much, but can't be put back from here.
    Run(QStringLiteral("DELETE * FROM _SelIUSNId WHERE SourceNId = 2"));
    form.SetFilters({.MostRecentOn = true});
    EXPECT_EQ(form.hiddenByRecent().pairs, 2);
    EXPECT_TRUE(form.hiddenByRecent().takenOutKeys.isEmpty());
    EXPECT_TRUE(Button("cmdNote").isHidden());
    form.SetFilters({});
    EXPECT_TRUE(note.isHidden());
}

TEST_F(frmDataOptionsTest, ALoadCanBeStoppedAndGoesOnWhereTheUserLooks) {
    FillData(10, 20, 10);
    Show();
    ASSERT_TRUE(form.CanStop());
    QTest::keyClick(&Grid(), Qt::Key_Escape);
    EXPECT_FALSE(form.CanStop());
    const int rows = form.grid().ValueRows();
    form.Leave();
    form.Enter();
    QTest::qWait(250);
    EXPECT_EQ(form.grid().ValueRows(), rows);
    Grid().scrollToBottom();
    EXPECT_EQ(form.grid().ValueRows(), rows + 50) << "who scrolls to the end wants to see more";
    EXPECT_FALSE(form.CanStop());
    QTest::keyClick(&Grid(), Qt::Key_Home, Qt::ControlModifier);
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 2000);
}

TEST_F(frmDataOptionsTest, ARunningLoadTellsOfHowMany) {
    LoadTexts();
    FillData(10, 20, 10);
    Show();
    auto& rows = *form.findChild<QLabel*>(QStringLiteral("lblRows"));
    EXPECT_FALSE(rows.text().contains(QLocale::system().toString(2000)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return form.paging().TotalKnown(); }, 10000));
    EXPECT_FALSE(form.paging().PagingComplete());
    EXPECT_TRUE(rows.text().contains(QLocale::system().toString(2000))) << rows.text().toStdString();
    WaitForAll();
    std::set<qint64> seen;
    for (int row = 0; row < form.grid().ValueRows(); ++row)
        seen.insert(form.grid().RowAt(row)->rowNId);
    EXPECT_EQ(seen.size(), 2000U);
}

TEST_F(frmDataOptionsTest, TheSortPanelShowsTheOrderOfAHeadAndItSurvivesANewSelection) {
    FillData(2, 2, 1);
    ShowAll();
    form.SortByColumn(ColDatavalue, false);
    WaitForAll();
    form.ShowThisDataOption(Sort);
    ASSERT_EQ(List("lstSelected").Items().Count(), 1);
    EXPECT_EQ(List("lstSelected").Items().Items().front().key, QStringLiteral("D.DataValue"));
    EXPECT_TRUE(List("lstSelected").Items().Items().front().marked) << "downwards";
    form.ShowThisDataOption(View);
    AddData(1, 2, 1, QStringLiteral("'500'"));
    SelectionChanged = true;
    form.Enter();
    WaitForAll();
    EXPECT_EQ(Values(), QStringLiteral("500 202 201 102 101"));
    EXPECT_EQ(Grid().horizontalHeader()->sortIndicatorSection(), ColDatavalue - 1);
    form.ShowThisDataOption(Sort);
    EXPECT_EQ(List("lstSelected").Items().Items().front().key, QStringLiteral("D.DataValue"));
}

TEST_F(frmDataOptionsTest, ShowingHiddenRowsIsOfferedOnlyWhileThereAreSome) {
    LoadTexts();
    FillData(1, 5, 1);
    ShowAll();
    const auto entry = [this](int index) {
        Grid().customContextMenuRequested({5, 5});
        QAction* found = nullptr;
        for (QAction* action : form.findChildren<QAction*>())
            if (action->objectName() == QStringLiteral("mnu_popup_Data_View_Options_%1").arg(index)) found = action;
        return found;
    };
    EXPECT_FALSE(entry(1)->isEnabled());
    EXPECT_FALSE(entry(1)->toolTip().isEmpty()) << "it says why";
    HighlightRows(1, 2);
    form.RemoveRowsFromDataGrid();
    EXPECT_TRUE(entry(1)->isEnabled());
    entry(1)->trigger();
    EXPECT_EQ(form.grid().ValueRows(), 5);
    EXPECT_FALSE(entry(1)->isEnabled());
    form.RestoreDeletedRows();
    EXPECT_EQ(form.grid().ValueRows(), 5);
    EXPECT_FALSE(ReadWholeFile(LogFile()).value_or(QByteArray()).contains("RestoreDeletedRows"));
}

TEST_F(frmDataOptionsTest, ValuesThatCanNoLongerBeReadAreTold) {
    FillData(1, 3, 1);
    ShowAll();
    Run(QStringLiteral("DROP TABLE Data"));
    form.ShowThisDataOption(Stats);
    EXPECT_EQ(messages.size(), 1);
    EXPECT_EQ(form.grid().ValueRows(), 3);
}

TEST_F(frmDataOptionsTest, TheCountWalksTheQueryWithoutHarmToTheLoad) {
    FillData(10, 20, 2);
    Show();
    HighlightRows(0, 4);
    form.RemoveRowsFromDataGrid();
    QAction* count = nullptr;
    Grid().customContextMenuRequested({5, 5});
    for (QAction* action : form.findChildren<QAction*>())
        if (action->objectName() == QLatin1String("mnu_popup_Data_View_Options_3")) count = action;
    ASSERT_NE(count, nullptr);
    count->trigger();
    EXPECT_EQ(messages, QStringList{QLocale().toString(395)});
    QApplication::closeAllWindows();
    form.show();
    WaitForAll();
    EXPECT_EQ(form.grid().ValueRows(), 395) << "counting to the end doesn't end the load";
}

TEST_F(frmDataOptionsTest, FiltersNeedRowsAndAPanelThatMayBeLeft) {
    FillData(1, 2, 1);
    ShowAll();
    form.ShowThisDataOption(Units);
    Panels().currentWidget()->findChild<QAbstractButton*>(QStringLiteral("cmdRemoveAll"))->click();
    form.Filter();
    EXPECT_EQ(messages, QStringList{QStringLiteral("028")});
    Panels().currentWidget()->findChild<QAbstractButton*>(QStringLiteral("cmdAddAll"))->click();
    Run(QStringLiteral("DELETE * FROM Data"));
    messages.clear();
    form.Refresh();
    form.Filter();
    EXPECT_EQ(messages, (QStringList{QStringLiteral("031"), QStringLiteral("041")}));
}

class frmDataFiltersTest : public SelectionTest {
  protected:
    frmDataFiltersTest() {
        FillData(2, 3, 2);
        Run(QStringLiteral("CREATE TABLE TimePeriod (TimePeriodNId LONG, TimePeriod TEXT(30))"));
        Run(QStringLiteral("INSERT INTO TimePeriod SELECT TimePeriodNId, TimePeriod FROM _SelTimePeriod"));
        Run(QStringLiteral("DELETE * FROM Data WHERE AreaNId = 2 AND IUSNId = 3"));
        dialog = std::make_unique<frmDataFilters>(DataFilters{});
    }
    QAbstractButton& Button(const char* name) { return *dialog->findChild<QAbstractButton*>(QLatin1String(name)); }
    QLineEdit& Field(const char* name) { return *dialog->findChild<QLineEdit*>(QLatin1String(name)); }
    bool MayApply() { return Button("cmdOK").isEnabled(); }
    /// The values have been read when the bounds of them are told; the text is empty without a string table.
    void WaitForCount() {
        for (int slice = 0; slice < 10; ++slice)
            QApplication::processEvents();
    }

    std::unique_ptr<frmDataFilters> dialog;
};

TEST_F(frmDataFiltersTest, BadBoundsAreToldInPlaceAndCannotBeApplied) {
    struct Case {
        const char* from;
        const char* to;
        bool good;
    };
    WaitForCount();
    for (const Case& c :
         {Case{"abc", "", false}, Case{"", "1..2", false}, Case{"5", "4", false}, Case{"500", "600", false},
          Case{"101", "", true}, Case{"", "101", true}, Case{"101", "101", true}, Case{"", "", true}}) {
        Field("txtFrom").setText(QLatin1String(c.from));
        Field("txtTo").setText(QLatin1String(c.to));
        EXPECT_EQ(MayApply(), c.good) << c.from << " to " << c.to;
    }
}

TEST_F(frmDataFiltersTest, AnOpenBoundBecomesTheLeastOrGreatestValue) {
    Field("txtFrom").setText(QStringLiteral("102"));
    Button("cmdOK").click();
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    const DataFilters filters = dialog->Filters();
    EXPECT_TRUE(filters.ValueRangeOn);
    EXPECT_EQ(filters.DataValueFrom, 102);
    EXPECT_EQ(filters.DataValueTo, 202);
    EXPECT_FALSE(filters.MostRecentOn || filters.MissingDataOn);
}

TEST_F(frmDataFiltersTest, WritesNumbersAsTheGridDoes) {
    struct Case {
        double value;
        const char* asStored;
        const char* withSeparators;
    };
    for (const Case& c :
         {Case{1234567.25, "1234567.25", "1,234,567.25"}, Case{1500000000, "1500000000", "1,500,000,000"},
          Case{-0.125, "-0.125", "-0.125"}, Case{0.00001, "0.00001", "0.00001"}}) {
        for (const bool separators : {false, true}) {
            SysNumFormat = separators;
            const frmDataFilters form({.ValueRangeOn = true, .DataValueFrom = c.value, .DataValueTo = 2e9});
            const QString shown = form.findChild<QLineEdit*>(QStringLiteral("txtFrom"))->text();
            EXPECT_EQ(shown, DisplayedValue(QLatin1String(c.asStored)));
            if (QLocale::system().groupSeparator() == QLatin1String(",")) {
                EXPECT_EQ(shown, QLatin1String(separators ? c.withSeparators : c.asStored));
            }
            EXPECT_EQ(form.Filters().DataValueFrom, c.value) << shown.toStdString() << " is read as it was written";
        }
    }
    SysNumFormat = false;
}

TEST_F(frmDataFiltersTest, CountsRowsAsTheyWillBeInView) {
    const auto kept = Connection;
    StartInstallation();
    Connection = kept;
    frmDataFilters form({}, 2);
    const auto text = [&](const char* label) { return form.findChild<QLabel*>(QLatin1String(label))->text(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !text("lblRowsStay").isEmpty(); }));
    const QString unchanged = text("lblRowsStay");
    EXPECT_TRUE(text("lblProblem").isEmpty()) << "hidden rows stay hidden";
    form.findChild<QLineEdit*>(QStringLiteral("txtFrom"))->setText(QStringLiteral("0"));
    EXPECT_NE(text("lblRowsStay"), unchanged) << "hidden rows come back with a filter";
    EXPECT_TRUE(text("lblProblem").contains(QLocale::system().toString(2)));
}

TEST_F(frmDataFiltersTest, NoFiltersClearsEverything) {
    Button("chkMostRecent").setChecked(true);
    Button("chkMissing").setChecked(true);
    Field("txtTo").setText(QStringLiteral("500"));
    EXPECT_TRUE(dialog->Filters().MissingDataOn);
    Button("cmdReset").click();
    EXPECT_EQ(dialog->Filters(), DataFilters{});
}

} // namespace

} // namespace tessaro::test
