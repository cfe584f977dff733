#include "controls/ColorDialogs.h"
#include "controls/DataTable.h"
#include "controls/FileDialogs.h"
#include "controls/KeyedList.h"
#include "dataview/frmData.h"
#include "platform/SingleInstance.h"
#include "session/DatabasePassword.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/Favourite.h"
#include "shell/FrameTest.h"
#include "shell/SettingsChange.h"
#include "shell/StageBanner.h"
#include "shell/frmAbout.h"
#include "shell/frmFavourites.h"
#include "shell/frmLanguage.h"
#include "shell/frmProperties.h"
#include "support/DataChanges.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

namespace tessaro {

/// The dialogs of this room, driven by their controls on a running frame.
class DialogTest : public test::FrameTest {
  protected:
    void TearDown() override {
        SetColorAnswerer({});
        SetFileAnswerer({});
    }

    template <class Control> static Control* In(QWidget& form, const char* name) {
        auto* control = form.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void Press(QWidget& form, const char* name) { In<QAbstractButton>(form, name)->click(); }
    static void Tick(QWidget& form, const char* name, bool on) { In<QAbstractButton>(form, name)->setChecked(on); }
    static void Choose(QWidget& form, const char* name, const QString& text) {
        auto* box = In<QComboBox>(form, name);
        const int place = box->findText(text);
        ASSERT_GE(place, 0) << name << " " << text.toStdString();
        box->setCurrentIndex(place);
    }
    /// Does something with the next modal window, which it must close.
    void WithNextDialog(const std::function<void(QDialog&)>& work) {
        QTimer::singleShot(50, window.get(), [work] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            work(*dialog);
        });
    }
    static qint64 Rows(const char* table) {
        Records rows = Select(QStringLiteral("SELECT Count(*) FROM ") + QLatin1String(table));
        return rows.atEnd() ? -1 : rows.Number(std::size_t{0});
    }
    /// Everything selected, and the data view in front.
    bool StartInDataView() {
        if (!StartInStages()) return false;
        Execute(
            QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, SourceNId, Deleted) SELECT IUSNId, SourceNId, False FROM "
                           "Indicator_Source"));
        Execute(
            QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod "
                           "FROM TimePeriod"));
        Execute(QStringLiteral(
            "INSERT INTO _SelArea (AreaGId, AreaNId, AreaID) SELECT AreaGId, AreaNId, AreaID FROM Area"));
        window->GoToStage(3);
        return CurrentStage == 3;
    }
};

TEST_F(DialogTest, PropertiesShowTheSession) {
    ASSERT_TRUE(StartInStages());
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    EXPECT_EQ(In<QComboBox>(form, "cmbLanguages")->currentText(), QStringLiteral("English [en]"));
    EXPECT_EQ(In<QComboBox>(form, "cmbLanguages")->count(), 2);
    EXPECT_EQ(In<QCheckBox>(form, "chkViewGridLines")->isChecked(), ViewGridLines);
    EXPECT_TRUE(In<QRadioButton>(form, "optContentOption_0")->isChecked());
    EXPECT_FALSE(In<QCheckBox>(form, "chkIndOptions_0")->isEnabled()) << "sectors can't be switched off";
    EXPECT_TRUE(In<QCheckBox>(form, "chkIndOptions_0")->isChecked());
    EXPECT_TRUE(In<QCheckBox>(form, "chkIndOptions_5")->isHidden()) << "the product doesn't offer institutions";
    EXPECT_EQ(In<QLineEdit>(form, "txtProdName")->text(), QStringLiteral("Sample 1.0"));
    EXPECT_EQ(In<QComboBox>(form, "cmbGeoRef")->count(), 2) << "Asia and Europe";
}

