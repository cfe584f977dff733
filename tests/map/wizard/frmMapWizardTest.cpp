#include "map/wizard/frmMapWizard.h"

#include "controls/FileDialogs.h"
#include "controls/FontDialogs.h"
#include "map/classes/ClassesPage.h"
#include "map/wizard/DialogAnswers.h"
#include "map/wizard/MapWizardTest.h"
#include "map/wizard/PeriodSlider.h"
#include "map/wizard/ThemeSymbols.h"
#include "session/Settings.h"
#include "support/ReadXls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>

namespace tessaro::test {

namespace {

class frmMapWizardTest : public MapWizardTest {
  protected:
    void TearDown() override {
        SetFileAnswerer({});
        SetFontAnswerer({});
        MapWizardTest::TearDown();
    }
    void GoTo(int step) {
        while (wizard_->Step() < step) {
            const int before = wizard_->Step();
            Click("CmdNext");
            ASSERT_GT(wizard_->Step(), before) << messages.join(QLatin1Char(',')).toStdString();
        }
    }
    [[nodiscard]] const ClassTable& Table() const { return wizard_->Classes().Table(); }
    /// The theme with the percentages of literacy, chosen as a user does.
    void ChooseLiteracy() {
        const DialogAnswers dialogs([](QDialog& dialog) {
            auto* indicators = dialog.findChild<QListView*>(QStringLiteral("lvIndicators"));
            for (int row = 0; row < indicators->model()->rowCount(); ++row)
                if (indicators->model()->index(row, 0).data().toString() == QLatin1String("Literacy"))
                    indicators->setCurrentIndex(indicators->model()->index(row, 0));
            dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        });
        Click("cmdAdvanced");
        ASSERT_EQ(dialogs.seen, 1);
    }
};

} // namespace

TEST_F(frmMapWizardTest, ShowsTheThemeAndItsMapAtOnce) {
    Open();
    Picture("theme");
    auto* list = Find<QTableView>("lv1");
    EXPECT_EQ(list->model()->columnCount(), 6);
    EXPECT_EQ(list->model()->rowCount(), static_cast<int>(wizard_->Theme().Areas().Rows().size()));
    EXPECT_EQ(Map().Layers().Count(), 1);
    const ClassTable& table = Table();
    ASSERT_FALSE(table.looks.empty());
    // The square of India has the colour of its value's class.
    const MapAreas& areas = wizard_->Theme().Areas();
    const int row = areas.RowOf(QStringLiteral("ASIIND"));
    ASSERT_GE(row, 0);
    const int ofIndia = ClassOf(table.classes, *areas.Rows()[static_cast<std::size_t>(row)].number);
    EXPECT_EQ(ColourAt(13, 7), table.looks[static_cast<std::size_t>(ofIndia)].color);
    EXPECT_FALSE(Find<QPushButton>("cmdExport")->isEnabled());
    // A row of the list outlines its area; sorting by values keeps numbers in order.
    list->setCurrentIndex(list->model()->index(0, 0));
    EXPECT_FALSE(Map().Outlined().empty());
    list->sortByColumn(2, Qt::DescendingOrder);
    EXPECT_EQ(list->model()->index(0, 2).data().toString().toDouble(), areas.Values().back());
    wizard_->reject(); // nothing was entered, so nothing is asked
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(wizard_->isVisible());
}

TEST_F(frmMapWizardTest, TheMapFollowsEachChangeOfAClass) {
    Open();
    GoTo(2);
    Picture("options");
    auto& classes = wizard_->Classes();
    Find<QSpinBox>("txtBreakCount")->setValue(1);
    Click("cmdApply");
    ASSERT_EQ(Table().classes.size(), 1U);
    EXPECT_EQ(ColourAt(13, 7), Table().looks[0].color);
    EXPECT_EQ(ColourAt(3, 7), ColourAt(13, 7));
    ClassTable changed = Table();
    changed.looks[0].color = QColor(200, 10, 20);
    classes.SetTable(changed);
    EXPECT_EQ(ColourAt(13, 7), QColor(200, 10, 20));
    // A row under the pointer outlines its areas, and an area lights its row up.
    Q_EMIT classes.RowHovered(0);
    ASSERT_EQ(Map().Outlined().size(), 1U);
    EXPECT_EQ(Map().Outlined()[0].size(), FeaturesOfRow(Map().Layers().At(0).symbols, 0).size());
    Q_EMIT classes.RowHovered(-1);
    QTest::mouseMove(&Map(), Map().FromMapPoint({15, 5}).toPoint());
    EXPECT_TRUE(Find<QLabel>("lblPointed")->text().contains(QStringLiteral("India")))
        << Find<QLabel>("lblPointed")->text().toStdString();
    EXPECT_TRUE(Find<QTableWidget>("grdClassBreaks")->item(0, 0)->data(Qt::BackgroundRole).isValid());
    QTest::mouseMove(&Map(), Map().FromMapPoint({15, 60}).toPoint());
    EXPECT_TRUE(Find<QLabel>("lblPointed")->text().isEmpty());
}

TEST_F(frmMapWizardTest, ToolsStayInForceUntilAnotherIsTaken) {
    Open();
    const MapBox full = Map().Extent();
    Click("CmdToolBar_1");
    EXPECT_EQ(Map().Tool(), MapTool::ZoomIn);
    QTest::mousePress(&Map(), Qt::LeftButton, {}, Map().FromMapPoint({10, 10}).toPoint());
    QTest::mouseMove(&Map(), Map().FromMapPoint({20, 0}).toPoint());
    QTest::mouseRelease(&Map(), Qt::LeftButton, {}, Map().FromMapPoint({20, 0}).toPoint());
    EXPECT_LT(Map().Extent().Width(), full.Width());
    EXPECT_EQ(Map().Tool(), MapTool::ZoomIn);
    Click("CmdToolBar_2");
    const double before = Map().Extent().Width();
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, Map().rect().center());
    EXPECT_NEAR(Map().Extent().Width(), 2 * before, 1e-6 * before);
    Click("CmdToolBar_2"); // the same again lets it go
    EXPECT_EQ(Map().Tool(), MapTool::Select);
    Click("CmdToolBar_3");
    Click("CmdToolBar_0");
    EXPECT_EQ(Map().Extent(), full);
    EXPECT_EQ(Map().Tool(), MapTool::Select);
}

