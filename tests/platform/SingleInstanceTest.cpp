#include "platform/SingleInstance.h"

#include "platform/Apart.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>

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