TEST_F(DialogTest, CancelAndAnUnchangedApplyTouchNothing) {
    ASSERT_TRUE(StartInStages());
    window->GoToStage(1);
    QWidget* screen = Find(QStringLiteral("frmTime"));
    const Preferences before = Preferences::OfSession();
    {
        const auto made = window->Settings().MakeProperties();
        frmProperties& form = *made;
        Tick(form, "chkViewGridLines", !ViewGridLines);
        Tick(form, "optContentOption_1", true);
        Press(form, "CmdCancel");
        EXPECT_EQ(Preferences::OfSession(), before);
    }
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Press(form, "cmdApply");
    EXPECT_EQ(Preferences::OfSession(), before);
    EXPECT_EQ(Find(QStringLiteral("frmTime")), screen) << "the screen stands as it was";
    EXPECT_EQ(CurrentStage, 1);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(DialogTest, ApplyFillsTheListsAnewAndKeepsWhatIsChosen) {
    ASSERT_TRUE(StartInStages());
    window->GoToStage(1);
    auto* time = Find(QStringLiteral("frmTime"));
    auto* available = time->findChild<KeyedList*>(QStringLiteral("lstAvailable"));
    const int withData = available->Items().Count();
    time->findChild<QAbstractButton*>(QStringLiteral("cmdAddAll"))->click();
    const qint64 chosen = Rows("_SelTimePeriod");
    ASSERT_GT(chosen, 0);
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Tick(form, "optContentOption_1", true);
    Press(form, "cmdApply");
    EXPECT_EQ(DataExistsCriterion, QString());
    time = Find(QStringLiteral("frmTime"));
    EXPECT_EQ(time->findChild<KeyedList*>(QStringLiteral("lstAvailable"))->Items().Count(), withData + 1);
    EXPECT_EQ(time->findChild<KeyedList*>(QStringLiteral("lstSelected"))->Items().Count(), chosen);
    EXPECT_EQ(Rows("_SelTimePeriod"), chosen);
    EXPECT_EQ(CurrentStage, 1);
    EXPECT_EQ(Screen(), QStringLiteral("frmTime"));
    EXPECT_EQ(window->SelectedIndicatorCount(), 0);
}

TEST_F(DialogTest, OtherKeysOfTheIndicatorListEmptyItsSelection) {
    ASSERT_TRUE(StartInDataView());
    const qint64 periods = Rows("_SelTimePeriod");
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Tick(form, "chkUnitSubpop", IndicatorSelectBy == 0);
    Press(form, "cmdApply");
    EXPECT_EQ(Rows("_SelIUSNId"), 0);
    EXPECT_EQ(Rows("_SelTimePeriod"), periods);
    EXPECT_EQ(messages, QStringList{QStringLiteral("016")});
    EXPECT_EQ(CurrentStage, 0);
}

TEST_F(DialogTest, OKChangesTheLanguageOfTheRunningProgram) {
    ASSERT_TRUE(StartInStages());
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) VALUES (1, '1990')")));
    const QByteArray before = PreferencesOnDisk();
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Choose(form, "cmbLanguages", QStringLiteral("Français [fr]"));
    Press(form, "cmdOK");
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(Language, QStringLiteral("Français [fr]"));
    EXPECT_EQ(LanguageSuffix, QStringLiteral("_fr"));
    EXPECT_EQ(Find<QLabel>(QStringLiteral("lblAddress"))->text(), QStringLiteral("Adresse"));
    EXPECT_EQ(messages, QStringList{QStringLiteral("048")});
    EXPECT_EQ(Rows("_SelTimePeriod"), 0) << "the selection can't stand in the new language";
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_TRUE(DatabaseOpen && LanguageInDatabase);
    EXPECT_NE(PreferencesOnDisk(), before);
}

TEST_F(DialogTest, ALanguageThatTheDatabaseLacksComesHome) {
    ASSERT_TRUE(StartInStages());
    test::ChangeData(QStringLiteral("DELETE * FROM [Language] WHERE LanguageName = 'Français [fr]'"));
    QString dialog;
    WithNextDialog([&](QDialog& properties) {
        Choose(properties, "cmbLanguages", QStringLiteral("Français [fr]"));
        WithNextDialog([&](QDialog& language) {
            dialog = language.objectName();
            language.reject();
        });
        Press(properties, "cmdOK");
    });
    Find<QAction>(QStringLiteral("mnuFilemnu_Properties"))->trigger();
    EXPECT_EQ(dialog, QStringLiteral("frmLanguage"));
    EXPECT_FALSE(LanguageInDatabase);
    EXPECT_FALSE(DatabaseOpen);
    EXPECT_EQ(Screen(), QStringLiteral("frmSplash"));
    // From there the preferences lead back.
    WithNextDialog([&](QDialog& language) {
        WithNextDialog([](QDialog& properties) {
            Choose(properties, "cmbLanguages", QStringLiteral("English [en]"));
            Press(properties, "cmdOK");
        });
        Press(language, "cmdProperties");
    });
    window->Databases().cmbAddress_Click();
    EXPECT_TRUE(LanguageInDatabase && DatabaseOpen);
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
}

