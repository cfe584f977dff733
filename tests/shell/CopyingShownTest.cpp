#include "shell/CopyingShown.h"

#include "support/TestSession.h"

namespace tessaro::test {
namespace {

class CopyingShownTest : public SessionTest {};

TEST_F(CopyingShownTest, TheFrameShowsItFromTheFirstReportOnAndIsGivenBack) {
    class Impatient final : public FakeFrame {
        bool IsStopAsked() override { return progress.size() == 2; }
    } impatient;
    SetFrame(&impatient);
    {
        CopyingShown copying;
        EXPECT_EQ(impatient.calls, QStringList()) << "nothing is copied yet";
        EXPECT_TRUE(copying(0));
        EXPECT_EQ(impatient.busy, 1);
        EXPECT_FALSE(copying(40));
    }
    SetFrame(&frame);
    EXPECT_EQ(impatient.progress, (QList<int>{0, 40}));
    EXPECT_EQ(impatient.busy, 0);
    ASSERT_EQ(impatient.calls.size(), 4);
    EXPECT_EQ(impatient.calls.first(), "progress start");
    EXPECT_EQ(impatient.calls.last(), "progress end");
    EXPECT_EQ(impatient.calls[2], "status ");
}

} // namespace
} // namespace tessaro::test