TEST_F(frmMapWizardTest, IdentifiesWhatIsClicked) {
    Open();
    Click("CmdToolBar_5");
    QTest::mouseClick(&Map(), Qt::LeftButton, {}, Map().FromMapPoint({15, 5}).toPoint());
    auto* form = wizard_->findChild<QDialog*>(QStringLiteral("frmMAPIdentify"));
    ASSERT_TRUE(form && form->isVisible());
    const auto* layers = form->findChild<QComboBox*>(QStringLiteral("cboIDList"));
    const auto* list = form->findChild<QListWidget*>(QStringLiteral("lstFeatList"));
    EXPECT_EQ(layers->count(), 1);
    EXPECT_EQ(list->count(), 5);
    EXPECT_TRUE(list->item(0)->text().contains(QStringLiteral("India")));
    Map().Layers().At(0).visible = false;
    wizard_->Identify({15, 5});
    EXPECT_EQ(layers->count(), 0);
    EXPECT_EQ(list->count(), 0);
}

TEST_F(frmMapWizardTest, ChoosesAnotherThemeAndOtherMaps) {
    Open();
    ChooseLiteracy();
    EXPECT_EQ(wizard_->Draft().theme.indicator, QStringLiteral("Literacy"));
    EXPECT_TRUE(wizard_->Draft().advanced);
    EXPECT_EQ(wizard_->Draft().title.text, QStringLiteral("Literacy"));
    // Both the areas and their points: the grid of classes has eight columns.
    const DialogAnswers dialogs([](QDialog& dialog) {
        auto* maps = dialog.findChild<QListWidget*>(QStringLiteral("cboMaps"));
        ASSERT_EQ(maps->count(), 2);
        maps->item(0)->setCheckState(Qt::Unchecked);
        EXPECT_TRUE(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isEnabled() ==
                    (maps->item(1)->checkState() == Qt::Checked));
        maps->item(0)->setCheckState(Qt::Checked);
        maps->item(1)->setCheckState(Qt::Checked);
        dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    Click("cmdAdvanced");
    EXPECT_EQ(wizard_->Theme().Kind(), ThemeKind::Both);
    EXPECT_EQ(Find<QTableWidget>("grdClassBreaks")->columnCount(), 8);
}

TEST_F(frmMapWizardTest, ShowsEarlierPeriodsWithTheSameClasses) {
    Open();
    auto* slider = Find<QSlider>("sldPeriod");
    ASSERT_GT(slider->maximum(), 0);
    const ClassBreaks latest = Table().classes;
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Home);
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(wizard_->Draft().period, wizard_->Theme().Periods().front());
    for (const MapArea& area : wizard_->Theme().Areas().Rows())
        EXPECT_EQ(area.period, wizard_->Theme().Periods().front());
    ASSERT_EQ(Table().classes.size(), latest.size());
    for (std::size_t i = 0; i + 1 < latest.size(); ++i)
        EXPECT_EQ(Table().classes[i].to, latest[i].to);
    EXPECT_EQ(CountOutsideClasses(wizard_->Theme().Areas().Values(), Table().classes), 0);
    const ClassBreaks held = Table().classes;
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(wizard_->Draft().period, QString());
    for (std::size_t i = 0; i < held.size(); ++i)
        EXPECT_EQ(Table().classes[i].to, held[i].to);
    Find<QCheckBox>("chkSameClasses")->click();
    EXPECT_FALSE(wizard_->Draft().sameClasses);
    QTest::keyClick(slider, Qt::Key_Home);
    EXPECT_EQ(Table().classes.back().to, wizard_->Theme().Areas().Values().back());
}

TEST_F(frmMapWizardTest, OffersSizedPointsForTotals) {
    SetSetting(QStringLiteral("MAP_FONT_SIZE"), QStringLiteral("10"));
    Run(QStringLiteral("UPDATE _SelIUSNId SET Unit = 'Persons'"));
    Run(QStringLiteral("UPDATE Data SET Datavalue = '1' WHERE AreaNId = 4"));
    Open();
    auto* advice = Find<QPushButton>("cmdAdvice");
    if (!LooksLikeTotal(wizard_->Draft().theme, wizard_->Theme().Areas())) GTEST_FAIL() << "no total";
    ASSERT_TRUE(advice->isVisible());
    Picture("total");
    const QColor before = Table().looks.front().color;
    advice->click();
    EXPECT_EQ(wizard_->Theme().Kind(), ThemeKind::Points);
    EXPECT_EQ(Table().kind, ThemeKind::Points);
    EXPECT_GT(Table().looks.back().size, Table().looks.front().size);
    EXPECT_EQ(Find<QTableWidget>("grdClassBreaks")->columnCount(), 7);
    Picture("points");
    advice->click();
    EXPECT_EQ(Table().kind, ThemeKind::Polygons);
    EXPECT_EQ(Table().looks.front().color, before);
}

TEST_F(frmMapWizardTest, TakesTextsFontsLabelsAndLayout) {
    Open();
    GoTo(3);
    Picture("customize");
    const QString odd = QString::fromUtf8("\\/:*?\"<>|[]=") + QString(243, QChar(0x0416));
    auto* title = Find<QLineEdit>("txtMapTitle");
    title->clear();
    QTest::keyClicks(title, odd.left(12));
    EXPECT_EQ(wizard_->Draft().title.text, odd.left(12));
    EXPECT_TRUE(wizard_->Draft().titlesTyped);
    title->setText(odd + QStringLiteral("more"));
    EXPECT_EQ(title->text().size(), 255);
    Find<QPlainTextEdit>("txtDisclaimer")->setPlainText(QStringLiteral("One\ntwo"));
    EXPECT_EQ(wizard_->Draft().disclaimer.text, QStringLiteral("Onetwo"));
    SetFontAnswerer([](const QFont&) { return QFont(QStringLiteral("Liberation Serif"), 31); });
    Click("cmdMapTitleFont");
    EXPECT_EQ(wizard_->Draft().title.font, (SheetFont{QStringLiteral("Liberation Serif"), 31, false, false}));
    Click("SSRibLayout_1");
    EXPECT_EQ(wizard_->Draft().layout, MapLayout::Vertical);
    auto* field = Find<QComboBox>("cmbLabelField");
    field->setCurrentIndex(field->findData(QStringLiteral("Comm_Area Name")));
    Q_EMIT field->activated(field->currentIndex());
    EXPECT_EQ(Map().Layers().At(0).labels.texts.at(1), QStringLiteral("India"));
    EXPECT_FALSE(Find<QLineEdit>("txtLabelPrev")->text().isEmpty());
    Click("cmdLabelFont");
    EXPECT_EQ(Map().Layers().At(0).labels.font.pointSize(), 31);
    Picture("labels");
    field->setCurrentIndex(0);
    Q_EMIT field->activated(0);
    EXPECT_FALSE(Map().Layers().At(0).labels.on);
    EXPECT_EQ(Map().Layers().At(0).labels.field, QStringLiteral("Comm_Area Name")); // kept for the next time
    // The typed titles outlive another theme.
    Click("CmdBack");
    Click("CmdBack");
    EXPECT_EQ(wizard_->Step(), 1);
    ChooseLiteracy();
    EXPECT_EQ(wizard_->Draft().title.text, odd.left(12));
    answers = {MessageCode::No, MessageCode::Yes};
    wizard_->reject();
    EXPECT_TRUE(wizard_->isVisible());
    wizard_->reject();
    EXPECT_FALSE(wizard_->isVisible());
    EXPECT_EQ(messages, (QStringList{QStringLiteral("007"), QStringLiteral("007")}));
}

TEST_F(frmMapWizardTest, CustomizesLayersThatAreShown) {
    Open();
    GoTo(3);
    SetFileAnswerer([](const FileQuestion&) { return Base("Land_Points") + QStringLiteral(".shp"); });
    const auto customize = [this](const char* button) {
        const DialogAnswers dialogs([button](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("frmMAPCustomize"));
            dialog.findChild<QPushButton*>(QLatin1String(button))->click();
            dialog.accept();
        });
        Click("SSCmdCustomize");
        EXPECT_EQ(dialogs.seen, 1);
        EXPECT_FALSE(Map().grab().isNull());
    };
    customize("cmdAddLayers");
    EXPECT_EQ(Map().Layers().Count(), 2);
    wizard_->Identify({15, 5});
    const auto* layers = wizard_->findChild<QDialog*>(QStringLiteral("frmMAPIdentify"))
                             ->findChild<QComboBox*>(QStringLiteral("cboIDList"));
    EXPECT_EQ(layers->count(), 2);
    EXPECT_FALSE(Map().Outlined().empty());
    // It goes while it is identified and outlined.
    customize("cmdRemoveLayer");
    EXPECT_EQ(Map().Layers().Count(), 1);
    EXPECT_EQ(layers->count(), 0);
    EXPECT_TRUE(Map().Outlined().empty());
    QTest::mouseMove(&Map(), Map().FromMapPoint({15, 5}).toPoint());
    EXPECT_EQ(wizard_->Draft().layers.size(), 1U);
}

