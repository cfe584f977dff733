#include "controls/DataTable.h"
#include "controls/KeyedList.h"
#include "dataview/GridQuery.h"
#include "dataview/frmData.h"
#include "platform/SingleInstance.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/FrameTest.h"
#include "shell/SettingsChange.h"
#include "shell/frmProperties.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QStackedWidget>
#include <QTest>

namespace tessaro {

namespace {

/// Everything of a widget that a language changes, as one line; an empty one says nothing.
QString FaceOf(const QWidget& control) {
    QStringList texts{control.toolTip(), control.accessibleName(), control.accessibleDescription()};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) texts << button->text();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) texts << label->text();
    if (const auto* field = qobject_cast<const QLineEdit*>(&control)) texts << field->placeholderText();
    if (const auto* list = qobject_cast<const QListWidget*>(&control))
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
    texts.removeAll(QString());
    if (texts.isEmpty()) return {};
    return texts.join(QStringLiteral(" | ")) + QStringLiteral(" | %1 %2 pt %3")
                                                   .arg(control.font().family())
                                                   .arg(control.font().pointSizeF())
                                                   .arg(control.layoutDirection() == Qt::RightToLeft ? "rtl" : "ltr");
}

} // namespace

/// A language that is changed while the program runs must look as if the program had started in it.
class LanguageChangeTest : public test::FrameTest {
  protected:
    /// The whole window as it stands, a line for each control and menu entry that can be seen.
    QStringList Faces() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList faces{window->windowTitle()};
        for (const QWidget* control : window->findChildren<QWidget*>()) {
            const QString face = control->isVisibleTo(window.get()) ? FaceOf(*control) : QString();
            if (!face.isEmpty()) faces << control->objectName() + QStringLiteral(": ") + face;
        }
        for (const QAction* entry : window->findChildren<QAction*>())
            if (entry->objectName().startsWith(QLatin1String("mnu")))
                faces << entry->objectName() + QStringLiteral(": ") + entry->text() + entry->toolTip();
        faces.sort();
        return faces;
    }
    /// The home page and the first three stages.
    QList<QStringList> AllFaces() {
        QList<QStringList> all{Faces()};
        for (int stage = 0; stage < 3; ++stage) {
            window->GoToStage(stage);
            all << Faces();
        }
        window->GoToHome();
        return all;
    }
    void StartAgain() {
        answers = {MessageCode::Yes};
        ASSERT_TRUE(window->close());
        window.reset();
        ASSERT_TRUE(StartInstalled());
        window->GoToHome();
    }
    void ChooseInProperties(const QString& label) {
        const auto made = window->Settings().MakeProperties();
        frmProperties& form = *made;
        form.findChild<QComboBox*>(QStringLiteral("cmbLanguages"))->setCurrentText(label);
        QMetaObject::invokeMethod(
            form.findChild<QComboBox*>(QStringLiteral("cmbLanguages")), "activated",
            Q_ARG(int, form.findChild<QComboBox*>(QStringLiteral("cmbLanguages"))->currentIndex()));
        form.cmdOK_Click();
    }
    static void ExpectSame(const QList<QStringList>& found, const QList<QStringList>& wanted, const std::string& how) {
        ASSERT_EQ(found.size(), wanted.size());
        for (int page = 0; page < found.size(); ++page) {
            for (const QString& face : found.at(page))
                EXPECT_TRUE(wanted.at(page).contains(face)) << how << ", page " << page << ": " << face.toStdString();
            EXPECT_EQ(found.at(page).size(), wanted.at(page).size()) << how << ", page " << page;
        }
    }
};

