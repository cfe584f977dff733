#include "PresentationTest.h"
#include "controls/ColorDialogs.h"
#include "controls/FileDialogs.h"
#include "controls/FontDialogs.h"
#include "controls/KeyedList.h"
#include "office/SpreadsheetApplication.h"
#include "presentation/RowsColumnsFile.h"
#include "presentation/frmGraphWizard.h"
#include "presentation/frmLoadRC.h"
#include "presentation/frmTableWizard.h"
#include "support/ReadXls.h"
#include "support/TimeBound.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <csignal>

namespace tessaro {

namespace {

/// The wizards driven by their controls. Nothing is hosted off screen; the workbook is there all the same.
class WizardsTest : public test::PresentationTest {
  protected:
    void SetUp() override {
        PresentationTest::SetUp();
        static const QTemporaryDir profile;
        office::SpreadsheetApplication::SetProfileFolder(profile.path());
        InstallTemplates();
    }
    void TearDown() override {
        SetFileAnswerer({});
        SetFontAnswerer({});
        SetColorAnswerer({});
        PresentationTest::TearDown();
    }
    static void TearDownTestSuite() { office::SpreadsheetApplication::QuitAll(); }

    template <class Control> static Control* Named(const QWidget& form, const char* name) {
        auto* control = form.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void Click(const QWidget& form, const char* name) { Named<QPushButton>(form, name)->click(); }
    static QStringList Keys(const QWidget& form, const char* list) {
        QStringList keys;
        for (const KeyedItem& item : Named<KeyedList>(form, list)->Items().Items())
            keys << item.key;
        return keys;
    }
    static void DoubleClick(const QWidget& form, const char* list, const QString& key) {
        auto* view = Named<KeyedList>(form, list);
        view->HighlightKey(key);
        Q_EMIT view->ItemActivated(key);
    }
    /// Grabs a form into the folder that the environment names, to be looked at.
    static void Picture(QWidget& form, const char* name) {
        const QString folder = qEnvironmentVariable("TESSARO_PICTURES");
        if (folder.isEmpty()) return;
        QTest::qWait(50);
        form.grab().save(folder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
    }

    QList<FinishedPresentation> saved_;
    SavePresentation save_ = [this](const FinishedPresentation& finished, QWidget*) {
        saved_ << finished;
        return true;
    };
};

} // namespace

TEST_F(WizardsTest, FieldsMoveByDoubleClickButtonsAndKeys) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    Picture(wizard, "table-1");
    EXPECT_EQ(Keys(wizard, "LVRows"), (QStringList{QStringLiteral("A.AreaID"), QStringLiteral("A.AreaName"),
                                                   QStringLiteral("T.TimePeriod"), QStringLiteral("IUS.Source")}));
    EXPECT_TRUE(Keys(wizard, "LVAvailable").isEmpty());
    DoubleClick(wizard, "LVColumns", QStringLiteral("IUS.Unit"));
    EXPECT_EQ(Keys(wizard, "LVAvailable"), QStringList{QStringLiteral("IUS.Unit")});
    EXPECT_TRUE(Named<KeyedList>(wizard, "LVAvailable")->HasHighlighted());
    Click(wizard, "cmdToRows");
    EXPECT_EQ(Keys(wizard, "LVRows").last(), QStringLiteral("IUS.Unit"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&wizard));
    Named<KeyedList>(wizard, "LVRows")->setFocus();
    QTest::keyClick(Named<KeyedList>(wizard, "LVRows"), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Keys(wizard, "LVRows").at(3), QStringLiteral("IUS.Unit"));
    QTest::keyClick(Named<KeyedList>(wizard, "LVRows"), Qt::Key_Delete);
    EXPECT_EQ(Keys(wizard, "LVAvailable"), QStringList{QStringLiteral("IUS.Unit")});
    EXPECT_FALSE(Keys(wizard, "LVDetails").isEmpty()); // the values of the field that moved
    Click(wizard, "CmdReset");
    EXPECT_EQ(Keys(wizard, "LVAvailable").size(), 7);
    Click(wizard, "CmdNext");
    EXPECT_EQ(messages, QStringList{QStringLiteral("253")});
    EXPECT_EQ(wizard.Step(), 1);
}

TEST_F(WizardsTest, ReturnMovesWhatIsHighlightedAndElseGoesOn) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&wizard));
    auto* rows = Named<KeyedList>(wizard, "LVRows");
    rows->HighlightKey(QStringLiteral("IUS.Source"));
    QTest::keyClick(rows, Qt::Key_Return);
    EXPECT_EQ(Keys(wizard, "LVAvailable"), QStringList{QStringLiteral("IUS.Source")});
    EXPECT_EQ(wizard.Step(), 1);
    rows->clearSelection();
    QTest::keyClick(rows, Qt::Key_Return);
    EXPECT_EQ(wizard.Step(), 2);
}

