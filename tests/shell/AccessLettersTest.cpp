#include "calculate/FormulaPage.h"
#include "calculate/LevelsPage.h"
#include "calculate/SaveAsPage.h"
#include "calculate/SelectionPage.h"
#include "calculate/UnitFactorsPage.h"
#include "calculate/WeightsPage.h"
#include "dataview/frmData.h"
#include "dataview/frmDataFilters.h"
#include "exchange/AreasPage.h"
#include "exchange/CheckPage.h"
#include "exchange/MappingPage.h"
#include "exchange/SourcePage.h"
#include "gallery/frmGALMain.h"
#include "gallery/frmGalPPT.h"
#include "map/custom/frmMAPAdvLbl.h"
#include "map/custom/frmMAPBuffer.h"
#include "map/custom/frmMAPCustomize.h"
#include "map/custom/frmMapLabels.h"
#include "map/wizard/frmMAPAdvanced.h"
#include "map/wizard/frmMAPIdentify.h"
#include "map/wizard/frmMapWizard.h"
#include "metadata/frmInformationSheet.h"
#include "metadata/frmInformationSheets.h"
#include "metadata/frmShowDetails.h"
#include "platform/SingleInstance.h"
#include "presentation/ColorRangesPanel.h"
#include "presentation/GraphOptionsPage.h"
#include "presentation/RowsColumnsPage.h"
#include "presentation/SortChoice.h"
#include "presentation/TableOptionsPage.h"
#include "presentation/frmLoadRC.h"
#include "presentation/frmPrint.h"
#include "selection/frmAutoSelect.h"
#include "selection/frmSearch.h"
#include "session/Query.h"
#include "session/Session.h"
#include "shell/Documents.h"
#include "shell/FrameTest.h"
#include "shell/SettingsChange.h"
#include "shell/frmAbout.h"
#include "shell/frmDocument.h"
#include "shell/frmFavourites.h"
#include "shell/frmLanguage.h"
#include "shell/frmProperties.h"
#include "wizards/WizardFrame.h"
#include "wizards/frmSaveGalleryAdvance.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>

#include <map>

namespace tessaro {

namespace {

/// A text with its letter of access, by the control that shows it.
struct Lettered {
    QString control;
    QString text;

    [[nodiscard]] QChar Letter() const {
        for (qsizetype i = 0; i + 1 < text.size(); ++i) {
            if (text.at(i) != QLatin1Char('&')) continue;
            if (text.at(i + 1) != QLatin1Char('&')) return text.at(i + 1).toLower();
            ++i;
        }
        return {};
    }
};

/// What can be seen of a form that is not on the screen itself.
QList<Lettered> TextsOf(const QWidget& form) {
    QList<Lettered> texts;
    for (const QWidget* control : form.findChildren<QWidget*>()) {
        if (!control->isVisibleTo(&form)) continue;
        QString text;
        if (const auto* button = qobject_cast<const QAbstractButton*>(control))
            text = button->text();
        else if (const auto* label = qobject_cast<const QLabel*>(control); label && label->buddy())
            text = label->text();
        else if (const auto* box = qobject_cast<const QGroupBox*>(control))
            text = box->title();
        else if (const auto* tabs = qobject_cast<const QTabWidget*>(control))
            for (int tab = 0; tab < tabs->count(); ++tab)
                texts << Lettered{tabs->widget(tab)->objectName(), tabs->tabText(tab)};
        else if (const auto* bar = qobject_cast<const QMenuBar*>(control))
            for (const QAction* title : bar->actions())
                texts << Lettered{title->objectName(), title->text()};
        if (!text.isEmpty()) texts << Lettered{control->objectName(), text};
    }
    return texts;
}

QList<Lettered> TextsOf(const QMenu& menu) {
    QList<Lettered> texts;
    for (const QAction* entry : menu.actions())
        if (!entry->isSeparator() && !entry->objectName().startsWith(QLatin1String("mnuCustomFavorites")) &&
            !entry->objectName().startsWith(QLatin1String("mnuLanguage")))
            texts << Lettered{entry->objectName(), entry->text()};
    return texts;
}

/// A wizard's buttons around one page.
class OnePageWizard final : public WizardFrame {
  public:
    explicit OnePageWizard(QWidget* page) {
        AddStep(page, QStringLiteral("TS_PagePreview"));
        Begin();
    }

