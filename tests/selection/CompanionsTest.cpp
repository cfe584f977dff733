#include "controls/KeyedTree.h"
#include "controls/Printing.h"
#include "metadata/frmInformationSheet.h"
#include "metadata/frmInformationSheets.h"
#include "selection/ScreenDriver.h"
#include "selection/frmAreas.h"
#include "selection/frmIndicators.h"
#include "selection/frmTime.h"
#include "session/Session.h"

#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTextBrowser>

namespace tessaro::test {
namespace {

QAbstractButton& Button(QDialog& dialog, const char* name) {
    auto* button = dialog.findChild<QAbstractButton*>(QString::fromLatin1(name));
    if (button == nullptr) throw std::runtime_error(std::string("no button ") + name);
    return *button;
}

/// The small dialogs of the indicator screen.
class IndicatorCompanionsTest : public ScreenTest<frmIndicators> {
  protected:
    void SetUp() override {
        IndicatorOpenWith = QStringLiteral("0");
        TempFolder = Folder();
        Run(QStringLiteral("UPDATE [Indicator] SET Info = '<p>All <b>people</b></p>' WHERE IndicatorGId = '-I1'"));
        Run(QStringLiteral("UPDATE [Indicator] SET Info = 'a < b & c' WHERE IndicatorGId = 'L3'"));
        Open();
    }
    void TearDown() override { SetPrintTaker({}); }
    void SearchFor(const char* text) {
        AnswerDialog([text](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("frmSearch"));
            auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("txtSearchCriteria"));
            Button(dialog, "cmdSearch").click();
            EXPECT_TRUE(dialog.isVisible()) << "nothing to search for yet";
            field->setText(QString::fromUtf8(text));
            QTest::keyClick(field, Qt::Key_Return);
        });
        screen->Find();
    }
    KeyedList& lstAvailable() { return List("lstAvailable"); }
    KeyedList& lstSelected() { return List("lstSelected"); }
};

TEST_F(IndicatorCompanionsTest, DisabledPopupEntriesSayWhy) {
    ReadProductTexts();
    EXPECT_EQ(Unexplained(lstAvailable()), QStringList());
    EXPECT_EQ(Unexplained(lstSelected()), QStringList());
}

TEST_F(IndicatorCompanionsTest, SearchFillsTheList) {
    SearchFor("'s \"school");
    EXPECT_EQ(Shown(lstAvailable()), "I3");
    SearchFor("nowhere");
    EXPECT_EQ(Shown(lstAvailable()), "");
    EXPECT_TRUE(frame.calls.contains(QStringLiteral("status "))) << "told, with the text of the key";
    AnswerDialog([](QDialog& dialog) { Button(dialog, "CmdCancel").click(); });
    screen->Find();
    EXPECT_EQ(Shown(lstAvailable()), "") << "cancelling searches nothing";
    QTest::keyClicks(&Find<QLineEdit>("txtFilter"), QStringLiteral("popul"));
    QTest::keyClick(&Find<QLineEdit>("txtFilter"), Qt::Key_Return);
    EXPECT_EQ(Shown(lstAvailable()), "I2 I1") << "Enter in the filter line searches the view";
}

TEST_F(IndicatorCompanionsTest, DetailsShowEachPlace) {
    Click("cmdAddAll");
    Highlight(lstSelected(), {QStringLiteral("I3"), QStringLiteral("I4")});
    AnswerDialog([](QDialog& dialog) {
        const auto text = [&](const char* name) {
            QStringList texts;
            const auto labels = dialog.findChildren<QLabel*>(QString::fromLatin1(name));
            for (const QLabel* label : labels)
                texts << label->text();
            return texts.join(QLatin1Char('|'));
        };
        EXPECT_EQ(text("lblIndicatorName"), QStringLiteral("Children's \"school\" [rate]|Колодцы"));
        EXPECT_EQ(text("lblClass"), QStringLiteral("People\nPeople|Water"));
        EXPECT_TRUE(dialog.findChild<QWidget*>(QStringLiteral("frmIndicators"))->isVisible());
        EXPECT_FALSE(dialog.findChild<QWidget*>(QStringLiteral("frmArea"))->isVisible());
        QTest::keyClick(&dialog, Qt::Key_C, Qt::ControlModifier);
        EXPECT_TRUE(QApplication::clipboard()->text().endsWith(QStringLiteral("Колодцы\tSociety\tWater")));
        Button(dialog, "cmdOK").click();
    });
    PickFromPopup(lstSelected(), "mnu_popup_ind_sel_Options_5");
}

