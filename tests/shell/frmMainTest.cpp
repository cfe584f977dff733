#include "shell/frmMain.h"

#include "controls/FileDialogs.h"
#include "platform/ShellOpen.h"
#include "platform/SingleInstance.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/FrameTest.h"
#include "shell/StageBanner.h"
#include "shell/StatusBar.h"
#include "support/SampleApplication.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace tessaro {

class frmMainTest : public test::FrameTest {
  protected:
    void Copy(const QString& from, const QString& to) { ASSERT_TRUE(QFile::copy(from, to)); }
    void WriteJunk(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("this is no database, though it has the name of one");
    }
    QString Data(const QString& name) const { return Application() + QLatin1String("/Data/") + name; }
    QStringList Items() const {
        const auto* box = Find<QComboBox>(QStringLiteral("cmbAddress"));
        QStringList items;
        for (int i = 0; i < box->count(); ++i)
            items << box->itemText(i);
        return items;
    }
    /// Closes the next modal window, and tells its name.
    void CloseNextDialog(QString* name) {
        QTimer::singleShot(50, window.get(), [name] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog) return;
            *name = dialog->objectName();
            static_cast<QDialog*>(dialog)->reject();
        });
    }
    qint64 Rows(const char* table) {
        Records rows = Select(QStringLiteral("SELECT Count(*) AS N FROM ") + QLatin1String(table));
        return rows.atEnd() ? -1 : rows.Number(std::size_t{0});
    }
};

// --- Start -------------------------------------------------------------------------------------------------------

TEST_F(frmMainTest, StartsOnTheHomePageWithoutADatabase) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    EXPECT_EQ(Address(), QStringLiteral("Select a database"));
    EXPECT_FALSE(DatabaseOpen);
    EXPECT_EQ(CurrentStage, -1);
    EXPECT_TRUE(HomeIsShown);
    EXPECT_FALSE(Find(QStringLiteral("picBanner_1"))->isVisible());
    EXPECT_EQ(Items(), QStringList{QStringLiteral("Local://Sample 1.0/Sample.mdb")});
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Sample"));
}

TEST_F(frmMainTest, EveryStageAsksForADatabaseFirst) {
    ASSERT_TRUE(Start());
    for (int stage = 0; stage < 4; ++stage) {
        messages.clear();
        Click(QStringLiteral("picIndicators_%1").arg(stage));
        EXPECT_EQ(messages, QStringList{QStringLiteral("026")}) << stage;
    }
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
}

TEST_F(frmMainTest, EndsWithItsMessageWhenTheSettingsAreMissing) {
    QFile::remove(Application() + QLatin1String("/TS.ini"));
    EXPECT_FALSE(Start());
    EXPECT_EQ(messages, QStringList{QStringLiteral("002")});
    EXPECT_FALSE(window->isVisible());
}

TEST_F(frmMainTest, ASecondStartEndsSilently) {
    ASSERT_TRUE(Start());
    frmMain second;
    EXPECT_FALSE(second.MDIForm_Load(QStringLiteral("/a") + Application()));
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(second.isVisible());
}

TEST_F(frmMainTest, OpensTheDefaultDatabaseWhenNoneIsRemembered) {
    SetProductSetting(QStringLiteral("DEFAULT DATABASE NAME"), QStringLiteral("sample.MDB"));
    ASSERT_TRUE(Start());
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    EXPECT_TRUE(Connection && DatabaseOpen);
    EXPECT_EQ(Address(), QStringLiteral("Local://Sample 1.0/Sample.mdb"));
    Click(QStringLiteral("picIndicators_0"));
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_FALSE(HomeIsShown);
    EXPECT_TRUE(Find(QStringLiteral("picBanner_1"))->isVisible());
}

TEST_F(frmMainTest, GoesStraightToTheStagesWhenTheHomePageIsSkipped) {
    ASSERT_TRUE(StartInStages());
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_TRUE(ReopenedLastDatabase);
    EXPECT_EQ(VisitedStages, (QStringList{QString(), QStringLiteral("frmIndicators")}));
}

TEST_F(frmMainTest, ARememberedFileThatIsNoDatabaseLeavesTheHomePage) {
    WriteJunk(Data(QStringLiteral("Junk.mdb")));
    SetPreference(QStringLiteral("LAST MDB FILE USED"), Data(QStringLiteral("Junk.mdb")));
    SetPreference(QStringLiteral("SKIP THE SPLASH"), QStringLiteral("True"));
    ASSERT_TRUE(Start());
    EXPECT_EQ(messages, QStringList{QStringLiteral("316")});
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    EXPECT_FALSE(DatabaseOpen);
    EXPECT_EQ(Address(), QStringLiteral("Select a database"));
}