TEST_F(frmMapWizardTest, WritesProjectsAndPictures) {
    Open();
    GoTo(3);
    QTemporaryDir folder;
    SetFileAnswerer([&](const FileQuestion&) { return folder.filePath(QStringLiteral("my map.apr")); });
    Click("cmdExport");
    EXPECT_EQ(messages, QStringList{QStringLiteral("021")});
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("my_map.apr"))));
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("my_map.dbf"))));
    for (const char* ending : {"png", "svg", "pdf"}) {
        const QString path = folder.filePath(QStringLiteral("map.") + QLatin1String(ending));
        SetFileAnswerer([&](const FileQuestion&) { return path; });
        Click("cmdPicture");
        EXPECT_GT(QFile(path).size(), 1000) << ending;
    }
    messages.clear();
    SetFileAnswerer([](const FileQuestion&) { return QStringLiteral("/no/such/folder/map.png"); });
    Click("cmdPicture");
    EXPECT_EQ(messages.size(), 1);
    SetFileAnswerer([](const FileQuestion&) { return QStringLiteral("/no/such/folder/map.apr"); });
    Click("cmdExport");
    EXPECT_EQ(messages.size(), 2);
    SetFileAnswerer([](const FileQuestion&) { return QString(); }); // cancelled
    Click("cmdExport");
    Click("cmdPicture");
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(wizard_->Step(), 3);
}

