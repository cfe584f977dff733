#include "exchange/frmImport.h"

#include "controls/FileDialogs.h"
#include "exchange/ImportSession.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

#include <gmock/gmock.h>

namespace tessaro::test {
namespace {

class FrmImportTest : public ImportSession {
  protected:
    void TearDown() override {
        SetFileAnswerer({});
        ImportSession::TearDown();
    }
    template <class Control> static Control* Find(const QWidget& form, const char* name) {
        auto* control = form.findChild<Control*>(QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    static void Click(const QWidget& form, const char* name) {
        QTest::mouseClick(Find<QPushButton>(form, name), Qt::LeftButton);
    }
    /// Shows the wizard and lets its file dialog answer with a file.
    void Choose(frmImport& wizard, const QString& file) {
        SetFileAnswerer([file](const FileQuestion&) { return file; });
        wizard.show();
        Click(wizard, "cmdBrowse");
    }
};

TEST_F(FrmImportTest, BringsAFileIntoACopy) {
    frmImport wizard;
    EXPECT_FALSE(Find<QPushButton>(wizard, "CmdNext")->isEnabled());
    Choose(wizard,
           Write("Pays;Ann\xE9\x65;Indicateur;Valeur\nInde;2010;Population;1,5\nAtlantide;2010;Population;2,5\n",
                 QStringLiteral("Valeurs.csv")));
    EXPECT_EQ(Find<QComboBox>(wizard, "cmbEncoding")->currentText(), "windows-1252");
    EXPECT_EQ(Find<QTableView>(wizard, "grdRows")->model()->index(1, 0).data().toString(), "Inde");
    Click(wizard, "CmdNext");
    QAbstractItemModel* const columns = Find<QTableView>(wizard, "grdColumns")->model();
    EXPECT_EQ(columns->index(3, 0).data().toString() + columns->index(3, 1).data().toString(), "Valeur1,5   2,5");
    EXPECT_EQ(columns->index(3, 2).data().toString(), CaptionOf(Role::Value));
    Click(wizard, "CmdNext");
    QAbstractItemModel* const areas = Find<QTableView>(wizard, "grdAreas")->model();
    ASSERT_EQ(areas->rowCount(), 1);
    EXPECT_EQ(areas->index(0, 0).data().toString(), "Atlantide");
    ASSERT_TRUE(areas->setData(areas->index(0, 2), 1)); // left out
    Click(wizard, "CmdNext");
    EXPECT_EQ(Find<QTableView>(wizard, "grdReport")->model()->index(1, 1).data().toString(),
              QLocale::system().toString(1));
    SetFileAnswerer([this](const FileQuestion&) { return Target(); });
    Click(wizard, "CmdFinish");
    EXPECT_EQ(wizard.WrittenFile(), Target());
    EXPECT_EQ(messages, QStringList());
    EXPECT_THAT(Values(Target()), testing::Contains("India|2010|Population|Number|Total|Valeurs|1.5|"));
}

// What stands below the columns follows each change of what they mean.
TEST_F(FrmImportTest, ShowsValuesAsTheyWillBeUnderstood) {
    frmImport wizard;
    Choose(wizard, Write("Pays;Date;Valeur\nInde;2010;1,5\nAtlantide;2010;2,5\n"));
    Click(wizard, "CmdNext");
    const QAbstractItemModel* const preview = Find<QTableView>(wizard, "grdPreview")->model();
    const auto line = [preview](int row) {
        QStringList texts;
        for (int column = 0; column < preview->columnCount(); ++column)
            texts << preview->index(row, column).data().toString();
        return texts.join(QLatin1Char('|'));
    };
    ASSERT_EQ(preview->rowCount(), 2);
    EXPECT_EQ(line(0),
              QLocale::system().toString(2) + QStringLiteral("||2010|ASIIND|India|Values|Number|Total|Values|1.5"));
    EXPECT_TRUE(line(1).contains(TextOf(Refusal::UnknownArea) + QStringLiteral(": Atlantide|")));
    EXPECT_TRUE(preview->index(1, 0).data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(preview->index(0, 0).data(Qt::ForegroundRole).isValid());
    auto* const unit = Find<QLineEdit>(wizard, "txtForAll_5");
    unit->clear();
    QTest::keyClicks(unit, QStringLiteral("kg"));
    EXPECT_TRUE(line(0).contains(QStringLiteral("|kg|")));
    QAbstractItemModel* const columns = Find<QTableView>(wizard, "grdColumns")->model();
    ASSERT_TRUE(columns->setData(columns->index(1, 2), static_cast<int>(Role::LeftOut)));
    EXPECT_TRUE(
        line(0).contains(TextOf(Refusal::LacksName) + QStringLiteral(": ") + CaptionOf(Role::Time) + QLatin1Char('|')));
    ASSERT_TRUE(columns->setData(columns->index(2, 2), static_cast<int>(Role::LeftOut)));
    EXPECT_EQ(preview->rowCount(), 0);
}

TEST_F(FrmImportTest, TakesTheAreasOfANewDatabaseFromAFile) {
    const QString file = Write("Place;Year;Value\nP2;2010;1,5\n");
    const QString areas = Write("id,parent,name\nKEN,,Kenya\nP2,KEN,Coast\n", QStringLiteral("Areas.csv"));
    frmImport wizard;
    Choose(wizard, file);
    EXPECT_FALSE(Find<QLineEdit>(wizard, "txtAreaTree")->isVisible());
    Find<QRadioButton>(wizard, "optInto_0")->click();
    EXPECT_TRUE(Find<QLineEdit>(wizard, "txtAreaTree")->isVisible());
    QTest::keyClicks(Find<QLineEdit>(wizard, "txtAreaTree"), Write("x,y\n1,2\n", QStringLiteral("No areas.csv")));
    Click(wizard, "CmdNext");
    EXPECT_EQ(messages.size(), 1);
    SetFileAnswerer([areas](const FileQuestion&) { return areas; });
    Click(wizard, "cmdAreaTree");
    Click(wizard, "CmdNext");
    EXPECT_EQ(Find<QTableView>(wizard, "grdPreview")->model()->index(0, 3).data().toString(), "Coast");
    Click(wizard, "CmdNext");
    EXPECT_EQ(Find<QTableView>(wizard, "grdAreas")->model()->rowCount(), 0);
    Click(wizard, "CmdNext");
    SetFileAnswerer([this](const FileQuestion&) { return Target(); });
    Click(wizard, "CmdFinish");
    EXPECT_THAT(PlainReader(Target().toStdString()).Rows("SELECT AreaID, AreaName FROM Area_en ORDER BY 1"),
                testing::ElementsAre("KEN|Kenya", "KEN001|Coast"));
}

TEST_F(FrmImportTest, AsksBeforeItChangesTheOpenDatabaseAndKeepsAMapping) {
    const QString file = Write("Year,Area,Indicator,Value\n2010,Asia,Population,5\n");
    const QString kept = Folder() + QStringLiteral("/kept.import");
    const std::vector<std::string> before = Values(base_);
    for (const int answer : {MessageCode::No, MessageCode::Yes}) {
        frmImport wizard;
        Choose(wizard, file);
        Find<QAbstractButton>(wizard, "optInto_3")->click();
        Click(wizard, "CmdNext");
        SetFileAnswerer([kept](const FileQuestion&) { return kept; });
        Click(wizard, answer == MessageCode::No ? "cmdKeepMapping" : "cmdUseMapping");
        Click(wizard, "CmdNext");
        Click(wizard, "CmdNext");
        answers = {answer, MessageCode::Yes};
        Click(wizard, "CmdFinish");
        EXPECT_EQ(Values(base_) == before, answer == MessageCode::No);
        wizard.CmdCancel_Click();
    }
    EXPECT_EQ(Values(base_).size(), before.size() + 1);
    EXPECT_TRUE(CanUndoImport(base_));
}

TEST_F(FrmImportTest, ReadsNoFurtherThanTheLastRow) {
    frmImport wizard;
    Choose(wizard, Write("Year,Area,Indicator,Value\n2010,Asia,Population,5\n2011,Asia,Population,6\nTotal,,,11\n"));
    Click(wizard, "CmdNext");
    QAbstractItemModel* const columns = Find<QTableView>(wizard, "grdColumns")->model();
    ASSERT_TRUE(columns->setData(columns->index(2, 2), static_cast<int>(Role::LeftOut)));
    Find<QSpinBox>(wizard, "spnLast")->setValue(3);
    EXPECT_EQ(columns->index(2, 2).data().toString(), CaptionOf(Role::LeftOut)) << "what was chosen stays";
    ASSERT_TRUE(columns->setData(columns->index(2, 2), static_cast<int>(Role::Indicator)));
    Click(wizard, "CmdNext");
    Click(wizard, "CmdNext");
    QAbstractItemModel* const counts = Find<QTableView>(wizard, "grdReport")->model();
    EXPECT_EQ(counts->index(0, 1).data().toString() + counts->index(1, 1).data().toString(),
              QLocale::system().toString(2) + QLocale::system().toString(2));
}

TEST_F(FrmImportTest, TellsWhatIsMissingAndWhatCanNotBeRead) {
    frmImport wizard;
    Choose(wizard, Folder() + QStringLiteral("/none.csv"));
    EXPECT_EQ(messages.size(), 1);
    EXPECT_FALSE(Find<QPushButton>(wizard, "CmdNext")->isEnabled());
    Choose(wizard, Write("some,words\nand,others\n"));
    Click(wizard, "CmdNext");
    Click(wizard, "CmdNext");
    EXPECT_EQ(messages.size(), 2);
    EXPECT_EQ(wizard.Step(), 2);
}

} // namespace
} // namespace tessaro::test