TEST_F(WizardsTest, LayoutsAreSavedAndLoaded) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdReset");
    Click(wizard, "CmdSave");
    EXPECT_EQ(messages, QStringList{QStringLiteral("255")});
    DoubleClick(wizard, "LVAvailable", QStringLiteral("IUS.Source"));
    FileQuestion asked;
    SetFileAnswerer([&](const FileQuestion& question) {
        asked = question;
        return question.folder + QStringLiteral("/Mine");
    });
    Click(wizard, "CmdSave");
    EXPECT_EQ(asked.name, QStringLiteral("Default.twf"));
    Click(wizard, "CmdReset");
    QTimer::singleShot(0, &wizard, [&wizard] {
        auto* form = qobject_cast<frmLoadRC*>(QApplication::activeModalWidget());
        ASSERT_TRUE(form);
        Picture(*form, "load");
        EXPECT_FALSE(Named<QPushButton>(*form, "cmdOK")->isEnabled());
        auto* files = Named<QListView>(*form, "FileSourcePath");
        ASSERT_EQ(files->model()->rowCount(), 1);
        files->setCurrentIndex(files->model()->index(0, 0));
        Click(*form, "cmdOK");
    });
    Click(wizard, "CmdLoad");
    EXPECT_EQ(Keys(wizard, "LVRows"), QStringList{QStringLiteral("IUS.Source")});
    QTimer::singleShot(0, &wizard, [] { Click(*QApplication::activeModalWidget(), "CmdCancel"); });
    Click(wizard, "CmdLoad");
    EXPECT_EQ(Keys(wizard, "LVRows"), QStringList{QStringLiteral("IUS.Source")});
}

TEST_F(WizardsTest, TheTableGoesFromFieldsToTheGallery) {
    SelectEverything();
    Run(QStringLiteral("DELETE * FROM _SelTimePeriod WHERE TimePeriodNId <> 2"));
    frmTableWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 2);
    EXPECT_TRUE(wizard.windowTitle().contains(QLocale().toString(2))) << wizard.windowTitle().toStdString();
    EXPECT_EQ(Named<QLineEdit>(wizard, "txtTitle")->text(), QStringLiteral("2000")); // the first single value
    Picture(wizard, "table-2");
    Click(wizard, "CmdBack");
    EXPECT_EQ(wizard.Step(), 1);
    Click(wizard, "CmdNext");
    auto* title = Named<QLineEdit>(wizard, "txtTitle");
    title->clear();
    QTest::keyClicks(title, QStringLiteral("My table"));
    SetFontAnswerer([](QFont font) {
        font.setPointSize(22);
        return std::optional(font);
    });
    Click(wizard, "cmdTitleFont");
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 3) << messages.join(' ').toStdString();
    const test::ReadSheet table = test::ReadXls(wizard.WorkbookFile()).front();
    EXPECT_EQ(table.Text(1, 1), QStringLiteral("My table"));
    EXPECT_EQ(table.Look(1, 1).value(QLatin1String("size")).toDouble(), 22);
    Picture(wizard, "table-3");
    Click(wizard, "CmdNext");
    ASSERT_EQ(saved_.size(), 1);
    EXPECT_EQ(saved_.front().PresentationType, QLatin1Char('T'));
    EXPECT_EQ(saved_.front().SourceFile, TempFolder + QStringLiteral("/My table.xls"));
    EXPECT_EQ(saved_.front().FileTitle, QStringLiteral("My table"));
    EXPECT_TRUE(QFile::exists(TempFolder + QStringLiteral("/My table.xls")));
    EXPECT_EQ(wizard.Step(), WizardFrame::kDoneStep);
    EXPECT_EQ(frame.busy, 0);
}