TEST_F(frmMapWizardTest, ShowsAndSavesTheWorkbook) {
    InstallMapTemplates();
    Open();
    GoTo(3);
    const QString odd = QString::fromUtf8("a\\/:*?\"<>|[]=") + QString(242, QChar(0x0416));
    for (const char* field : {"txtMapTitle", "txtMapSubTitle", "txtLegendTitle"}) {
        Find<QLineEdit>(field)->setText(odd);
        Q_EMIT Find<QLineEdit>(field)->textEdited(odd);
    }
    Click("CmdNext");
    ASSERT_EQ(wizard_->Step(), 4) << messages.join(QLatin1Char(',')).toStdString();
    EXPECT_TRUE(QFile::exists(wizard_->WorkbookFile()));
    EXPECT_TRUE(Find<QPushButton>("cmdExport")->isEnabled());
    const QString first = wizard_->WorkbookFile();
    Click("CmdBack");
    EXPECT_EQ(wizard_->Step(), 3);
    EXPECT_TRUE(Map().isVisible());
    Click("CmdNext");
    ASSERT_EQ(wizard_->Step(), 4);
    Click("CmdNext");
    ASSERT_EQ(saved_.size(), 1);
    EXPECT_EQ(saved_[0].PresentationType, QLatin1Char('M'));
    EXPECT_TRUE(saved_[0].FileTitle.startsWith(QStringLiteral("a_"))) << saved_[0].FileTitle.toStdString();
    EXPECT_LE(saved_[0].FileTitle.toUtf8().size(), 240);
    for (const QChar forbidden : QStringLiteral("\\/:*?\"<>|"))
        EXPECT_FALSE(saved_[0].FileTitle.contains(forbidden)) << forbidden.toLatin1();
    const auto sheets = ReadXls(saved_[0].SourceFile);
    ASSERT_EQ(sheets.size(), 3U);
    EXPECT_EQ(sheets[0].Text(1, 1), odd);
    EXPECT_EQ(sheets[0].Text(2, 1), odd);
    EXPECT_EQ(saved_[0].SourceFile, wizard_->WorkbookFile());
    EXPECT_FALSE(wizard_->isVisible());
}