TEST_F(LanguageChangeTest, LooksAsAfterAStartInTheLanguage) {
    ASSERT_TRUE(StartInstalled());
    for (const QString& language : {QStringLiteral("French [fr]"), QStringLiteral("Arabic [ar]")}) {
        const QString english = QStringLiteral("English [en]");
        window->Settings().ChangeLanguage(language);
        StartAgain();
        ASSERT_EQ(Language, language);
        const QList<QStringList> wanted = AllFaces();
        for (const QString& route : {QStringLiteral("menu, home page"), QStringLiteral("menu, stage"),
                                     QStringLiteral("properties, home page"), QStringLiteral("properties, stage")}) {
            window->Settings().ChangeLanguage(english);
            window->GoToHome();
            if (route.endsWith(QLatin1String("stage"))) window->GoToStage(2);
            if (route.startsWith(QLatin1String("menu")))
                window->Settings().ChangeLanguage(language);
            else
                ChooseInProperties(language);
            const QStringList onRoute = Faces();
            EXPECT_FALSE(onRoute.isEmpty());
            window->Stages().UnloadStages(); // the stage that stayed has popups that a fresh start has not
            window->GoToHome();
            ExpectSame(AllFaces(), wanted, (language + QStringLiteral(" by ") + route).toStdString());
        }
    }
}

/// The data view of the sample database, on a selection that has two sources, units and subgroups.
class DataViewLanguageTest : public LanguageChangeTest {
  protected:
    static void SelectRows() {
        for (const char* statement : {
                 "DELETE * FROM _SelIUSNId",
                 "DELETE * FROM _SelTimePeriod",
                 "DELETE * FROM _SelArea",
                 "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM "
                 "TimePeriod WHERE TimePeriod IN ('1960', '2007', '2013', '2015', '2016')",
                 "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel) SELECT AreaGId, AreaNId, "
                 "AreaID, "
                 "AreaName, AreaLevel FROM Area WHERE AreaName IN ('Brazil', 'India', 'France', 'Germany', 'Texas')",
                 "INSERT INTO _SelIUSNId (IUSNId, IndicatorGId, [Indicator], UnitGId, Unit, SubpopGId, Subpop, "
                 "SourceNId, Source, RecommendedSource, Deleted) SELECT X.IUSNId, X.IndicatorGId, I.[Indicator], "
                 "X.UnitGId, U.Unit, X.SubpopGId, S.Subpop, Q.SourceNId, Q.Source, False, False FROM "
                 "((((Indicator_Unit_Subpop AS X INNER JOIN [Indicator] AS I ON X.IndicatorGId = I.IndicatorGId) INNER "
                 "JOIN Unit AS U ON X.UnitGId = U.UnitGId) INNER JOIN Subpop AS S ON X.SubpopGId = S.SubpopGId) INNER "
                 "JOIN Indicator_Source AS L ON L.IUSNId = X.IUSNId) INNER JOIN Source AS Q ON Q.SourceNId = "
                 "L.SourceNId WHERE X.IUSNId IN (6, 44, 48, 52, 53, 62, 63)",
             })
            ASSERT_TRUE(Execute(QLatin1String(statement))) << statement;
        SelectionChanged = true;
    }
    frmData& View() { return *Find<frmData>(QStringLiteral("frmData")); }
    void WaitForAll() {
        ASSERT_TRUE(QTest::qWaitFor([&] { return View().paging().PagingComplete(); }, 10000));
    }
    /// The rows in view without what depends on the language, in no order.
    std::string Rows() {
        QStringList rows;
        for (int row = 0; row < View().grid().ValueRows(); ++row) {
            const GridRow& cells = *View().grid().RowAt(row);
            rows << QStringList{cells.timePeriod, cells.areaId, cells.indicatorGId, QString::number(cells.sourceNId),
                                cells.Text(ColRowNID)}
                        .join(QLatin1Char(' '));
        }
        rows.sort();
        return rows.join(u'\n').toStdString();
    }
    QStringList AreaNames() {
        QStringList names;
        for (int row = 0; row < View().grid().ValueRows(); ++row)
            if (const QString name = View().grid().RowAt(row)->areaName; !names.contains(name)) names << name;
        return names;
    }
    void TakeOutFirstSource() {
        View().ShowThisDataOption(2);
        auto* list = Find<QStackedWidget>(QStringLiteral("picPanels"))
                         ->currentWidget()
                         ->findChild<KeyedList*>(QStringLiteral("lstSelected"));
        list->HighlightKey(list->Items().Items().front().key);
        QTest::keyClick(list, Qt::Key_Delete);
        View().ShowThisDataOption(0);
    }
    void RemoveRows(int first, int last) {
        auto& grid = *Find<DataTable>(QStringLiteral("DataGrid"));
        grid.selectionModel()->select({grid.model()->index(first, 0), grid.model()->index(last, 0)},
                                      QItemSelectionModel::ClearAndSelect);
        View().RemoveRowsFromDataGrid();
    }
};