// Every kind of file, from the preview on; the table stays in front.
TEST_F(WizardsTest, ATableIsExported) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    EXPECT_FALSE(Named<QPushButton>(wizard, "cmdExport")->isVisible());
    Click(wizard, "CmdNext");
    Named<QLineEdit>(wizard, "txtTitle")->setText(QStringLiteral("My table"));
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 3);
    ASSERT_TRUE(Named<QPushButton>(wizard, "cmdExport")->isVisible());
    Picture(wizard, "table-export");
    for (const char* ending : {".htm", ".xls", ".xlsx", ".ods", ".txt", ".csv", ".table.csv", ".sdmx.csv", ".json",
                               ".px", ".geojson", ".shp"}) {
        const QString file = Folder() + QStringLiteral("/My table") + QLatin1String(ending);
        QString suggested;
        SetFileAnswerer([&](const FileQuestion& question) {
            suggested = question.name;
            return file;
        });
        answers = {MessageCode::Yes}; // what doesn't fit is told
        Click(wizard, "cmdExport");
        EXPECT_TRUE(suggested.startsWith(QStringLiteral("My table."))) << suggested.toStdString();
        EXPECT_GT(QFileInfo(file).size(), 100) << ending;
        EXPECT_EQ(wizard.Step(), 3);
        EXPECT_TRUE(Named<QLabel>(wizard, "StatusBar1")->text().contains(QLatin1String(ending))) << ending;
    }
    const test::ReadSheet sheet = test::ReadXls(Folder() + QStringLiteral("/My table.xls")).front();
    EXPECT_EQ(sheet.Text(1, 1), QStringLiteral("My table"));
    messages.clear();
    SetFileAnswerer([](const FileQuestion&) { return QStringLiteral("/proc/Table.px"); });
    Click(wizard, "cmdExport");
    EXPECT_FALSE(messages.isEmpty()) << "the failure is told";
}

TEST_F(WizardsTest, BackFromSavingKeepsThePreviewAndCancelAsks) {
    SelectEverything();
    frmTableWizard wizard([](const FinishedPresentation&, QWidget*) { return false; });
    wizard.show();
    Click(wizard, "CmdFinish"); // goes as far as it can
    EXPECT_EQ(wizard.Step(), 3);
    answers = {MessageCode::No, MessageCode::Yes};
    Click(wizard, "CmdCancel");
    EXPECT_TRUE(wizard.isVisible());
    QTest::keyClick(&wizard, Qt::Key_Escape);
    EXPECT_FALSE(wizard.isVisible());
    EXPECT_EQ(messages, (QStringList{QStringLiteral("007"), QStringLiteral("007")}));
}

TEST_F(WizardsTest, NoDataStaysAtTheStep) {
    frmTableWizard wizard(save_); // nothing selected
    wizard.show();
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 2);
    Click(wizard, "CmdNext");
    EXPECT_EQ(wizard.Step(), 2);
    Named<QCheckBox>(wizard, "chkAddColor")->setChecked(true);
    Click(wizard, "cmdAddColor");
    EXPECT_EQ(messages, (QStringList{QStringLiteral("256"), QStringLiteral("256")}));
    EXPECT_TRUE(Named<QPushButton>(wizard, "CmdBack")->isEnabled());
}