TEST_F(frmMapWizardTest, SaysWhatIsMissing) {
    struct Case {
        const char* name;
        std::function<void()> prepare;
        const char* message; ///< when it opens
        int lastStep;        ///< that Next leads to, and the preview without a template
    };
    const Case cases[] = {
        {"no map file", [] { Run(QStringLiteral("UPDATE _SelArea SET MapFile = ''")); }, "222", 1},
        {"file deleted", [] { QFile::remove(Base("Land") + QStringLiteral(".shp")); }, "222", 1},
        {"no layer",
         [] {
             QFile file(Base("Land") + QStringLiteral(".shp"));
             ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("nothing") > 0);
         },
         "222", 1},
        {"no value", [] { Run(QStringLiteral("DELETE * FROM _SelIUSNId")); }, "222", 1},
        {"no id field",
         [] {
             WriteLand({"ASI", "ASIIND", "ASICHN", "X"}, "Other");
         },
         "", 3},
        {"ids that match nothing",
         [] {
             WriteLand({"a", "", "b", "c"});
         },
         "", 3},
        {"values that are no numbers", [] { Run(QStringLiteral("UPDATE Data SET Datavalue = 'n/a'")); }, "", 3},
        {"one value for all", [] { Run(QStringLiteral("UPDATE Data SET Datavalue = '7'")); }, "", 3},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        wizard_.reset();
        TearDown();
        SetUp();
        messages.clear();
        each.prepare();
        Open();
        const bool told = !messages.isEmpty();
        EXPECT_EQ(told, *each.message != '\0') << messages.join(QLatin1Char('|')).toStdString();
        for (int i = 0; i < 3; ++i)
            Click("CmdNext");
        EXPECT_EQ(wizard_->Step(), each.lastStep) << messages.join(QLatin1Char('|')).toStdString();
        EXPECT_FALSE(messages.isEmpty()); // "222", or the missing template
        wizard_->Identify({15, 5});
        QTest::mouseMove(&Map(), QPoint(50, 50));
        answers = {MessageCode::Yes};
        wizard_->reject();
        EXPECT_FALSE(wizard_->isVisible());
    }
}

TEST_F(frmMapWizardTest, KeepsTheMapWhenFilesVanishUnderIt) {
    Open();
    for (const char* ending : {".shp", ".shx", ".dbf"})
        QFile::remove(Base("Land") + QLatin1String(ending));
    GoTo(3);
    EXPECT_EQ(Map().Layers().Count(), 1);
    Find<QSlider>("sldPeriod")->setValue(0);
    EXPECT_EQ(Map().Layers().Count(), 1);
    Click("CmdBack");
    Click("CmdBack");
    // Another theme reads the maps anew: the file is asked for, gone on without, and the map stays.
    ChooseLiteracy();
    EXPECT_EQ(Map().Layers().Count(), 1);
    ASSERT_FALSE(messages.isEmpty());
    EXPECT_TRUE(messages.last().contains(QStringLiteral("Land.shp"), Qt::CaseInsensitive));
    Click("CmdNext");
    EXPECT_EQ(wizard_->Step(), 2);
}

} // namespace tessaro::test