TEST_F(DialogTest, ATableOfADialogIsCopiedByRows) {
    ASSERT_TRUE(Start());
    QDialog dialog(window.get());
    QTableWidget table(1, 2, &dialog);
    for (int column = 0; column < 2; ++column)
        table.setItem(0, column, new QTableWidgetItem(QString::number(column)));
    table.setCurrentCell(0, 1);
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(&table, &copy);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("0\t1"));
}

TEST_F(DialogTest, ColourFontAndViewsTakeEffect) {
    ASSERT_TRUE(StartInStages());
    SetColorAnswerer([](const QColor&) { return QColor(1, 2, 3); });
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Tick(form, "chkGlobalColor", true);
    Press(form, "cmdBrowseColor");
    In<QComboBox>(form, "cmbFontStyle")->setCurrentIndex(2);
    Choose(form, "cmbFontSize", QStringLiteral("14"));
    EXPECT_TRUE(In<QLabel>(form, "lblPreviewText")->font().bold()) << "seen before it is applied";
    EXPECT_EQ(In<QLabel>(form, "lblPreviewText")->font().pointSize(), 14);
    Tick(form, "optDefault_1", true);
    Tick(form, "chkIndOptions_1", false);
    EXPECT_TRUE(In<QRadioButton>(form, "optDefault_0")->isChecked()) << "a view that is off can't open first";
    Press(form, "cmdApply");
    EXPECT_EQ(ColorFromNumber(GlobalColor), QColor(1, 2, 3));
    EXPECT_EQ(ProductFontSize, 14);
    EXPECT_EQ(ProductFontStyle, 2);
    EXPECT_TRUE(QApplication::font().bold());
    EXPECT_EQ(IndicatorOpenWith, QStringLiteral("0"));
    EXPECT_FALSE(IndicatorViews[1].wanted);
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    // A cancelled colour dialog leaves the colour.
    SetColorAnswerer([](const QColor&) { return QColor(); });
    Press(form, "cmdBrowseColor");
    Press(form, "cmdApply");
    EXPECT_EQ(ColorFromNumber(GlobalColor), QColor(1, 2, 3));
}

TEST_F(DialogTest, AnImportedLanguageCanBeChosen) {
    ASSERT_TRUE(Start());
    const QString file = Folder() + QStringLiteral("/TS_Breton [br].mdb");
    ASSERT_TRUE(QFile::copy(Application() + QStringLiteral("/Languages/TS_Français [fr].mdb"), file));
    SetFileAnswerer([&](const FileQuestion& question) {
        EXPECT_TRUE(question.filter.contains(QLatin1String("TS_*.mdb")));
        return file;
    });
    const auto made = window->Settings().MakeProperties();
    frmProperties& form = *made;
    Press(form, "cmdImport");
    EXPECT_GE(In<QComboBox>(form, "cmbLanguages")->findText(QStringLiteral("Breton [br]")), 0);
    EXPECT_EQ(In<QComboBox>(form, "cmbLanguages")->currentText(), QStringLiteral("English [en]"));
    Press(form, "CmdCancel");
    EXPECT_NE(Find<QAction>(QStringLiteral("mnuLanguage_Breton [br]")), nullptr) << "the menu lists it at once";
}

TEST_F(DialogTest, AnImportedFileOfTheCurrentLanguageIsReadAtOnce) {
    ASSERT_TRUE(Start());
    const QString file = Folder() + QStringLiteral("/TS_English [en].mdb");
    ASSERT_TRUE(QFile::copy(Application() + QStringLiteral("/Languages/TS_English [en].mdb"), file));
    jet::Connection::Open(file.toStdString(), DatabasePassword())
        ->Execute("UPDATE Strings SET [English en] = 'Whereabouts' WHERE VariableName = 'ADDRESS'");
    SetFileAnswerer([&](const FileQuestion&) { return file; });
    answers = {MessageCode::Yes}; // it replaces the one that is there
    const auto form = window->Settings().MakeProperties();
    Press(*form, "cmdImport");
    EXPECT_EQ(messages, QStringList{QStringLiteral("285")});
    EXPECT_EQ(Find<QLabel>(QStringLiteral("lblAddress"))->text(), QStringLiteral("Whereabouts"));
}