TEST_F(WizardsTest, RangesAreEditedOnADraft) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    Named<QCheckBox>(wizard, "chkAddColor")->setChecked(true);
    Click(wizard, "cmdAddColor");
    Picture(wizard, "table-colors");
    EXPECT_FALSE(Named<QPushButton>(wizard, "CmdNext")->isEnabled());
    auto* grid = Named<QTableWidget>(wizard, "grdAddColor");
    auto* indicator = Named<QComboBox>(wizard, "cmbIndicator");
    ASSERT_EQ(indicator->count(), 2);
    indicator->setCurrentIndex(indicator->findText(QStringLiteral("Literacy")));
    const QString before = grid->item(0, 2)->text();
    grid->item(0, 2)->setText(QStringLiteral("rubbish"));
    EXPECT_EQ(grid->item(0, 2)->text(), before);
    EXPECT_EQ(messages.size(), 1);
    grid->item(0, 1)->setText(QStringLiteral("100000")); // above its end
    EXPECT_EQ(messages.size(), 2);
    EXPECT_NE(grid->item(0, 1)->text(), QStringLiteral("100000"));
    messages.clear();
    grid->item(0, 1)->setText(QStringLiteral("0"));
    grid->item(0, 2)->setText(QStringLiteral("1000"));
    EXPECT_EQ(grid->item(0, 0)->text(), QStringLiteral("0 - 1000"));
    const int all = QLocale().toInt(grid->item(0, 3)->text());
    EXPECT_GT(all, 3);

    Named<QLineEdit>(wizard, "txtMinValue")->setText(QStringLiteral("x"));
    Click(wizard, "cmdApply");
    EXPECT_EQ(messages.size(), 1);
    Named<QLineEdit>(wizard, "txtMinValue")->setText(QStringLiteral("0"));
    Named<QLineEdit>(wizard, "txtMaxValue")->setText(QStringLiteral("90"));
    Named<QComboBox>(wizard, "cmbBreak")->setCurrentIndex(1);
    Click(wizard, "cmdApply");
    EXPECT_EQ(grid->item(2, 2)->text().toDouble(), 90);
    SetColorAnswerer([](const QColor&) { return QColor(Qt::blue); });
    Q_EMIT grid->cellActivated(1, 4);
    EXPECT_EQ(grid->item(1, 4)->background().color(), QColor(Qt::blue));
    Click(wizard, "cmdCancelOK"); // drops it all
    Click(wizard, "cmdAddColor");
    EXPECT_NE(grid->item(1, 4)->background().color(), QColor(Qt::blue));
    Click(wizard, "cmdAddOK");
    EXPECT_TRUE(Named<QPushButton>(wizard, "CmdNext")->isEnabled());
}

TEST_F(WizardsTest, ApplyKeepsLimitsThatNobodyChanged) {
    SelectEverything();
    Run(QStringLiteral("UPDATE Data SET Datavalue = '0.125' WHERE IUSNId = 3"));
    for (const bool separators : {false, true}) {
        SysNumFormat = separators;
        frmTableWizard wizard(save_);
        wizard.show();
        Click(wizard, "CmdNext");
        Named<QCheckBox>(wizard, "chkAddColor")->setChecked(true);
        Click(wizard, "cmdAddColor");
        auto* indicator = Named<QComboBox>(wizard, "cmbIndicator");
        for (int i = 0; i < indicator->count(); ++i) {
            indicator->setCurrentIndex(i);
            const QString least = Named<QLineEdit>(wizard, "txtMinValue")->text();
            const QString from = Named<QTableWidget>(wizard, "grdAddColor")->item(0, 1)->text();
            Click(wizard, "cmdApply");
            EXPECT_EQ(Named<QTableWidget>(wizard, "grdAddColor")->item(0, 1)->text(), from) << separators << i;
            indicator->setCurrentIndex(-1);
            indicator->setCurrentIndex(i);
            EXPECT_EQ(Named<QLineEdit>(wizard, "txtMinValue")->text(), least) << separators << i;
        }
    }
}

TEST_F(WizardsTest, TheProcessDiesWhileATableIsBuilt) {
    SelectEverything();
    frmTableWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    office::SpreadsheetApplication& application = office::SpreadsheetApplication::Instance();
    for (const int delay : {0, 60, 250}) {
        application.Start();
        messages.clear();
        QTimer::singleShot(delay, &wizard,
                           [&application] { ::kill(static_cast<pid_t>(application.ProcessId()), SIGKILL); });
        Click(wizard, "CmdNext");
        ASSERT_EQ(messages.size(), wizard.Step() == 2 ? 1 : 0) << delay;
        EXPECT_TRUE(wizard.isEnabled());
        EXPECT_EQ(frame.busy, 0);
        QTest::qWait(300); // the timer may come after a build that was quicker
        if (wizard.Step() == 3) Click(wizard, "CmdBack");
        Click(wizard, "CmdNext");
        ASSERT_EQ(wizard.Step(), 3) << delay;
        EXPECT_EQ(test::ReadXls(wizard.WorkbookFile()).size(), 3u);
        Click(wizard, "CmdBack");
    }
}

