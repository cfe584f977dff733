#include "platform/SingleInstance.h"

#include "platform/Apart.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace tessaro {
namespace {

using namespace std::chrono_literals;

TEST(SingleInstanceTest, OnlyOnePerHomeAndItIsAskedToTheFront) {
    const QTemporaryDir home;
    const QTemporaryDir other;
    SingleInstance first(home.path());
    ASSERT_TRUE(first.isFirst());
    int asked = 0;
    first.SetRaiseHandler([&] { ++asked; });

    const bool secondSawIt = RunApart(
        [&] {
            const SingleInstance second(home.path());
            return !second.isFirst() && second.RaiseFirst();
        },
        10s);
    EXPECT_TRUE(secondSawIt);
    for (const QDeadlineTimer limit(5000); asked == 0 && !limit.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(SingleInstance(other.path()).isFirst());
}

TEST(SingleInstanceTest, IsFreeAgainAfterItsOwnerIsGone) {
    const QTemporaryDir home;
    { EXPECT_TRUE(SingleInstance(home.path()).isFirst()); }
    // An owner that ends without a farewell leaves its lock file behind.
    EXPECT_TRUE(RunApart([&] { return (new SingleInstance(home.path()))->isFirst(); }, 10s));
    EXPECT_TRUE(SingleInstance(home.path()).isFirst());
}

TEST(SingleInstanceTest, OtherUsersCanNeitherTakeThePlaceNorBeHeard) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can become somebody else";
    const QTemporaryDir home;
    ASSERT_EQ(::chmod(home.path().toUtf8().constData(), 0777), 0);
    const auto asNobody = [](const std::function<bool()>& work) {
        return RunApart([&] { return ::setuid(65534) == 0 && work(); }, 10s);
    };
    SingleInstance first(home.path());
    ASSERT_TRUE(first.isFirst());
    int asked = 0;
    first.SetRaiseHandler([&] { ++asked; });
    const QString socket = home.filePath("Tessaro/instance.socket");
    EXPECT_TRUE(QFile::exists(socket));
    EXPECT_TRUE(asNobody([&] { return SingleInstance(home.path()).isFirst() && !QFile::exists(socket); }));
    EXPECT_FALSE(asNobody([&] { return QFile::remove(home.filePath("Tessaro/instance.lock")); }));
    QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
    EXPECT_EQ(asked, 0);

    const QTemporaryDir long_;
    const QString deep = long_.filePath(QString(120, 'd'));
    const SingleInstance inLongPath(deep);
    EXPECT_TRUE(inLongPath.isFirst());
    EXPECT_TRUE(inLongPath.RaiseFirst());
}

TEST(SingleInstanceTest, WorksWhereTheHomeCannotBeWritten) {
    const QString home = QStringLiteral("/proc/sys/tessaro");
    const SingleInstance first(home);
    EXPECT_TRUE(first.isFirst());
    EXPECT_FALSE(SingleInstance(home).isFirst());
}

TEST(RunApartTest, CrashesAndEndlessLoopsCostOnlyTheWork) {
    EXPECT_TRUE(RunApart([] { return true; }, 10s));
    EXPECT_FALSE(RunApart([] { return false; }, 10s));
    EXPECT_FALSE(RunApart([]() -> bool { throw 1; }, 10s));
    EXPECT_FALSE(RunApart([]() -> bool { return std::raise(SIGKILL) == 0; }, 10s));
    EXPECT_FALSE(RunApart(
        [] {
            for (;;)
                std::this_thread::sleep_for(1s);
            return true;
        },
        100ms));
}

} // namespace
} // namespace tessaro