  protected:
    [[nodiscard]] bool GoForward(int /*step*/) override { return false; }
};

/// Letters that lie on a key of their own on the Arabic keyboard.
bool IsOnArabicKeyboard(QChar letter) {
    return QStringLiteral("ابتثجحخدذرزسشصضطظعغفقكلمنهويةىءئؤ").contains(letter);
}

} // namespace

/// Every form of the program, in every language.
class AccessLettersTest : public test::FrameTest {
  protected:
    void Check(const QString& form, const QList<Lettered>& texts) {
        std::map<QChar, QString> taken;
        for (const Lettered& text : texts) {
            const QChar letter = text.Letter();
            const QString place = form + QLatin1Char('.') + text.control;
            const std::string where =
                (Language + QStringLiteral(": ") + place + QLatin1Char(' ') + text.text).toStdString();
            if (InEnglish() && !letter.isNull()) withLetter_ << place;
            if (letter.isNull()) {
                EXPECT_FALSE(withLetter_.contains(place)) << where << " has a letter in English only";
                continue;
            }
            ++letters_;
            EXPECT_EQ(taken.count(letter), 0U) << where << " has the letter of " << taken[letter].toStdString();
            taken[letter] = text.text;
            const bool arabic = Language.contains(QLatin1String("[ar]")) && letter.script() == QChar::Script_Arabic;
            EXPECT_TRUE(!arabic || IsOnArabicKeyboard(letter)) << where;
        }
    }
    void CheckForm(const QWidget& form, const QString& variant = {}) {
        Check(QString::fromLatin1(form.metaObject()->className()) + variant, TextsOf(form));
    }
    void CheckDialogs();
    void CheckWizardPages();
    void CheckCalculationPages();
    void CheckImportPages();
    void CheckLayerForms();
    void CheckFrame();
    void SelectSomeRows();

    static bool InEnglish() { return Language.contains(QLatin1String("[en]")); }

    QStringList withLetter_; ///< in English
    int letters_ = 0;
};

void AccessLettersTest::CheckDialogs() {
    {
        const auto made = window->Settings().MakeProperties();
        const frmProperties& form = *made;
        auto* tabs = form.findChild<QTabWidget*>(QStringLiteral("SSTab1"));
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            CheckForm(form, QString::number(tab));
        }
    }
    {
        frmAutoSelect form;
        for (const auto stage : {selection::Stage::Indicators, selection::Stage::Time, selection::Stage::Areas}) {
            form.PrepareFor(stage);
            CheckForm(form, QString::number(static_cast<int>(stage)));
        }
    }
    CheckForm(frmLanguage());
    CheckForm(frmAbout());
    CheckForm(frmFavourites());
    CheckForm(frmDisclaimer());
    CheckForm(frmSystemInfo());
    CheckForm(
        frmDocument([] { return DocumentFile(QStringLiteral("Help Folder"), QStringLiteral("Help File Name"), {}); }));
    CheckForm(frmSearch());
    CheckForm(frmShowDetails());
    CheckForm(frmInformationSheet());
    CheckForm(frmInformationSheets(QStringLiteral("IND")));
    CheckForm(frmDataFilters(DataFilters()));
    CheckForm(frmPrint());
    CheckForm(frmLoadRC(WizardKind::Table));
    CheckForm(SortChoice({QStringLiteral("A")}, {}));
    CheckForm(frmGalPPT());
    frmSaveGalleryAdvance save;
    save.Initialize();
    CheckForm(save);
}

void AccessLettersTest::CheckLayerForms() {
    LayerStack map;
    MapLayer points;
    points.kind = LayerKind::Point;
    map.Add(points, QStringLiteral("Customize - x"));
    QString formula;
    CheckForm(frmMapLabels(map, 0, formula));
    CheckForm(frmMAPAdvLbl(formula));
    CheckForm(frmMAPBuffer(QStringLiteral("x")));
    CheckForm(frmMAPCustomize(map, formula, [] {}));
    CheckForm(frmMapWizard({}));
    CheckForm(frmMAPAdvanced({}, {}));
    CheckForm(frmMAPIdentify());
}

void AccessLettersTest::CheckWizardPages() {
    for (const WizardKind kind : {WizardKind::Table, WizardKind::Graph}) {
        auto* page = new RowsColumnsPage(kind);
        const OnePageWizard wizard(page);
        page->SetFormCaptions();
        CheckForm(wizard, QStringLiteral("RowsColumns%1").arg(static_cast<int>(kind)));
    }
    const OnePageWizard tableOptions(new TableOptionsPage);
    CheckForm(tableOptions, QStringLiteral("TableOptions"));
    const OnePageWizard graphOptions(new GraphOptionsPage);
    CheckForm(graphOptions, QStringLiteral("GraphOptions"));
    const OnePageWizard colors(new ColorRangesPanel);
    CheckForm(colors, QStringLiteral("ColorRanges"));
    CheckCalculationPages();
    CheckImportPages();
}