TEST_F(IndicatorCompanionsTest, InformationOpensOrIsRefused) {
    Highlight(lstAvailable(), {QStringLiteral("I2")});
    AnswerDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("frmInformationSheet"));
        EXPECT_EQ(dialog.findChild<QTextBrowser*>(QStringLiteral("txtInformation"))->toPlainText(),
                  QStringLiteral("All people"));
        Button(dialog, "cmdOK").click();
    });
    PickFromPopup(lstAvailable(), "mnu_popup_ind_avl_Options_5");
    EXPECT_TRUE(QFile::exists(TempFolder + QStringLiteral("/Information.htm")));
    EXPECT_TRUE(messages.isEmpty());
    Highlight(lstAvailable(), {QStringLiteral("I3")});
    PickFromPopup(lstAvailable(), "mnu_popup_ind_avl_Options_5");
    EXPECT_EQ(messages, QStringList{QStringLiteral("035")});
    EXPECT_FALSE(QFile::exists(TempFolder + QStringLiteral("/Information.htm"))) << "the old one is gone";
}

TEST_F(IndicatorCompanionsTest, TheBrowserShowsAndPrintsAll) {
    frmInformationSheets sheets(QStringLiteral("IND"));
    sheets.show();
    auto& list = *sheets.findChild<QListView*>(QStringLiteral("lstSource"));
    auto& text = *sheets.findChild<QTextBrowser*>(QStringLiteral("txtAllInfo"));
    ASSERT_EQ(list.model()->rowCount(), 2);
    EXPECT_TRUE(text.toPlainText().contains(QStringLiteral("All people")));
    list.setCurrentIndex(list.model()->index(1, 0));
    EXPECT_TRUE(text.toPlainText().contains(QStringLiteral("a < b & c"))) << text.toPlainText().toStdString();
    QStringList printed;
    SetPrintTaker([&](const QTextDocument& document) {
        printed << document.toPlainText();
        return true;
    });
    Button(sheets, "cmdPrintAll").click();
    ASSERT_EQ(printed.size(), 1);
    EXPECT_LT(printed.front().indexOf(QStringLiteral("All people")), printed.front().indexOf(QStringLiteral("a < b")));
    EXPECT_GE(printed.front().indexOf(QStringLiteral("All people")), 0);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_FALSE(text.toPlainText().contains(QStringLiteral("a < b"))) << "one again after printing";
    frmInformationSheets none(QStringLiteral("RIGHTS"));
    EXPECT_FALSE(Button(none, "cmdPrintAll").isEnabled());
}

TEST_F(IndicatorCompanionsTest, ALongListWaitsForAPauseInTheFilter) {
    auto& filter = Find<QLineEdit>("txtFilter");
    QTest::keyClicks(&filter, QStringLiteral("popul"));
    EXPECT_EQ(Shown(lstAvailable()), "I2 I1") << "a short one follows at once";
    filter.clear();
    std::vector<KeyedItem> many;
    for (int number = 0; number < 6000; ++number)
        many.push_back({QStringLiteral("I%1").arg(number), {QStringLiteral("item %1").arg(number)}, 0});
    lstAvailable().Items().SetItems(std::move(many));
    QTest::keyClicks(&filter, QStringLiteral("5999"));
    EXPECT_EQ(lstAvailable().Items().rowCount(), 6000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return lstAvailable().Items().rowCount() == 1; }));
    EXPECT_EQ(Shown(lstAvailable()), "I5999");
}

class AreaCompanionsTest : public ScreenTest<frmAreas> {};

TEST_F(AreaCompanionsTest, FoundAreasCanBeAddedAndTheirChainSeen) {
    Open();
    AnswerDialog([](QDialog& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("txtSearchCriteria"))->setText(QStringLiteral("دل"));
        Button(dialog, "cmdSearch").click();
    });
    screen->Find();
    EXPECT_EQ(Shown(List("lstAvailable1")), "A4");
    Click("cmdAddAll");
    EXPECT_EQ(ChosenAreas(), QStringLiteral("4"));
    Highlight(List("lstSelected1"), {QStringLiteral("A4")});
    AnswerDialog([](QDialog& dialog) {
        const QStringList lines =
            dialog.findChild<QLabel*>(QStringLiteral("lblAreaNames"))->text().split(QLatin1Char('\n'));
        ASSERT_EQ(lines.size(), 3);
        EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Asia")));
        EXPECT_TRUE(lines[1].trimmed().startsWith(QStringLiteral("India")));
        Button(dialog, "cmdOK").click();
    });
    PickFromPopup(List("lstSelected1"), "mnu_popup_area_chosen_Options_5");
    screen->SeacrhAreaStrings(QStringLiteral("nowhere"));
    EXPECT_EQ(Shown(List("lstAvailable1")), "") << "an empty search leaves the list cleared";
}

class TimeCompanionsTest : public ScreenTest<frmTime> {};

TEST_F(TimeCompanionsTest, APeriodHasDetails) {
    ChoosePeriods(QStringLiteral("1"));
    Open();
    Highlight(List("lstSelected"), {QStringLiteral("T1")});
    AnswerDialog([](QDialog& dialog) {
        EXPECT_TRUE(
            dialog.findChild<QLabel*>(QStringLiteral("lblAreaNames"))->text().startsWith(QStringLiteral("1990")));
        Button(dialog, "cmdOK").click();
    });
    PickFromPopup(List("lstSelected"), "mnu_popup_time_sel_Options_6");
}

} // namespace
} // namespace tessaro::test