TEST_F(frmMainTest, ADatabaseOutsideTheDataFolderIsShownByItsPath) {
    const QString path = Folder() + QLatin1String("/It's [mine] \u0414.mdb");
    Copy(SampleDatabase(), path);
    SetPreference(QStringLiteral("LAST MDB FILE USED"), path);
    ASSERT_TRUE(Start());
    EXPECT_EQ(Address(), path);
    EXPECT_TRUE(Items().contains(path));
    EXPECT_TRUE(Connection && DatabaseOpen);
}

// --- The database change -----------------------------------------------------------------------------------------

TEST_F(frmMainTest, WhatIsTypedDecides) {
    WriteJunk(Data(QStringLiteral("Junk.mdb")));
    struct Case {
        const char* typed;
        const char* message; ///< empty for none
        const char* screen;
        bool open;
    };
    const Case cases[] = {
        {"   ", "", "frmIndicators", true},
        {"sample", "", "frmIndicators", true},
        {"SAMPLE.MDB", "", "frmIndicators", true},
        {"Local://Sample 1.0/Sample.mdb", "", "frmIndicators", true},
        {"Local://Sample 9.9/sample.mdb", "", "frmIndicators", true},
        {"Junk", "316", "frmIndicators", true},
        {"Nowhere", "025", "frmIndicators", true},
        {"C:\\Nowhere\\It's.mdb", "025", "frmIndicators", true},
    };
    for (const Case& c : cases) {
        window.reset();
        QDir(Folder() + QLatin1String("/Tessaro")).removeRecursively();
        ASSERT_TRUE(StartInStages());
        messages.clear();
        Type(QString::fromUtf8(c.typed));
        EXPECT_EQ(messages.join(QLatin1Char(',')), QLatin1String(c.message)) << c.typed;
        EXPECT_EQ(Screen(), QLatin1String(c.screen)) << c.typed;
        EXPECT_EQ(DatabaseOpen, c.open) << c.typed;
    }
}

TEST_F(frmMainTest, ARefusedDatabaseOrAMistypedAddressLeavesSelectionAndAddress) {
    WriteJunk(Data(QStringLiteral("Junk.mdb")));
    ASSERT_TRUE(StartInStages());
    window->GoToStage(1);
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (1, '1990')")));
    const std::pair<const char*, const char*> cases[] = {
        {"Junk", "316"}, {"Smaple", "025"}, {"/nowhere/at.mdb", "025"}};
    for (const auto& [typed, message] : cases) {
        messages.clear();
        Type(QLatin1String(typed));
        EXPECT_EQ(messages, QStringList{QLatin1String(message)}) << typed;
        EXPECT_EQ(Rows("_SelTimePeriod"), 1) << typed;
        EXPECT_EQ(CurrentStage, 1) << typed;
        EXPECT_TRUE(DatabaseOpen) << typed;
        EXPECT_EQ(Screen(), QStringLiteral("frmTime")) << typed;
        EXPECT_EQ(Address(), QStringLiteral("Local://Sample 1.0/Sample.mdb")) << typed;
    }
}

TEST_F(frmMainTest, AnotherDatabaseEmptiesTheSelectionAndTheHistory) {
    Copy(SampleDatabase(), Data(QStringLiteral("Other.mdb")));
    ASSERT_TRUE(StartInStages());
    window->GoToStage(2);
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (1, '1990')")));
    Type(QStringLiteral("Other"));
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_EQ(Rows("_SelTimePeriod"), 0);
    EXPECT_EQ(VisitedStages, (QStringList{QString(), QStringLiteral("frmIndicators")}));
    EXPECT_EQ(CurrentStage, 0);
    EXPECT_EQ(Address(), QStringLiteral("Local://Sample 1.0/Other.mdb"));
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Find(QStringLiteral("frmAreas")), nullptr);
}