TEST_F(DialogTest, FavouritesAreMadeListedOpenedAndRemoved) {
    ASSERT_TRUE(StartInDataView());
    auto* add = Find<QAction>(QStringLiteral("mnumnu_Favoritesmnu_AddFavorites"));
    ASSERT_TRUE(add->isEnabled());
    WithNextDialog([&](QDialog& form) {
        EXPECT_EQ(form.objectName(), QStringLiteral("frmFavourites"));
        Press(form, "cmdOK"); // no name
        In<QLineEdit>(form, "txtFavoriteAddress")->setText(QStringLiteral("a?b"));
        Press(form, "cmdOK");
        EXPECT_TRUE(form.isVisible());
        In<QLineEdit>(form, "txtFavoriteAddress")->setText(QStringLiteral("Mine & yours"));
        Press(form, "cmdOK");
    });
    add->trigger();
    EXPECT_EQ(messages, (QStringList{QStringLiteral("037"), QStringLiteral("037")}));
    auto* entry = Find<QAction>(QStringLiteral("mnuCustomFavorites_1"));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text(), QStringLiteral("Mine && yours"));
    messages.clear();
    entry->trigger();
    EXPECT_TRUE(CurrentDatabase.endsWith(QLatin1String("/Favorites/Mine & yours.mdb")))
        << CurrentDatabase.toStdString();
    EXPECT_EQ(Screen(), QStringLiteral("frmIndicators"));
    EXPECT_EQ(Rows("Data"), 17);
    // The one that is open stays.
    frmFavourites form(window.get());
    auto* list = In<KeyedList>(form, "lvFavorite");
    ASSERT_EQ(list->Items().Count(), 1);
    list->selectAll();
    Press(form, "cmdRemove");
    EXPECT_EQ(messages, QStringList{QStringLiteral("012")});
    EXPECT_EQ(list->Items().Count(), 1);
    window->Databases().LoadNewMDB(SampleDatabase());
    list->selectAll();
    Press(form, "cmdRemove");
    EXPECT_EQ(list->Items().Count(), 0);
    EXPECT_TRUE(QDir(FavoritesFolder).isEmpty());
}

TEST_F(DialogTest, AFavouriteKeepsTheRowsThatTheViewShows) {
    enum Bit : unsigned { Recent = 1, Range = 2, Missing = 4, RowsOut = 8, SourceOut = 16, All = 31 };
    ASSERT_TRUE(StartInDataView());
    auto& view = *Find<frmData>(QStringLiteral("frmData"));
    // A value that is missing and only has a note.
    test::ChangeData(QStringLiteral("UPDATE Data SET Datavalue = Null, FootnoteNId = 1 WHERE RowNId = 2"));
    for (unsigned options = 0; options <= All; ++options) {
        SCOPED_TRACE(options);
        ASSERT_TRUE(Execute(QStringLiteral("UPDATE _SelIUSNId SET [Deleted] = %1 WHERE SourceNId = 2")
                                .arg(options & SourceOut ? QStringLiteral("True") : QStringLiteral("False"))));
        view.SetFilters({.MostRecentOn = (options & Recent) != 0,
                         .MissingDataOn = (options & Missing) != 0,
                         .ValueRangeOn = (options & Range) != 0,
                         .DataValueFrom = 50,
                         .DataValueTo = 4000});
        ASSERT_TRUE(QTest::qWaitFor([&] { return view.paging().PagingComplete(); }, 10000));
        if (options & RowsOut) {
            auto& grid = *Find<DataTable>(QStringLiteral("DataGrid"));
            grid.selectionModel()->select({grid.model()->index(0, 0), grid.model()->index(1, 0)},
                                          QItemSelectionModel::ClearAndSelect);
            view.RemoveRowsFromDataGrid();
        }
        QStringList shown;
        for (int row = 0; row < view.grid().ValueRows(); ++row) {
            const GridRow& cells = *view.grid().RowAt(row);
            shown << QStringList{cells.timePeriod, cells.areaId, QString::number(cells.sourceNId), cells.datavalue,
                                 QString::number(cells.footNId)}
                         .join(QLatin1Char(' '));
        }
        EXPECT_FALSE(shown.isEmpty());
        const QString name = QStringLiteral("Kept %1").arg(options);
        WithNextDialog([&](QDialog& form) {
            In<QLineEdit>(form, "txtFavoriteAddress")->setText(name);
            Press(form, "cmdOK");
        });
        Find<QAction>(QStringLiteral("mnumnu_Favoritesmnu_AddFavorites"))->trigger();
        const auto favourite = CreateTheConnection(FavouritePath(name));
        QStringList kept;
        Records rows = Select(QStringLiteral("SELECT T.TimePeriod, A.AreaID, D.SourceNId, D.Datavalue, D.FootnoteNId "
                                             "FROM Data AS D, TimePeriod AS T, Area_en AS A WHERE D.TimePeriodNId = "
                                             "T.TimePeriodNId AND D.AreaNId = A.AreaNId"),
                              jet::CursorType::Static, favourite.get());
        for (; !rows.atEnd(); rows.MoveNext())
            kept << QStringList{rows.Text(std::size_t{0}), rows.Text(std::size_t{1}), rows.Text(std::size_t{2}),
                                rows.Text(std::size_t{3}), QString::number(rows.Number(std::size_t{4}))}
                        .join(QLatin1Char(' '));
        kept.sort();
        shown.sort();
        EXPECT_EQ(kept.join(u';').toStdString(), shown.join(u';').toStdString());
    }
}

