#include "session/StatementWatch.h"

#include "session/Log.h"
#include "session/Query.h"
#include "session/Session.h"
#include "support/TestSession.h"

#include <QFile>

namespace tessaro::test {
namespace {

/// A frame in which the user asks for a stop at some look at it.
class StoppingFrame : public FakeFrame {
  public:
    [[nodiscard]] bool IsStopAsked() override {
        EXPECT_TRUE(held) << "a screen could read rows";
        return ++looks >= stopAt;
    }
    void HoldScreens(bool hold) override { held = hold; }

    int looks = 0;
    int stopAt = 1;
    bool held = false;
};

class StatementWatchTest : public SessionTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(OpenSample());
        Execute("CREATE TABLE Ten (N LONG)");
        for (int n = 0; n < 10; ++n)
            Execute(QStringLiteral("INSERT INTO Ten VALUES (%1)").arg(n));
        StatementWatch::Patience = 0;
        SetFrame(&stopping);
    }
    void TearDown() override {
        StatementWatch::Patience = patience;
        SetFrame(&frame);
    }

    const qint64 patience = StatementWatch::Patience;
    StoppingFrame stopping;
    const QString endless = QStringLiteral("SELECT Count(*) FROM Ten a, Ten b, Ten c, Ten d, Ten e, Ten f, Ten g, Ten "
                                           "h, Ten i, Ten j, Ten k WHERE a.N + b.N + c.N + d.N + e.N + f.N + g.N < 0");
};

TEST_F(StatementWatchTest, TheUserStopsALongStatementAndShortOnesGoOn) {
    stopping.stopAt = 3;
    SilentErrors = false;
    {
        const StatementWatch watch;
        EXPECT_FALSE(Select(endless).isOpen());
        EXPECT_TRUE(watch.Stopped());
        const StatementWatch within;
        EXPECT_TRUE(within.Stopped());
        EXPECT_EQ(Select("SELECT Count(*) FROM Ten").Number(std::size_t{0}), 10);
        EXPECT_FALSE(Select(endless).isOpen());
        EXPECT_EQ(stopping.looks, 3) << "once is enough";
    }
    EXPECT_TRUE(messages.isEmpty());
    EXPECT_FALSE(stopping.held);
    EXPECT_EQ(stopping.busy, 0);
    EXPECT_EQ(stopping.calls, QStringList({"progress start", "progress end"}));
    QFile log(LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("80040E4E"));
}

TEST_F(StatementWatchTest, WithoutAWatchNobodyIsAsked) {
    {
        const StatementWatch watch;
        EXPECT_FALSE(watch.Stopped());
    }
    const QString some = QStringLiteral("SELECT Count(*) FROM Ten a, Ten b, Ten c, Ten d, Ten e WHERE a.N + b.N < 0");
    EXPECT_EQ(Select(some).Number(std::size_t{0}), 0);
    EXPECT_EQ(stopping.looks, 0);
}

} // namespace
} // namespace tessaro::test