TEST_F(frmMainTest, AFileRemovedAfterItWasListedIsReported) {
    Copy(SampleDatabase(), Data(QStringLiteral("Other.mdb")));
    ASSERT_TRUE(StartInStages());
    QFile::remove(Data(QStringLiteral("Other.mdb")));
    Type(QStringLiteral("Local://Sample 1.0/Other.mdb"));
    EXPECT_EQ(messages, QStringList{QStringLiteral("025")});
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    Type(QStringLiteral("Sample"));
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Sample \u2013 ")));
}

TEST_F(frmMainTest, TheFileDialogOpensWhatIsChosen) {
    const QString elsewhere = Folder() + QLatin1String("/Elsewhere.mdb");
    Copy(SampleDatabase(), elsewhere);
    WriteJunk(Folder() + QLatin1String("/Junk.mdb"));
    ASSERT_TRUE(StartInStages());
    QString answer;
    SetFileAnswerer([&](const FileQuestion& question) {
        EXPECT_TRUE(question.filter.contains(QLatin1String("*.mdb")));
        return answer;
    });
    window->Databases().mnuFileOpen_Click();
    EXPECT_EQ(CurrentDatabase, SampleDatabase()) << "cancelled";
    answer = Folder() + QLatin1String("/Junk.mdb");
    window->Databases().mnuFileOpen_Click();
    EXPECT_EQ(messages, QStringList{QStringLiteral("316")});
    EXPECT_FALSE(Items().contains(answer)) << "a refused file must not stay in the list";
    answer = elsewhere;
    window->Databases().mnuFileOpen_Click();
    EXPECT_EQ(CurrentDatabase, elsewhere);
    EXPECT_EQ(Address(), elsewhere);
    SetFileAnswerer({});
}

TEST_F(frmMainTest, ADatabaseWithoutTheLanguageComesHomeAndListsWhatItHas) {
    const QString path = Data(QStringLiteral("French.mdb"));
    Copy(SampleDatabase(), path);
    {
        const auto connection = CreateTheConnection(path);
        ASSERT_TRUE(connection);
        ASSERT_TRUE(
            Execute(QStringLiteral("DELETE * FROM [Language] WHERE LanguageName = 'English [en]'"), connection.get()));
        ASSERT_TRUE(Execute(QStringLiteral("UPDATE [Language] SET LanguageDefault = True"), connection.get()));
    }
    ASSERT_TRUE(StartInStages());
    QString dialog;
    CloseNextDialog(&dialog);
    Find<QComboBox>(QStringLiteral("cmbAddress"))->setEditText(QStringLiteral("French"));
    window->Databases().picGo_Click();
    EXPECT_EQ(dialog, QStringLiteral("frmLanguage"));
    EXPECT_FALSE(LanguageInDatabase);
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    // A stage asks the same question again.
    dialog.clear();
    CloseNextDialog(&dialog);
    Click(QStringLiteral("picIndicators_1"));
    EXPECT_EQ(dialog, QStringLiteral("frmLanguage"));
}

// --- The list of databases ---------------------------------------------------------------------------------------

TEST_F(frmMainTest, TheListFollowsTheDataFolder) {
    ASSERT_TRUE(StartInStages());
    Copy(SampleDatabase(), Data(QStringLiteral("New one.mdb")));
    Copy(SampleDatabase(), Data(QStringLiteral("InfoSel.mdb")));
    window->Timer1_Timer();
    EXPECT_TRUE(Items().contains(QStringLiteral("Local://Sample 1.0/New one.mdb")));
    EXPECT_TRUE(Items().contains(QStringLiteral("Local://Sample 1.0/InfoSel.mdb")));
    EXPECT_EQ(Address(), QStringLiteral("Local://Sample 1.0/Sample.mdb"));
    const auto count = Items().size();
    window->Timer1_Timer();
    EXPECT_EQ(Items().size(), count) << "a second look adds nothing";
    QFile::remove(Data(QStringLiteral("New one.mdb")));
    window->Timer1_Timer();
    EXPECT_FALSE(Items().contains(QStringLiteral("Local://Sample 1.0/New one.mdb")));
    EXPECT_EQ(CurrentStage, 0) << "no database may open by itself";
}

TEST_F(frmMainTest, TheRescanKeepsWhatIsBeingTyped) {
    ASSERT_TRUE(StartInStages());
    Find<QComboBox>(QStringLiteral("cmbAddress"))->setEditText(QStringLiteral("half a na"));
    Copy(SampleDatabase(), Data(QStringLiteral("New.mdb")));
    window->Timer1_Timer();
    EXPECT_EQ(Address(), QStringLiteral("half a na"));
    QFile::remove(Data(QStringLiteral("New.mdb")));
    window->Timer1_Timer();
    EXPECT_EQ(Address(), QStringLiteral("half a na"));
}