TEST_F(DialogTest, StopEndsTheLoadOfTheDataView) {
    ASSERT_TRUE(StartInDataView());
    auto& view = *Find<frmData>(QStringLiteral("frmData"));
    ASSERT_TRUE(view.CanStop());
    auto& stop = *Find<QAbstractButton>(QStringLiteral("Toolbar1_2"));
    EXPECT_TRUE(stop.isEnabled());
    const QString tip = stop.toolTip();
    stop.click();
    EXPECT_FALSE(view.CanStop());
    EXPECT_FALSE(stop.isEnabled());
    EXPECT_GT(stop.toolTip().size(), tip.size()) << "it says why it can't be pressed";
    view.Refresh();
    EXPECT_TRUE(stop.isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.paging().PagingComplete(); }, 10000));
    EXPECT_FALSE(stop.isEnabled()) << "the load has ended";
}

TEST_F(DialogTest, TheDataStepIsDoneOnlyWhileEveryStepBeforeItHasSomething) {
    ASSERT_TRUE(StartInDataView());
    auto& banner = *window->findChild<StageBanner*>();
    window->GoToStage(1);
    for (const int stage : {0, 1, 2, 3})
        banner.SetSummary(stage, QStringLiteral("17"));
    EXPECT_EQ(banner.Button(3)->State(), StepState::Done);
    EXPECT_TRUE(banner.Button(3)->accessibleDescription().contains(QLatin1String("17")));
    banner.SetSummary(2, {}); // all areas removed
    EXPECT_EQ(banner.Button(3)->State(), StepState::Next);
    EXPECT_FALSE(banner.Button(3)->accessibleDescription().contains(QLatin1String("17")));
    banner.SetSummary(2, QStringLiteral("1"));
    EXPECT_EQ(banner.Button(3)->State(), StepState::Done);
}

TEST_F(DialogTest, WhatCantBeChosenSaysWhy) {
    ASSERT_TRUE(StartInstalled());
    const auto check = [&](const char* page) {
        int silent = 0;
        int disabled = 0;
        for (const auto* entry : window->findChildren<QAction*>()) {
            const bool ours = entry->objectName().startsWith(QLatin1String("mnu")) && !entry->menu();
            if (!ours || entry->isEnabled()) continue;
            ++disabled;
            // An entry without a tool tip of its own gives its text.
            if (QString text = entry->text(); entry->toolTip() == text.remove(u'&').remove(QStringLiteral("...")))
                ++silent;
        }
        for (const char* name : {"Toolbar1_2", "Toolbar1_3", "Toolbar1_5", "Toolbar1_6", "Toolbar1_7", "Toolbar1_9"}) {
            const auto* button = Find<QAbstractButton>(QLatin1String(name));
            EXPECT_TRUE(button->isEnabled() || button->toolTip().contains(u':')) << page << ' ' << name;
        }
        EXPECT_GT(disabled, 3) << page;
        EXPECT_EQ(silent, 0) << page;
    };
    check("home page");
    for (int stage = 0; stage < 3; ++stage) {
        window->GoToStage(stage);
        check(qPrintable(Screen()));
    }
    window->GoToHome();
    EXPECT_FALSE(Find(QStringLiteral("lbl_FP_HELP_3"))->toolTip().isEmpty());
}