void AccessLettersTest::CheckCalculationPages() {
    const OnePageWizard indicators(new SelectionPage(CalcType::PerCent, SelectionPage::Role::Items));
    CheckForm(indicators, QStringLiteral("Numerators"));
    const OnePageWizard weights(new WeightsPage);
    CheckForm(weights, QStringLiteral("Weights"));
    const OnePageWizard factors(new UnitFactorsPage);
    CheckForm(factors, QStringLiteral("UnitFactors"));
    const OnePageWizard levels(new LevelsPage);
    CheckForm(levels, QStringLiteral("Levels"));
    const OnePageWizard formula(new FormulaPage);
    CheckForm(formula, QStringLiteral("Formula"));
    const OnePageWizard names(new SaveAsPage(CalcType::CompositeIndex));
    CheckForm(names, QStringLiteral("SaveAs"));
}

void AccessLettersTest::CheckImportPages() {
    const std::pair<QWidget*, const char*> pages[] = {{new SourcePage, "ImportSource"},
                                                      {new MappingPage, "ImportMapping"},
                                                      {new AreasPage, "ImportAreas"},
                                                      {new CheckPage, "ImportCheck"}};
    for (const auto& [page, name] : pages) {
        const OnePageWizard wizard(page);
        CheckForm(wizard, QLatin1String(name));
    }
}

/// One indicator in all areas and times: the data view has something to show.
void AccessLettersTest::SelectSomeRows() {
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelIUSNId (IUSNId, SourceNId, Deleted) SELECT TOP 1 IUSNId, "
                                       "SourceNId, False FROM Data")));
    ASSERT_TRUE(Execute(QStringLiteral(
        "INSERT INTO _SelTimePeriod (TimePeriodNId, TimePeriod) SELECT TimePeriodNId, TimePeriod FROM TimePeriod")));
    ASSERT_TRUE(Execute(QStringLiteral("INSERT INTO _SelArea (AreaGId, AreaNId, AreaID) SELECT AreaGId, AreaNId, "
                                       "AreaID FROM Area WHERE AreaLevel <= 2")));
}

void AccessLettersTest::CheckFrame() {
    window->GoToHome();
    CheckForm(*window, QStringLiteral("Home"));
    for (QMenu* menu : window->menuBar()->findChildren<QMenu*>())
        Check(menu->objectName(), TextsOf(*menu));
    for (int stage = 0; stage < 3; ++stage) {
        window->GoToStage(stage);
        CheckForm(*window, QString::number(stage));
    }
    SelectSomeRows();
    SelectionChanged = true;
    window->GoToStage(3);
    auto* data = window->findChild<frmData*>();
    ASSERT_NE(data, nullptr) << Language.toStdString();
    for (int option = 0; option < 8; ++option) {
        data->ShowThisDataOption(option);
        CheckForm(*window, QStringLiteral("Data%1").arg(option));
    }
    data->ShowThisDataOption(0);
    window->Stages().ShowGallery(0);
    ASSERT_NE(window->findChild<frmGALMain*>(), nullptr);
    const auto slides = window->findChild<QWidget*>(QStringLiteral("framePPT"));
    slides->show();
    CheckForm(*window, QStringLiteral("Gallery"));
}

TEST_F(AccessLettersTest, NoTwoControlsOfAFormShareALetterInAnyLanguage) {
    ASSERT_TRUE(StartInstalled());
    ASSERT_TRUE(InEnglish());
    QStringList languages{Language}; // English first: the others must have its letters
    for (const LanguageFile& file : std::as_const(LanguageFiles))
        if (file.label != Language) languages << file.label;
    int inEnglish = 0;
    for (const QString& language : std::as_const(languages)) {
        window->Settings().ChangeLanguage(language);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the screens of the language before
        letters_ = 0;
        CheckDialogs();
        CheckWizardPages();
        CheckLayerForms();
        CheckFrame();
        if (InEnglish()) inEnglish = letters_;
        EXPECT_EQ(letters_, inEnglish) << language.toStdString();
        window->GoToHome();
    }
    EXPECT_GT(inEnglish, 200);
}

} // namespace tessaro