TEST_F(frmMainTest, TheHomePageListsTheSameDatabases) {
    ASSERT_TRUE(Start());
    const auto* list = Find<QListWidget>(QStringLiteral("lstDatabases"));
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("Sample"));
    Copy(SampleDatabase(), Data(QStringLiteral("Zwei.mdb")));
    window->Timer1_Timer();
    ASSERT_EQ(list->count(), 2);
    Q_EMIT const_cast<QListWidget*>(list)->itemClicked(list->item(1));
    EXPECT_EQ(Address(), QStringLiteral("Local://Sample 1.0/Zwei.mdb"));
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
}

// --- The way between the stages ----------------------------------------------------------------------------------

TEST_F(frmMainTest, BackAndForwardGoByStage) {
    ASSERT_TRUE(StartInStages());
    Click(QStringLiteral("picBannerButtons_1"));
    Click(QStringLiteral("picBannerButtons_2"));
    EXPECT_EQ(Screen(), QStringLiteral("frmAreas"));
    EXPECT_TRUE(IsEnabled(QStringLiteral("Toolbar1_0")));
    Click(QStringLiteral("Toolbar1_0"));
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
    Click(QStringLiteral("Toolbar1_0"));
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_FALSE(IsEnabled(QStringLiteral("Toolbar1_0")));
    EXPECT_TRUE(IsEnabled(QStringLiteral("Toolbar1_1")));
    Click(QStringLiteral("Toolbar1_1"));
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
    EXPECT_TRUE(IsEnabled(QStringLiteral("Toolbar1_0")));
}

TEST_F(frmMainTest, HomeKeepsTheHistoryButStopsTheButtons) {
    ASSERT_TRUE(StartInStages());
    window->GoToStage(1);
    window->GoToStage(2);
    const QStringList visited = VisitedStages;
    Click(QStringLiteral("Toolbar1_4"));
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    EXPECT_EQ(CurrentStage, -1);
    EXPECT_EQ(VisitedStages, visited);
    EXPECT_FALSE(IsEnabled(QStringLiteral("Toolbar1_0")));
    EXPECT_FALSE(IsEnabled(QStringLiteral("Toolbar1_1")));
    EXPECT_TRUE(IsEnabled(QStringLiteral("Toolbar1_5")));
    Click(QStringLiteral("picIndicators_2"));
    EXPECT_EQ(Screen(), QStringLiteral("frmAreas"));
}

TEST_F(frmMainTest, SearchIsForTheScreensWithLists) {
    ASSERT_TRUE(StartInStages());
    const bool expected[] = {true, false, true};
    for (int stage = 0; stage < 3; ++stage) {
        window->GoToStage(stage);
        EXPECT_EQ(IsEnabled(QStringLiteral("Toolbar1_5")), expected[stage]) << stage;
    }
    // Stop, History and Mail have no action.
    for (const int item : {2, 7, 8})
        EXPECT_FALSE(IsEnabled(QStringLiteral("Toolbar1_%1").arg(item)));
}

TEST_F(frmMainTest, TheDataViewAsksForWhatIsMissing) {
    ASSERT_TRUE(StartInStages());
    Click(QStringLiteral("picBannerButtons_3"));
    EXPECT_EQ(messages, QStringList{QStringLiteral("016")});
    EXPECT_EQ(CurrentStage, 0);
    messages.clear();
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId) VALUES (1)")));
    Click(QStringLiteral("picBannerButtons_3"));
    EXPECT_EQ(messages, QStringList{QStringLiteral("023")});
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
}

TEST_F(frmMainTest, TheBannerIsQuietWhileTheLanguageIsMissing) {
    ASSERT_TRUE(StartInStages());
    window->SetStatusText(QStringLiteral("old"));
    LanguageInDatabase = false;
    Click(QStringLiteral("picBannerButtons_2"));
    EXPECT_EQ(CurrentStage, 0);
    EXPECT_TRUE(Find<StatusBar>(QStringLiteral("sbStatusBar"))->Text().isEmpty());
    LanguageInDatabase = true;
}