TEST_F(WizardsTest, LeavingAsksOnlyWhenSomethingWasEntered) {
    SelectEverything();
    for (const int steps : {0, 1}) {
        frmTableWizard table(save_);
        table.show();
        frmGraphWizard graph(save_);
        graph.show();
        for (int step = 0; step < steps; ++step) {
            Click(table, "CmdNext");
            Click(graph, "CmdNext");
        }
        Click(table, "CmdCancel");
        Click(graph, "CmdCancel");
        EXPECT_FALSE(table.isVisible() || graph.isVisible());
        EXPECT_EQ(messages, QStringList());
    }
    frmTableWizard changed(save_);
    changed.show();
    DoubleClick(changed, "LVColumns", QStringLiteral("IUS.Unit"));
    Click(changed, "CmdCancel");
    EXPECT_EQ(messages, QStringList{QStringLiteral("007")});
}

TEST_F(WizardsTest, ADraftGoesFromOneWizardToAnother) {
    SelectEverything();
    frmTableWizard first(save_);
    DoubleClick(first, "LVColumns", QStringLiteral("IUS.Unit"));
    Named<QCheckBox>(first, "chkSameDecimals")->setChecked(true);
    Named<QCheckBox>(first, "chkSort")->setChecked(true);
    Named<QLineEdit>(first, "txtTitle")->setText(QStringLiteral("Mine"));
    const auto draft = ReadTableDraft(first.DraftText());
    ASSERT_TRUE(draft);
    frmTableWizard second(save_);
    EXPECT_NE(second.DraftText(), first.DraftText());
    second.SetDraft(*draft);
    EXPECT_EQ(second.DraftText(), first.DraftText());
    EXPECT_EQ(Keys(second, "LVAvailable"), QStringList{QStringLiteral("IUS.Unit")});
}

TEST_F(WizardsTest, AClickBesideTheKindsKeepsTheChosenOne) {
    SelectEverything();
    frmGraphWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    auto* kinds = Named<QListWidget>(wizard, "lstKinds");
    QTest::mouseClick(kinds->viewport(), Qt::LeftButton, {}, kinds->visualItemRect(kinds->item(3)).center());
    EXPECT_EQ(wizard.Draft().options.kind, office::ChartKind::Pie);
    QTest::mouseClick(kinds->viewport(), Qt::LeftButton, {}, kinds->viewport()->rect().bottomRight() - QPoint(3, 3));
    EXPECT_EQ(wizard.Draft().options.kind, office::ChartKind::Pie);
    EXPECT_EQ(kinds->selectedItems(), QList<QListWidgetItem*>{kinds->item(3)});
}

TEST_F(WizardsTest, BuildingCanBeGivenUp) {
    SelectEverything();
    for (int area = 1000; area < 1100; ++area) {
        Run(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID, AreaName, AreaLevel) VALUES ('G%1', %1, "
                           "'A%1', 'Area %1', 1)")
                .arg(area));
        AddValue(1, 1, area, 1, QString::number(area), 1);
    }
    ShowFootnotes = true;
    frmTableWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    const QStringList rows = Keys(wizard, "LVRows");
    auto* cancel = Named<QPushButton>(wizard, "CmdCancel");
    auto* next = Named<QPushButton>(wizard, "CmdNext");
    for (const bool byKey : {false, true}) {
        QTimer act;
        QObject::connect(&act, &QTimer::timeout, &wizard, [&] {
            QTest::mouseClick(next, Qt::LeftButton); // hits nothing
            if (byKey)
                QTest::keyClick(next, Qt::Key_Escape);
            else
                QTest::mouseClick(cancel, Qt::LeftButton);
        });
        act.start(1);
        Click(wizard, "CmdNext");
        act.stop();
        EXPECT_EQ(wizard.Step(), 2) << byKey;
        EXPECT_TRUE(wizard.isVisible());
        EXPECT_EQ(messages, QStringList());
        EXPECT_EQ(Keys(wizard, "LVRows"), rows);
        EXPECT_TRUE(QDir(TempFolder).entryList({QStringLiteral("*.xls")}).isEmpty());
    }
    Click(wizard, "CmdNext");
    EXPECT_EQ(wizard.Step(), 3);
}

