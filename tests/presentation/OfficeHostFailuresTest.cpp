#include "OfficeHostTest.h"
#include "office/ProcessStart.h"
#include "office/Profile.h"
#include "session/Strings.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>

#include <chrono>

namespace tessaro {

using namespace std::chrono_literals;

namespace {

/// The place in the form when its process hangs, dies or is missing.
class OfficeHostFailuresTest : public OfficeHostTest {};

} // namespace

TEST_F(OfficeHostFailuresTest, TellsByItselfOfAProcessThatHangs) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QSignalSpy lost(&host_, &OfficeHost::Lost);
    Signal(SIGSTOP);
    ASSERT_TRUE(lost.wait(15000)) << "nobody has called meanwhile";
    EXPECT_EQ(host_.ErrorText(), GetText(QStringLiteral("TS_OfficeTimedOut")));
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
    Signal(SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    host_.CloseHostedExcel();
    EXPECT_LT(timer.elapsed(), 12000) << "the user closes a form with it";
}

TEST_F(OfficeHostFailuresTest, SurvivesTheDeathOfTheProcess) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    QSignalSpy lost(&host_, &OfficeHost::Lost);
    Signal(SIGKILL);
    ASSERT_TRUE(lost.wait(3000));
    EXPECT_FALSE(host_.IsOpen());
    EXPECT_FALSE(host_.ErrorText().isEmpty());
    ASSERT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

TEST_F(OfficeHostFailuresTest, GivesUpOnAProcessThatHangs) {
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    auto& hosted = office::SpreadsheetApplication::Hosted();
    hosted.SetTimeLimit(500ms);
    const auto hung = static_cast<pid_t>(hosted.ProcessId());
    ASSERT_GT(hung, 0);
    Signal(SIGSTOP);
    siginfo_t stopped{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(hung), &stopped, WSTOPPED | WNOWAIT), 0);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(host_.Save());
    host_.CloseHostedExcel();
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_NE(hosted.ProcessId(), hung);
    hosted.SetTimeLimit(30s);
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

TEST_F(OfficeHostFailuresTest, SurvivesADeathWhileItOpens) {
    auto& hosted = office::SpreadsheetApplication::Hosted();
    for (const int delay : {0, 40, 120, 250}) {
        hosted.Start();
        QTimer::singleShot(delay, &hosted, [] { Signal(SIGKILL); });
        const bool shown = host_.ShowWorkbook(file_);
        EXPECT_EQ(shown, host_.ErrorText().isEmpty());
        QTest::qWait(delay + 50);
    }
    EXPECT_TRUE(host_.ShowWorkbook(file_)) << host_.ErrorText().toStdString();
}

// The user's own program has another profile; it must outlive everything that happens to ours.
TEST_F(OfficeHostFailuresTest, LeavesTheUsersOwnProgramAlone) {
    const QTemporaryDir home;
    QProcess own;
    office::SetUp(own, office::PrepareStart(home.path(), true), QStringLiteral("svp"));
    const auto start = [&] {
        own.start(office::ProgramFolder() + QStringLiteral("/soffice.bin"),
                  {QStringLiteral("--headless"), QStringLiteral("--norestore"), QStringLiteral("--nodefault")});
        return own.waitForStarted();
    };
    ASSERT_TRUE(start());
    // A new profile ends its first start by itself.
    const bool again = own.waitForFinished(6000);
    ASSERT_TRUE(!again || start());
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    EXPECT_NE(office::SpreadsheetApplication::Hosted().ProcessId(), own.processId());
    Signal(SIGKILL);
    QTest::qWait(300);
    ASSERT_TRUE(host_.ShowWorkbook(file_));
    host_.CloseHostedExcel();
    office::SpreadsheetApplication::QuitAll();
    EXPECT_FALSE(own.waitForFinished(500)) << "it was ended with ours";
    own.kill();
    own.waitForFinished();
    office::ForgetProcess(home.path()); // a killed program leaves its sockets behind
}

TEST_F(OfficeHostFailuresTest, TellsThatTheProgramIsMissing) {
    office::SpreadsheetApplication::Hosted().Quit();
    qputenv("TESSARO_OFFICE", "/nowhere");
    EXPECT_FALSE(host_.ShowWorkbook(file_));
    EXPECT_EQ(host_.ErrorText(), GetText(QStringLiteral("TS_OfficeMissing")));
    qunsetenv("TESSARO_OFFICE");
    EXPECT_TRUE(host_.ShowWorkbook(file_));
}

} // namespace tessaro