TEST_F(frmMainTest, TheBannerTellsWhatIsDone) {
    ASSERT_TRUE(StartInStages());
    auto* indicators = Find<StageButton>(QStringLiteral("picBannerButtons_0"));
    EXPECT_EQ(indicators->State(), StepState::Current);
    auto* form = Find(QStringLiteral("frmIndicators"));
    form->findChild<QAbstractButton*>(QStringLiteral("cmdAddAll"))->click();
    window->GoToStage(1);
    EXPECT_EQ(indicators->State(), StepState::Done);
    EXPECT_EQ(Find<StageButton>(QStringLiteral("picBannerButtons_1"))->State(), StepState::Current);
    EXPECT_EQ(Find<StageButton>(QStringLiteral("picBannerButtons_2"))->State(), StepState::Next);
}

// --- Exit --------------------------------------------------------------------------------------------------------

TEST_F(frmMainTest, NoKeepsTheProgramAndItsPreferences) {
    ASSERT_TRUE(StartInStages());
    const QByteArray before = PreferencesOnDisk();
    Mute = false;
    answers = {MessageCode::No};
    EXPECT_FALSE(window->close());
    EXPECT_EQ(messages, QStringList{QStringLiteral("034")});
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(Connection);
    EXPECT_EQ(PreferencesOnDisk(), before);
}

TEST_F(frmMainTest, YesSavesAndCleansUp) {
    ASSERT_TRUE(StartInStages());
    const QByteArray before = PreferencesOnDisk();
    ASSERT_TRUE(QDir().mkpath(TempFolder + QLatin1String("/MData_/MFiles_")));
    Mute = false;
    answers = {MessageCode::Yes};
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(Connection);
    EXPECT_NE(PreferencesOnDisk(), before);
    EXPECT_FALSE(QDir(TempFolder + QLatin1String("/MData_")).exists());
}

TEST_F(frmMainTest, ARunThatBrokeOffLeavesItsSelectionInTheLanguageThatComesBack) {
    ASSERT_TRUE(StartInStages());
    window->Settings().ChangeLanguage(QStringLiteral("Français [fr]"));
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the screens of before
    Click(QStringLiteral("cmdAllFilter"));
    const auto names = [] {
        return Select(QStringLiteral("SELECT DISTINCT [Indicator] FROM _SelIUSNId ORDER BY [Indicator]")).Joined();
    };
    const qint64 rows = Rows("_SelIUSNId");
    ASSERT_EQ(names(), QStringLiteral("Alphabétisation"));
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (1, '1990')")));
    window.reset(); // nothing of what an exit saves
    Connection.reset();
    ASSERT_TRUE(Start());
    EXPECT_EQ(Language, QStringLiteral("English [en]"));
    EXPECT_EQ(Rows("_SelIUSNId"), rows);
    EXPECT_EQ(names(), QStringLiteral("Literacy"));
    EXPECT_EQ(Find<StageButton>(QStringLiteral("picBannerButtons_1"))->State(), StepState::Done) << "before it opens";
}

// --- Bars and menus ----------------------------------------------------------------------------------------------

TEST_F(frmMainTest, LanguageChangeTakesEffectAtOnce) {
    ASSERT_TRUE(StartInStages());
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (1, '1990')")));
    window->Settings().ChangeLanguage(QStringLiteral("Français [fr]"));
    EXPECT_EQ(Find<QLabel>(QStringLiteral("lblAddress"))->text(), QStringLiteral("Adresse"));
    EXPECT_EQ(LanguageSuffix, QStringLiteral("_fr"));
    EXPECT_TRUE(DatabaseOpen && LanguageInDatabase);
    EXPECT_EQ(Rows("_SelTimePeriod"), 1);
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
}

TEST_F(frmMainTest, AnotherLanguageKeepsTheSelectionAndTheStage) {
    ASSERT_TRUE(StartInStages());
    Click(QStringLiteral("cmdAllFilter"));
    const qint64 rows = Rows("_SelIUSNId");
    ASSERT_GT(rows, 0);
    window->GoToStage(1);
    window->Settings().ChangeLanguage(QStringLiteral("Français [fr]"));
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
    EXPECT_EQ(Rows("_SelIUSNId"), rows);
    EXPECT_EQ(Select(QStringLiteral("SELECT DISTINCT [Indicator] FROM _SelIUSNId")).Joined(),
              QStringLiteral("Alphabétisation"));
    EXPECT_EQ(Find<StageButton>(QStringLiteral("picBannerButtons_0"))->State(), StepState::Done);
}

