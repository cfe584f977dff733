#include "controls/OfficeHost.h"
#include "controls/Printing.h"
#include "map/wizard/MapWizardTest.h"

#include <QFile>
#include <QProgressBar>

#include <csignal>

namespace tessaro::test {

namespace {

/// The wizard with its workbook in the window, and a spreadsheet program that dies.
class MapPreviewTest : public MapWizardTest {
  protected:
    void SetUp() override {
        MapWizardTest::SetUp();
        if (!OfficeHost::CanHost()) GTEST_SKIP() << "no X11 display";
        InstallMapTemplates();
    }
    void TearDown() override {
        SetPrinterAnswerer({});
        MapWizardTest::TearDown();
    }
    [[nodiscard]] OfficeHost& Host() const { return *Find<OfficeHost>("fraExcel"); }
    void Kill(office::SpreadsheetApplication& application) {
        const auto process = static_cast<pid_t>(application.ProcessId());
        if (process <= 0 || killed_.contains(process)) return;
        killed_ << process;
        ::kill(process, SIGKILL);
    }
    static QStringList BooksLeft() { return QDir(TempFolder).entryList({QStringLiteral("*.xls")}); }

    QList<pid_t> killed_;
};

} // namespace

TEST_F(MapPreviewTest, AProgramThatDiesInThePreviewTakesNothingAlong) {
    office::SpreadsheetApplication& hosted = office::SpreadsheetApplication::Hosted();
    office::SpreadsheetApplication& writing = office::SpreadsheetApplication::Instance();
    Open();
    for (int step = 1; step < 4; ++step)
        Click("CmdNext");
    ASSERT_EQ(wizard_->Step(), 4) << messages.join(QLatin1Char(' ')).toStdString();
    ASSERT_TRUE(Host().IsOpen()) << Host().ErrorText().toStdString();
    Picture("preview");
    const QString printed = JoinPath({Folder(), QStringLiteral("printed.pdf")});
    SetPrinterAnswerer([&] { return PrintPlace{{}, printed}; });
    Click("cmdPrint");
    EXPECT_GT(QFile(printed).size(), 1000);
    const QString chosen = DraftText(wizard_->Draft());
    Kill(hosted);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Host().ErrorText().isEmpty(); }, 10000));
    EXPECT_FALSE(Host().IsOpen());
    EXPECT_EQ(Host().ErrorText(), GetText(QStringLiteral("TS_OfficeLost")));
    EXPECT_EQ(Host().accessibleDescription(), Host().ErrorText());
    EXPECT_EQ(wizard_->Step(), 4);
    EXPECT_TRUE(wizard_->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("cmdPrint")->isEnabled());
    // Back to the choices, which are as they were, and once more to the preview.
    Click("CmdBack");
    EXPECT_EQ(wizard_->Step(), 3);
    EXPECT_EQ(DraftText(wizard_->Draft()), chosen);
    Click("CmdNext");
    ASSERT_EQ(wizard_->Step(), 4) << messages.join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(Host().IsOpen());
    // It dies while the workbook is written: told, and the step stays.
    Click("CmdBack");
    writing.Start();
    messages.clear();
    const auto once =
        QObject::connect(Find<QProgressBar>("PB_Main"), &QProgressBar::valueChanged, wizard_.get(), [&](int percent) {
            if (percent >= 40) Kill(writing);
        });
    Click("CmdNext");
    QObject::disconnect(once);
    ASSERT_EQ(wizard_->Step(), 3);
    EXPECT_EQ(messages, QStringList{GetText(QStringLiteral("TS_OfficeLost"))});
    EXPECT_EQ(DraftText(wizard_->Draft()), chosen);
    EXPECT_EQ(frame.busy, 0);
    EXPECT_EQ(BooksLeft(), QStringList());
    Click("CmdNext");
    ASSERT_EQ(wizard_->Step(), 4);
    // What was written last goes to the gallery, with or without the program.
    Kill(hosted);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Host().ErrorText().isEmpty(); }, 10000));
    Click("CmdNext");
    ASSERT_EQ(saved_.size(), 1);
    EXPECT_TRUE(QFile::exists(saved_.front().SourceFile));
    EXPECT_FALSE(wizard_->isVisible());
    wizard_.reset();
    killed_ << static_cast<pid_t>(hosted.ProcessId()) << static_cast<pid_t>(writing.ProcessId());
    office::SpreadsheetApplication::QuitAll();
    for (const pid_t process : killed_)
        EXPECT_TRUE(process <= 0 || ::kill(process, 0) != 0) << process << " is left";
}

} // namespace tessaro::test
