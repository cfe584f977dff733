#include "view/SelectionGuard.h"

#include "session/Session.h"
#include "support/SelectionTest.h"

namespace tessaro::test {
namespace {

using namespace selection;

class SelectionGuardTest : public SelectionTest {};

TEST_F(SelectionGuardTest, NamesWhatIsMissing) {
    const struct {
        bool ius, periods, areas;
        const char* before;
        const char* inside;
        int stage;
    } cases[] = {{false, false, false, "016", "016", 0},
                 {false, true, true, "016", "016", 0},
                 {true, false, false, "023", "024", 1},
                 {true, false, true, "023", "024", 1},
                 {true, true, false, "024", "023", 2}};
    for (const auto& c : cases) {
        Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
        Run(QStringLiteral("DELETE * FROM _SelTimePeriod"));
        Run(QStringLiteral("DELETE * FROM _SelArea"));
        if (c.ius) SelectIus(1);
        if (c.periods) SelectTimes(1);
        if (c.areas) SelectAreas(1);
        messages.clear();
        frame.calls.clear();
        CurrentStage = -1;
        EXPECT_FALSE(MayOpenDataView());
        EXPECT_FALSE(IsSelectionComplete());
        EXPECT_EQ(messages, (QStringList{QString::fromLatin1(c.before), QString::fromLatin1(c.inside)}));
        const QString move = QStringLiteral("stage %1").arg(c.stage);
        EXPECT_EQ(frame.calls, (QStringList{move, move}));
        frame.calls.clear();
        CurrentStage = c.stage;
        EXPECT_FALSE(MayOpenDataView());
        EXPECT_TRUE(frame.calls.isEmpty()) << "no move to the stage that is shown";
    }
}

TEST_F(SelectionGuardTest, PassesAFullSelectionAndListedIndicators) {
    DataExistsMode = 1;
    SelectIus(1);
    SelectTimes(1);
    SelectAreas(1);
    EXPECT_TRUE(MayOpenDataView());
    EXPECT_TRUE(IsSelectionComplete());
    Run(QStringLiteral("DELETE * FROM _SelIUSNId"));
    EXPECT_FALSE(MayOpenDataView());
    frame.selectedIndicators = 1; // listed without a source
    EXPECT_TRUE(MayOpenDataView());
    DataExistsMode = 0;
    EXPECT_FALSE(MayOpenDataView());
}

} // namespace
} // namespace tessaro::test