TEST_F(DialogTest, CtrlTabWalksTheTabsFromAnyControl) {
    ASSERT_TRUE(Start());
    const auto form = window->Settings().MakeProperties();
    form->show();
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    const auto* tabs = form->findChild<QTabWidget*>(QStringLiteral("SSTab1"));
    ASSERT_TRUE(In<QComboBox>(*form, "cmbLanguages")->hasFocus());
    QTest::keyClick(form.get(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentIndex(), 1);
    QTest::keyClick(form.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(form.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs->currentIndex(), 3);
}

TEST_F(DialogTest, TheLowerHalfOfFavouritesGoesAndComes) {
    ASSERT_TRUE(StartInStages());
    frmFavourites form(window.get());
    form.show();
    const int tall = form.height();
    Press(form, "cmdCreateIn");
    EXPECT_FALSE(In<KeyedList>(form, "lvFavorite")->isVisible());
    EXPECT_LT(form.height(), tall);
    Press(form, "cmdCreateIn");
    EXPECT_TRUE(In<KeyedList>(form, "lvFavorite")->isVisible());
}

TEST_F(DialogTest, CommandsFollowTheScreen) {
    ASSERT_TRUE(StartInDataView());
    struct Case {
        int stage;
        bool favourites, saveAs, find;
    };
    const auto check = [&](const Case& c) {
        const auto enabled = [&](const char* name) { return Find<QAction>(QLatin1String(name))->isEnabled(); };
        EXPECT_EQ(enabled("mnumnu_Favoritesmnu_AddFavorites"), c.favourites) << c.stage;
        EXPECT_EQ(IsEnabled(QStringLiteral("Toolbar1_6")), c.favourites) << c.stage;
        EXPECT_EQ(enabled("mnuFileSaveAs"), c.saveAs) << c.stage;
        EXPECT_EQ(enabled("mnuEditmnu_find"), c.find) << c.stage;
        EXPECT_TRUE(enabled("mnuDBSummReport")) << c.stage;
    };
    check({3, true, true, false});
    for (const Case& c : {Case{0, false, false, true}, Case{1, false, false, false}, Case{2, false, false, true}}) {
        window->GoToStage(c.stage);
        check(c);
    }
    window->GoToHome();
    check({-1, false, false, true});
    Type(QStringLiteral("Nowhere")); // the database stays open
    EXPECT_TRUE(Find<QAction>(QStringLiteral("mnuDBSummReport"))->isEnabled());
}

TEST_F(DialogTest, AboutTellsTheProductAndTheSystem) {
    ASSERT_TRUE(Start());
    frmAbout form(window.get());
    EXPECT_EQ(In<QLabel>(form, "lblTitle")->text(), QStringLiteral("Sample"));
    EXPECT_EQ(In<QLabel>(form, "lblVersionNumber")->text(), QStringLiteral("1.0"));
    Press(form, "cmdDatabase");
    EXPECT_EQ(messages, QStringList{QStringLiteral("011")}) << "no database is open";
    QString system;
    WithNextDialog([&](QDialog& dialog) {
        system = dialog.findChild<QTextBrowser*>()->toPlainText();
        Press(dialog, "cmdOK");
    });
    Press(form, "cmdSysInfo");
    EXPECT_TRUE(system.contains(QLatin1String(qVersion()))) << system.toStdString();
    EXPECT_TRUE(system.contains(CacheFolder));
    ASSERT_TRUE(QDir().mkpath(Application() + QStringLiteral("/Bin")));
    QFile text(Application() + QStringLiteral("/Bin/disclaimer.doc"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("<p>Nobody <b>answers</b> for it.</p>");
    text.close();
    QString disclaimer;
    WithNextDialog([&](QDialog& dialog) {
        disclaimer = In<QTextBrowser>(dialog, "TXTextControl1")->toPlainText();
        Press(dialog, "cmdOK");
    });
    Press(form, "cmdDiscliamer");
    EXPECT_EQ(disclaimer, QStringLiteral("Nobody answers for it."));
}

} // namespace tessaro
