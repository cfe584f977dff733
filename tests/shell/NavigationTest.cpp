#include "shell/Navigation.h"

#include "session/Session.h"
#include "support/TestSession.h"

namespace tessaro {

using navigation::ButtonChange;

class NavigationTest : public test::SessionTest {};

// -1 stands for "left as it is".
int Number(const std::optional<bool>& flag) {
    return flag ? static_cast<int>(*flag) : -1;
}

TEST_F(NavigationTest, ScreensAreVisitedOnceWhateverTheirCase) {
    CurrentStage = 0;
    navigation::AddToVisitedStages(QStringLiteral("frmIndicators"));
    navigation::AddToVisitedStages(QStringLiteral("FRMINDICATORS"));
    navigation::AddToVisitedStages(QStringLiteral("frmData"));
    EXPECT_EQ(VisitedStages, (QStringList{QString(), QStringLiteral("frmIndicators"), QStringLiteral("frmData")}));
    EXPECT_EQ(navigation::UpperBound(), 2);
}

TEST_F(NavigationTest, ButtonsFollowTheNumberOfScreensVisited) {
    struct Case {
        const char* why;
        int visited; ///< screens visited before
        int stage;   ///< CurrentStage
        int addBack, addForward;
        int afterBackBack, afterBackForward;
        int afterForwardBack, afterForwardForward;
    };
    const Case cases[] = {
        {"first screen: forward may go one on", 0, 0, 1, 1, 0, 1, -1, -1},
        {"second screen at its own stage", 1, 1, 1, 1, -1, 1, 1, -1},
        {"data straight after the indicators", 1, 3, 1, 0, -1, -1, 1, -1},
        {"three screens, back at the first", 2, 0, 1, 1, 0, 1, -1, -1},
        {"three screens, at stage 3: the upper bound", 2, 3, 1, 0, -1, -1, 1, 0},
    };
    for (const Case& c : cases) {
        VisitedStages = {QString()};
        for (int i = 0; i < c.visited; ++i)
            VisitedStages << navigation::FormNameOf(i);
        CurrentStage = c.stage;
        const ButtonChange added = navigation::AddToVisitedStages(QStringLiteral("frmNew"));
        EXPECT_EQ(Number(added.back), c.addBack) << c.why;
        EXPECT_EQ(Number(added.forward), c.addForward) << c.why;
        const ButtonChange back = navigation::AfterBack();
        EXPECT_EQ(Number(back.back), c.afterBackBack) << c.why;
        EXPECT_EQ(Number(back.forward), c.afterBackForward) << c.why;
        const ButtonChange forward = navigation::AfterForward();
        EXPECT_EQ(Number(forward.back), c.afterForwardBack) << c.why;
        EXPECT_EQ(Number(forward.forward), c.afterForwardForward) << c.why;
    }
}

TEST_F(NavigationTest, StepsStayWithinTheStages) {
    struct Case {
        int stage, visited;
        std::optional<int> back, forward;
    };
    const Case cases[] = {
        {-1, 2, std::nullopt, 0},
        {0, 1, std::nullopt, 1},
        {0, 0, std::nullopt, std::nullopt},
        {1, 1, 0, std::nullopt},
        {2, 4, 1, 3},
        {3, 4, 2, std::nullopt},
    };
    for (const Case& c : cases) {
        CurrentStage = c.stage;
        VisitedStages = QStringList(c.visited + 1, QStringLiteral("x"));
        EXPECT_EQ(navigation::BackTarget(), c.back) << c.stage;
        EXPECT_EQ(navigation::ForwardTarget(), c.forward) << c.stage;
    }
}

} // namespace tessaro