TEST_F(frmMainTest, ADatabaseWithoutTheLanguageOpensInTheOneThatIsChosen) {
    const QString path = Data(QStringLiteral("French.mdb"));
    Copy(SampleDatabase(), path);
    {
        const auto connection = CreateTheConnection(path);
        for (const char* sql : {"DELETE * FROM [Language] WHERE LanguageName = 'English [en]'",
                                "UPDATE [Language] SET LanguageDefault = True",
                                "INSERT INTO [Language] (LanguageName, LanguageCode) VALUES ('Breton [br]', 'br')"})
            ASSERT_TRUE(Execute(QLatin1String(sql), connection.get()));
    }
    ASSERT_TRUE(StartInStages());
    QTimer::singleShot(50, window.get(), [&] {
        auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(modal, nullptr);
        QDialog& dialog = *modal;
        Find<QAction>(QStringLiteral("mnuInfoSheets_0"))->trigger();
        EXPECT_EQ(messages, QStringList{QStringLiteral("026")}) << "it would show the database before";
        auto* list = dialog.findChild<QListWidget*>(QStringLiteral("lstAvailable"));
        auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"));
        list->setCurrentItem(list->findItems(QStringLiteral("Breton [br]"), Qt::MatchExactly).value(0));
        ok->click();
        EXPECT_EQ(messages.last(), QStringLiteral("TS_LanguageWithoutTexts"));
        EXPECT_TRUE(dialog.isVisible());
        list->setCurrentItem(list->findItems(QStringLiteral("Français [fr]"), Qt::MatchExactly).value(0));
        ok->click();
    });
    Find<QComboBox>(QStringLiteral("cmbAddress"))->setEditText(QStringLiteral("French"));
    window->Databases().picGo_Click();
    EXPECT_EQ(Language, QStringLiteral("Français [fr]"));
    EXPECT_TRUE(DatabaseOpen && LanguageInDatabase);
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_EQ(CurrentDatabase, path);
}

TEST_F(frmMainTest, TheStatusBarShowsTextAndProgress) {
    ASSERT_TRUE(StartInStages());
    auto* bar = Find<QProgressBar>(QStringLiteral("PB_Child"));
    EXPECT_FALSE(bar->isVisible());
    window->StartProgress();
    window->SetProgress(40);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->value(), 40);
    window->SetProgress(900);
    EXPECT_EQ(bar->value(), 100);
    window->EndProgress();
    EXPECT_FALSE(bar->isVisible());
    const bool muted = Mute;
    Click(QStringLiteral("panelSound"));
    EXPECT_NE(Mute, muted);
}

TEST_F(frmMainTest, TheWaitCursorNestsAndNeverStays) {
    ASSERT_TRUE(StartInStages());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    window->SetBusy(true);
    window->SetBusy(true);
    window->SetBusy(false);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    window->SetBusy(false);
    window->SetBusy(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmMainTest, TheViewMenuShowsAndHidesTheBars) {
    ASSERT_TRUE(Start());
    const QPair<const char*, const char*> bars[] = {{"mnu_ToolBars_Buttons_0", "picToolBar"},
                                                    {"mnu_ToolBars_Buttons_1", "frmAddressBar"},
                                                    {"mnuViewStatusBar", "sbStatusBar"}};
    for (const auto& [entry, bar] : bars) {
        auto* action = Find<QAction>(QLatin1String(entry));
        action->trigger();
        EXPECT_FALSE(Find(QLatin1String(bar))->isVisible()) << bar;
        action->trigger();
        EXPECT_TRUE(Find(QLatin1String(bar))->isVisible()) << bar;
    }
}

TEST_F(frmMainTest, HelpOpensThePageOfTheLanguage) {
    QDir().mkpath(Application() + QLatin1String("/Help"));
    WriteJunk(Application() + QLatin1String("/Help/Help English en.htm"));
    QStringList opened;
    SetShellOpener([&](const QUrl& url) {
        opened << url.fileName();
        return true;
    });
    ASSERT_TRUE(Start());
    Find<QAction>(QStringLiteral("mnu_Help_0"))->trigger();
    Find<QAction>(QStringLiteral("mnu_Help_2"))->trigger(); // no tour in this application: nothing opens
    SetShellOpener({});
    EXPECT_EQ(opened, QStringList{QStringLiteral("Help English en.htm")});
}

} // namespace tessaro