TEST_F(WizardsTest, TheProcessHangsWhileAGraphIsBuilt) {
    SelectEverything();
    frmGraphWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdNext");
    office::SpreadsheetApplication& application = office::SpreadsheetApplication::Instance();
    application.Start();
    application.SetTimeLimit(std::chrono::milliseconds(700));
    QTimer::singleShot(30, &wizard, [&application] { ::kill(static_cast<pid_t>(application.ProcessId()), SIGSTOP); });
    QElapsedTimer clock;
    clock.start();
    Click(wizard, "CmdNext");
    EXPECT_LT(clock.elapsed(), test::TimeBound(6000));
    EXPECT_EQ(wizard.Step(), 2);
    EXPECT_EQ(messages.size(), 1);
    application.SetTimeLimit(std::chrono::seconds(30));
    Click(wizard, "CmdNext");
    EXPECT_EQ(wizard.Step(), 3);
    EXPECT_EQ(test::ReadXls(wizard.WorkbookFile()).size(), 4u);
}

TEST_F(WizardsTest, AGraphOfTimeAloneGetsAYAxis) {
    SelectAreas(QStringLiteral("WHERE AreaNId = 1"));
    SelectTimes();
    SelectIus(QStringLiteral("WHERE IUS.IUSNId = 1 AND S.SourceNId = 1"));
    frmGraphWizard wizard(save_);
    wizard.show();
    Click(wizard, "CmdReset");
    DoubleClick(wizard, "LVAvailable", QStringLiteral("T.TimePeriod"));
    DoubleClick(wizard, "LVYAxis", QStringLiteral("T.TimePeriod"));
    Click(wizard, "cmdToColumns");
    Click(wizard, "CmdNext");
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 3) << messages.join(' ').toStdString();
    EXPECT_EQ(Keys(wizard, "LVYAxis"), (QStringList{QStringLiteral("A.AreaID"), QStringLiteral("A.AreaName")}));
    const office::Workbook book = office::SpreadsheetApplication::Instance().OpenWorkbook(wizard.WorkbookFile());
    EXPECT_EQ(book.Sheet(1).ChartAt(1).Title(), SingleValues(2).join(QStringLiteral(", ")));
    EXPECT_EQ(SingleValues(1), QStringList{QStringLiteral("Population")});
}

TEST_F(WizardsTest, TheGraphNeedsAnXAxisAndSuggestsLinesForTime) {
    SelectEverything();
    frmGraphWizard wizard(save_);
    wizard.show();
    Picture(wizard, "graph-1");
    for (const QString& key : Keys(wizard, "LVXAxis"))
        DoubleClick(wizard, "LVXAxis", key);
    Click(wizard, "CmdNext");
    Click(wizard, "CmdSave");
    EXPECT_EQ(messages, (QStringList{QStringLiteral("204"), QStringLiteral("206")}));
    DoubleClick(wizard, "LVYAxis", QStringLiteral("T.TimePeriod"));
    Click(wizard, "cmdToColumns");
    EXPECT_EQ(Keys(wizard, "LVXAxis"), QStringList{QStringLiteral("T.TimePeriod")});
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 2);
    EXPECT_EQ(Named<QListWidget>(wizard, "lstKinds")->currentRow(), 2);
    Picture(wizard, "graph-2");
    Click(wizard, "CmdNext");
    ASSERT_EQ(wizard.Step(), 3);
    EXPECT_EQ(test::ReadXls(wizard.WorkbookFile()).size(), 4u);
    EXPECT_TRUE(Keys(wizard, "LVYAxis").contains(QStringLiteral("IUS.[Indicator]"))); // moved, so that nothing is lost
    Click(wizard, "CmdNext");
    ASSERT_EQ(saved_.size(), 1);
    EXPECT_EQ(saved_.front().PresentationType, QLatin1Char('G'));
}

} // namespace tessaro