TEST_F(DataViewLanguageTest, TheViewKeepsFiltersOrderAndWhatWasTakenOut) {
    ASSERT_TRUE(StartInstalled());
    SelectRows();
    for (const int stage : {0, 1, 2, 3}) // a list that is opened for the first time takes the selection over anew
        window->GoToStage(stage);
    WaitForAll();
    TakeOutFirstSource();
    for (const DataFilters& filters :
         {DataFilters{},
          DataFilters{.MostRecentOn = true, .ValueRangeOn = true, .DataValueFrom = 1, .DataValueTo = 1e6},
          DataFilters{.MissingDataOn = true}}) {
        SCOPED_TRACE(testing::Message() << "recent " << filters.MostRecentOn << ", missing " << filters.MissingDataOn);
        View().SetFilters(filters);
        View().SortByColumn(ColAreaName, false);
        WaitForAll();
        RemoveRows(0, 2);
        const std::string rows = Rows();
        const int count = View().grid().ValueRows();
        ASSERT_GT(count, 3);
        EXPECT_EQ(AreaNames().last(), QStringLiteral("Brazil"));
        for (const QString& language : {QStringLiteral("French [fr]"), QStringLiteral("English [en]")}) {
            window->Settings().ChangeLanguage(language);
            ASSERT_EQ(CurrentStage, 3);
            WaitForAll();
            EXPECT_EQ(Rows(), rows) << language.toStdString();
            EXPECT_EQ(View().Filters(), filters);
            EXPECT_TRUE(View().options().AnythingTakenOut());
            const auto& head = *Find<DataTable>(QStringLiteral("DataGrid"))->horizontalHeader();
            EXPECT_EQ(head.sortIndicatorSection(), ColAreaName - 1);
            EXPECT_EQ(head.sortIndicatorOrder(), Qt::DescendingOrder);
            const bool french = language.startsWith(QLatin1String("French"));
            EXPECT_EQ(AreaNames().last(), french ? QStringLiteral("Allemagne") : QStringLiteral("Brazil"))
                << "in the order of the names in this language";
        }
        window->GoToStage(2);
        window->Settings().ChangeLanguage(QStringLiteral("French [fr]"));
        EXPECT_EQ(CurrentStage, 2);
        window->GoToStage(3);
        WaitForAll();
        EXPECT_EQ(Rows(), rows) << "changed from another stage";
        View().RestoreDeletedRows();
        WaitForAll();
        EXPECT_EQ(View().grid().ValueRows(), count + 3);
        window->Settings().ChangeLanguage(QStringLiteral("English [en]"));
    }
}

TEST_F(DataViewLanguageTest, TheStatusBarForgetsTheItemOfAPanelThatIsLeft) {
    ASSERT_TRUE(StartInstalled());
    SelectRows();
    window->GoToStage(3);
    const auto* status = Find<QLabel>(QStringLiteral("panelText"));
    ASSERT_NE(status, nullptr);
    TakeOutFirstSource(); // highlights the next one
    EXPECT_EQ(status->text(), QString());
}

// The clock reads the same in its first minute as after it.
TEST_F(LanguageChangeTest, TheClockKeepsItsFormat) {
    ASSERT_TRUE(Start());
    const auto* date = Find<QLabel>(QStringLiteral("panelDate"));
    const QString before = date->text();
    ASSERT_FALSE(before.isEmpty());
    for (int second = 0; second < 130; ++second) {
        window->Timer1_Timer();
        ASSERT_EQ(date->text(), before) << second;
    }
}

} // namespace tessaro
