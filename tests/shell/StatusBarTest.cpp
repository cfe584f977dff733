#include "shell/StatusBar.h"

#include "shell/FrameTest.h"

#include <QElapsedTimer>
#include <QTest>

namespace tessaro {

namespace {

class StatusBarTest : public test::FrameTest {
  protected:
    [[nodiscard]] QString Text() const { return Find<StatusBar>(QStringLiteral("sbStatusBar"))->Text(); }
};

} // namespace

TEST_F(StatusBarTest, ATextForAWhileHoldsNobodyUp) {
    ASSERT_TRUE(Start());
    window->SetStatusText(QStringLiteral("before"));
    QElapsedTimer clock;
    clock.start();
    TheFrame().ShowStatusTextFor(QStringLiteral("saved"), 60000);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_EQ(Text(), QStringLiteral("saved"));
    answers = {MessageCode::Yes};
    EXPECT_TRUE(window->close()); // also the way out is open meanwhile
}

TEST_F(StatusBarTest, TheTextBeforeComesBackUnlessAnotherIsSet) {
    StatusBar bar;
    bar.SetText(QStringLiteral("before"));
    bar.SetTextFor(QStringLiteral("one"), 30);
    bar.SetTextFor(QStringLiteral("two"), 30);
    EXPECT_EQ(bar.Text(), QStringLiteral("two"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.Text() == QLatin1String("before"); }, 2000));
    bar.SetTextFor(QStringLiteral("three"), 30);
    bar.SetText(QStringLiteral("after"));
    QTest::qWait(60);
    EXPECT_EQ(bar.Text(), QStringLiteral("after"));
}

} // namespace tessaro
