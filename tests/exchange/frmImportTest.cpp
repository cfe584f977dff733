#include "exchange/frmImport.h"

#include "controls/FileDialogs.h"
#include "exchange/ImportSession.h"

#include <QComboBox>
#include <QPushButton>
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
    EXPECT_EQ(Find<QTableView>(wizard, "grdReport")->model()->index(1, 1).data().toString(), "1");
    SetFileAnswerer([this](const FileQuestion&) { return Target(); });
    Click(wizard, "CmdFinish");
    EXPECT_EQ(wizard.WrittenFile(), Target());
    EXPECT_EQ(messages, QStringList());
    EXPECT_THAT(Values(Target()), testing::Contains("India|2010|Population|Number|Total|Valeurs|1.5|"));
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
    EXPECT_EQ(counts->index(0, 1).data().toString() + counts->index(1, 1).data().toString(), "22");
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
